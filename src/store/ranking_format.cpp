#include "store/ranking_format.h"

#include <algorithm>

#include "base/coding.h"
#include "base/cp932.h"
#include "base/record_file.h"

namespace orin::store {

namespace {

/// The bytes of a record that are zero but for what is put into them.
char* AddRecord(std::string& bytes) {
  bytes.resize(bytes.size() + kRankingRecordLength, '\0');
  return bytes.data() + bytes.size() - kRankingRecordLength;
}

void AddHeader(const RankingContent& content, std::string& bytes) {
  char* record = AddRecord(bytes);
  std::ranges::copy(kRankingMark, record + ranking_header_offset::kMark);
  base::PutDouble(record + ranking_header_offset::kDate,
                  static_cast<double>(content.date.Serial()));
  base::PutUint32(record + ranking_header_offset::kCount,
                  static_cast<uint32_t>(content.stocks.size()));
}

void AddStock(const RankedStock& stock, std::string& bytes) {
  char* record = AddRecord(bytes);
  std::ranges::copy(stock.code.Padded(), record + ranked_stock_offset::kCode);
  base::PutInt16(record + ranked_stock_offset::kListing, stock.listing);
  char* place = record + ranked_stock_offset::kValues;
  for (const RankedValues& values : stock.values) {
    for (const base::Currency value : values) {
      base::PutCurrency(place, value);
      place += sizeof(int64_t);
    }
  }
}

}  // namespace

base::Result<std::string> EncodeRanking(const RankingContent& content) {
  std::string bytes;
  AddHeader(content, bytes);
  for (const std::string& title : content.titles) {
    const auto field = base::EncodeFixedField(title, ranking_title_offset::kTitleWidth);
    if (!field) return base::Forward(field);
    std::ranges::copy(*field, AddRecord(bytes) + ranking_title_offset::kTitle);
  }
  std::vector<const RankedStock*> ordered;
  for (const RankedStock& stock : content.stocks) ordered.push_back(&stock);
  std::ranges::sort(ordered, {}, [](const RankedStock* stock) { return stock->code.Padded(); });
  for (const RankedStock* stock : ordered) AddStock(*stock, bytes);
  return bytes;
}

namespace {

/// The mark of a version before this one, and behind it at least a header.
bool IsOfEarlierVersion(std::string_view bytes) {
  constexpr size_t kVersion = kRankingMark.size() - 1;
  return bytes.size() >= kRankingRecordLength &&
         bytes.starts_with(kRankingMark.substr(0, kVersion)) && bytes[kVersion] >= '0' &&
         bytes[kVersion] < kRankingMark[kVersion];
}

}  // namespace

base::Status CheckRankingBytes(const std::string& name, std::string_view bytes) {
  if (IsOfEarlierVersion(bytes)) {
    return base::Fail(name +
                      " のランキングファイルは以前のバージョンで作成されたランキングファイルのため"
                      "使用できません");
  }
  const auto header = base::RecordView(bytes, kRankingRecordLength).Record(1);
  const bool has_date =
      header && base::Date::FromFile(base::GetDouble(header->data() + ranking_header_offset::kDate))
                        .value_or(base::Date()) != base::Date();
  const uint64_t count =
      header ? base::GetUint32(header->data() + ranking_header_offset::kCount) : 0;
  if (bytes.starts_with(kRankingMark) && has_date &&
      bytes.size() == (count + kFirstRankedRecord - 1) * kRankingRecordLength) {
    return {};
  }
  return base::Fail(name + " のランキングファイルは壊れているため使用できません。");
}

}  // namespace orin::store
