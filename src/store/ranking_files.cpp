#include "store/ranking_files.h"

#include <algorithm>

#include "base/coding.h"
#include "base/cp932.h"
#include "base/value_column.h"
#include "store/file_names.h"
#include "store/stored_file.h"

namespace orin::store {

using base::Currency;

namespace {

int16_t ListingOf(const char* record) {
  return base::GetInt16(record + ranked_stock_offset::kListing);
}

Currency ValueOf(const char* record, int32_t ranking, RankingPeriod period) {
  return base::GetCurrency(record + RankedValueOffset(period, ranking));
}

std::string_view CodeOfRecord(const char* record) {
  return {record + ranked_stock_offset::kCode, StockCode::kWidth};
}

}  // namespace

base::Result<RankingFile> RankingFile::Open(const std::filesystem::path& path) {
  auto file = base::MappedFile::Open(path);
  if (!file) return base::Forward(file);
  const base::Status checked = CheckRankingBytes(base::PathText(path), file->Bytes());
  if (!checked) return base::Forward(checked);
  return RankingFile(std::move(*file));
}

base::Date RankingFile::Date() const {
  const double stored = base::GetDouble(file_.Bytes().data() + ranking_header_offset::kDate);
  return base::Date::FromFile(stored).value_or(base::Date());
}

std::string RankingFile::Title(int32_t ranking) const {
  const size_t record = static_cast<size_t>(ranking) * kRankingRecordLength;
  return base::DecodeFixedField(file_.Bytes().substr(record + ranking_title_offset::kTitle,
                                                     ranking_title_offset::kTitleWidth));
}

int32_t RankingFile::Count() const {
  return static_cast<int32_t>(file_.Bytes().size() / kRankingRecordLength) -
         (kFirstRankedRecord - 1);
}

const char* RankingFile::StockRecordAt(int32_t place) const {
  const auto record = static_cast<size_t>(kFirstRankedRecord - 1 + place);
  return file_.Bytes().data() + record * kRankingRecordLength;
}

const char* RankingFile::Find(const StockCode& code) const {
  int32_t begin = 0;
  int32_t end = Count();
  while (begin < end) {
    const int32_t middle = begin + (end - begin) / 2;
    if (CodeOfRecord(StockRecordAt(middle)) < code.Padded()) {
      begin = middle + 1;
    } else {
      end = middle;
    }
  }
  if (begin == Count() || CodeOfRecord(StockRecordAt(begin)) != code.Padded()) return nullptr;
  return StockRecordAt(begin);
}

std::optional<Currency> RankingFile::Value(const StockCode& code, int32_t ranking,
                                           RankingPeriod period) const {
  const char* record = Find(code);
  if (record == nullptr) return std::nullopt;
  const Currency value = ValueOf(record, ranking, period);
  return value != base::kNoValue ? std::optional(value) : std::nullopt;
}

// Sorted once, a column gives the place of any stock, in either order, by two searches.
std::span<const Currency> RankingFile::Sorted(const ColumnKey& key) const {
  const auto [found, is_new] = sorted_.try_emplace(key);
  std::vector<Currency>& values = found->second;
  if (!is_new) return values;
  const auto& [ranking, period, market] = key;
  for (int32_t place = 0; place < Count(); ++place) {
    const char* record = StockRecordAt(place);
    if (market != kAllMarkets && ListingOf(record) != market) continue;
    const Currency value = ValueOf(record, ranking, period);
    if (value != base::kNoValue) values.push_back(value);
  }
  std::ranges::sort(values);
  return values;
}

std::optional<int32_t> RankingFile::PlaceOf(const StockCode& code,
                                            const RankingQuery& query) const {
  const auto value = Value(code, query.ranking, query.period);
  if (!value) return std::nullopt;
  const int32_t market = query.within_market ? ListingOf(Find(code)) : kAllMarkets;
  const auto sorted = Sorted({query.ranking, query.period, market});
  const auto better = query.is_descending
                          ? sorted.end() - std::ranges::upper_bound(sorted, *value)
                          : std::ranges::lower_bound(sorted, *value) - sorted.begin();
  return static_cast<int32_t>(better) + 1;
}

RankingFiles RankingFiles::Open(const StoreLocation& location) {
  RankingFiles all;
  const auto add = [&all, &location](const StoreFile& file) {
    if (!Exists(location, file)) return;
    auto opened = RankingFile::Open(PathOf(location, file));
    if (opened) {
      const base::Date date = opened->Date();
      all.files_.try_emplace(date, std::move(*opened));
    } else {
      all.problems_.push_back(opened.error().message);
    }
  };
  for (int16_t number = 0; number <= kLastFileNumber; ++number) add({FileKind::kRanking, number});
  add({FileKind::kNewestRanking, 0});
  return all;
}

const RankingFile* RankingFiles::OfDate(base::Date date) const {
  const auto found = files_.find(date);
  return found == files_.end() ? nullptr : &found->second;
}

const RankingFile* RankingFiles::NewestOf(base::Date first, base::Date last) const {
  const auto after = files_.upper_bound(last);
  if (after == files_.begin()) return nullptr;
  const auto& [date, file] = *std::prev(after);
  return date >= first ? &file : nullptr;
}

}  // namespace orin::store
