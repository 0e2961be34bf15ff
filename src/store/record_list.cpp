#include "store/record_list.h"

#include <algorithm>

#include "base/coding.h"
#include "base/cp932.h"
#include "base/paths.h"
#include "base/record_file.h"
#include "store/stored_file.h"

namespace orin::store {

namespace {

constexpr std::string_view kReplacement = "\uFFFD";

bool IsControl(char c) { return (c >= '\0' && c < ' ') || c == '\x7f'; }

std::string Quoted(const std::filesystem::path& path) { return "「" + base::PathText(path) + "」"; }

std::string NumberField(uint64_t value) {
  std::string bytes(sizeof value, '\0');
  base::PutUint64(bytes.data(), value);
  return bytes;
}

}  // namespace

bool DecodeField(std::string_view bytes, FieldRule /*rule*/, StockCode& value) {
  const auto code = StockCode::Parse(bytes);
  if (code) value = *code;
  return code.has_value();
}

bool DecodeField(std::string_view bytes, FieldRule rule, base::Date& value) {
  const auto date = base::Date::FromFile(base::GetDouble(bytes.data()));
  if (date) value = *date;
  return date && (rule != FieldRule::kRequired || !date->IsNone());
}

bool DecodeField(std::string_view bytes, FieldRule /*rule*/, base::Currency& value) {
  value = base::GetCurrency(bytes.data());
  return true;
}

bool DecodeField(std::string_view bytes, FieldRule /*rule*/, TradeSide& value) {
  value = TradeSide(base::GetInt16(bytes.data()));
  return value == TradeSide::kBuy || value == TradeSide::kSell;
}

bool DecodeField(std::string_view bytes, FieldRule rule, std::string& value) {
  value = base::DecodeFixedField(bytes);
  // A record of zero bytes is what a crash leaves, not a text.
  const bool is_text =
      value.find(kReplacement) == std::string::npos && std::ranges::none_of(value, IsControl);
  return is_text && (rule != FieldRule::kRequired || !value.empty());
}

base::Result<std::string> EncodeField(const StockCode& value, FieldRule /*rule*/,
                                      size_t /*width*/) {
  if (value == StockCode()) return base::Fail("がありません。");
  return std::string(value.Padded());
}

base::Result<std::string> EncodeField(base::Date value, FieldRule rule, size_t width) {
  if (rule == FieldRule::kRequired && value.IsNone()) return base::Fail("がありません。");
  std::string bytes(width, '\0');
  base::PutDouble(bytes.data(), static_cast<double>(value.Serial()));
  return bytes;
}

base::Result<std::string> EncodeField(base::Currency value, FieldRule /*rule*/, size_t /*width*/) {
  return NumberField(static_cast<uint64_t>(value.Raw()));
}

base::Result<std::string> EncodeField(TradeSide value, FieldRule /*rule*/, size_t width) {
  std::string bytes(width, '\0');
  base::PutInt16(bytes.data(), static_cast<int16_t>(value));
  return bytes;
}

base::Result<std::string> EncodeField(const std::string& value, FieldRule rule, size_t width) {
  if (rule == FieldRule::kRequired && value.empty()) return base::Fail("がありません。");
  if (std::ranges::any_of(value, IsControl)) {
    return base::Fail("に改行などの使えない文字があります。");
  }
  const auto encoded = base::EncodeCp932(value);
  if (!encoded) return base::Fail("が書けません。" + encoded.error().message);
  if (rule != FieldRule::kCut && encoded->size() > width) {
    return base::Fail("「" + value + "」が長すぎます（" + std::to_string(width) + "バイトまで）。");
  }
  return base::EncodeFixedField(value, width);
}

ListFileRecords SplitListFile(std::string_view bytes, std::string_view mark, size_t record_length,
                              const std::filesystem::path& path) {
  ListFileRecords split;
  const base::RecordView view(bytes, record_length);
  if (!bytes.starts_with(mark) || view.Count() == 0) {
    split.problem = Quoted(path) + "はこの版のミルテのファイルではないため使えません。";
    return split;
  }
  const int64_t count = base::GetUint32(bytes.data() + list_file_offset::kCount);
  const int64_t stored = view.Count() - 1;
  if (count != stored || view.HasPartialRecord()) {
    split.problem = Quoted(path) + "の長さ" + std::to_string(bytes.size()) +
                    "バイトが先頭のレコードの件数" + std::to_string(count) +
                    "と合いません。読めるレコードだけを使います。";
  }
  const auto last = static_cast<int32_t>(std::min(count, stored)) + 1;
  for (int32_t number = 2; number <= last; ++number) {
    split.records.push_back(*view.Record(number));
  }
  return split;
}

std::string ListFileHeader(std::string_view mark, size_t record_length, size_t count) {
  std::string header(record_length, '\0');
  header.replace(list_file_offset::kMark, mark.size(), mark);
  base::PutUint32(header.data() + list_file_offset::kCount, static_cast<uint32_t>(count));
  return header;
}

std::string FieldProblem(const std::filesystem::path& path, size_t record, std::string_view title,
                         std::string_view predicate) {
  return Quoted(path) + "のレコード" + std::to_string(record) + "の" + std::string(title) +
         std::string(predicate);
}

std::filesystem::path FoundListFile(const std::filesystem::path& path) {
  return base::NativePath(path.filename().string(), path.parent_path());
}

base::Status ReplaceListFile(base::FileSystem& files, const std::filesystem::path& path,
                             std::string_view bytes, bool is_damaged) {
  if (is_damaged) {
    const auto damaged = base::ReadFile(path);
    if (!damaged) return base::Forward(damaged);
    std::filesystem::path aside = path;
    aside += ".bad";
    if (const base::Status kept = base::ReplaceFile(files, aside, *damaged); !kept) return kept;
  }
  return base::ReplaceFile(files, path, bytes);
}

}  // namespace orin::store
