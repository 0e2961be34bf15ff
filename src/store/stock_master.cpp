#include "store/stock_master.h"

#include <algorithm>
#include <map>

namespace orin::store {

namespace {

struct SectorRange {
  int16_t first;
  int16_t last;
  std::string_view name;
};

// The hundreds are the sector, the rest of the number the industry in it.
constexpr std::array<SectorRange, 10> kSectors = {{
    {100, 199, "原材料"},
    {200, 299, "複合企業"},
    {300, 399, "消費財"},
    {400, 499, "金融"},
    {500, 599, "ヘルスケア"},
    {600, 699, "産業資材"},
    {700, 799, "サービス"},
    {800, 899, "テクノロジー"},
    {900, 925, "公共"},
    {926, 926, "指数"},
}};

constexpr std::array<std::string_view, 3> kListings = {"ＮＹ市場", "ＮＡ市場", "他市場"};

constexpr std::string_view kNotRegistered = "未登録";
constexpr int16_t kFirstSector = 100;
constexpr int16_t kLastSector = 926;
constexpr int32_t kFirstStockRecord = 2;

bool IsListing(int16_t code) { return code >= 1 && code <= static_cast<int16_t>(kListings.size()); }

int InitialOf(const StockCode& code) {
  const char c = code.Padded().front();
  if (c >= 'A' && c <= 'Z') return c - 'A' + 1;
  if (c >= 'a' && c <= 'z') return c - 'a' + 1;
  return 0;
}

}  // namespace

std::string_view ListingName(int16_t listing_code) {
  return IsListing(listing_code) ? kListings[static_cast<size_t>(listing_code - 1)]
                                 : kNotRegistered;
}

std::string_view SectorName(int16_t sector_code) {
  const auto* range = std::ranges::find_if(kSectors, [sector_code](const SectorRange& sector) {
    return sector_code >= sector.first && sector_code <= sector.last;
  });
  return range == kSectors.end() ? kNotRegistered : range->name;
}

StockMaster::StockMaster(const MasterHeader& header, std::vector<StockRecord> stocks)
    : header_(header), stocks_(std::move(stocks)) {
  by_code_.reserve(stocks_.size());
  for (size_t i = 0; i < stocks_.size(); ++i) {
    const base::MasterRecord record(static_cast<int32_t>(i) + kFirstStockRecord);
    const StockCode& code = stocks_[i].code;
    by_initial_[static_cast<size_t>(InitialOf(code))].push_back(record);
    if (code != StockCode()) by_code_.try_emplace(code, record);
  }
}

const StockRecord& StockMaster::Stock(base::MasterRecord record) const {
  return stocks_[static_cast<size_t>(record.Value() - kFirstStockRecord)];
}

std::vector<base::MasterRecord> StockMaster::AllRecords() const {
  std::vector<base::MasterRecord> records;
  records.reserve(stocks_.size());
  for (size_t i = 0; i < stocks_.size(); ++i) {
    records.emplace_back(static_cast<int32_t>(i) + kFirstStockRecord);
  }
  return records;
}

base::MasterRecord StockMaster::Find(const StockCode& code) const {
  const auto found = by_code_.find(code);
  return found == by_code_.end() ? base::MasterRecord() : found->second;
}

std::span<const base::MasterRecord> StockMaster::WithInitial(int letter) const {
  return by_initial_.at(static_cast<size_t>(letter));
}

std::vector<StockMaster::SectorGroup> StockMaster::GroupBySector() const {
  std::map<int16_t, SectorGroup> groups;
  for (size_t i = 0; i < stocks_.size(); ++i) {
    const StockRecord& stock = stocks_[i];
    if (stock.sector < kFirstSector || stock.sector > kLastSector) continue;
    if (!IsListing(stock.listing)) continue;
    SectorGroup& group =
        groups.try_emplace(stock.sector, SectorGroup{stock.sector, {}}).first->second;
    group.by_listing[static_cast<size_t>(stock.listing - 1)].emplace_back(static_cast<int32_t>(i) +
                                                                          kFirstStockRecord);
  }
  std::vector<SectorGroup> sorted;
  sorted.reserve(groups.size());
  for (auto& [sector, group] : groups) sorted.push_back(std::move(group));
  return sorted;
}

}  // namespace orin::store
