#include "store/trend_lines.h"

#include <cmath>
#include <limits>

#include "base/coding.h"
#include "base/record_file.h"
#include "store/file_names.h"
#include "store/stored_file.h"

namespace orin::store {

namespace {

TrendLine DecodeLine(const char* bytes) {
  namespace at = trend_offset;
  const StoredDate first(base::GetDouble(bytes + at::kFirstDate));
  if (first.Day().IsNone()) return {};
  return TrendLine{first, base::GetCurrency(bytes + at::kFirstPrice),
                   StoredDate(base::GetDouble(bytes + at::kSecondDate)),
                   base::GetCurrency(bytes + at::kSecondPrice)};
}

void EncodeLine(const TrendLine& line, char* bytes) {
  namespace at = trend_offset;
  base::PutDouble(bytes + at::kFirstDate, line.first_date.Days());
  base::PutCurrency(bytes + at::kFirstPrice, line.first_price);
  base::PutDouble(bytes + at::kSecondDate, line.second_date.Days());
  base::PutCurrency(bytes + at::kSecondPrice, line.second_price);
}

}  // namespace

base::Date StoredDate::Day() const {
  return base::Date::FromFile(std::trunc(Days())).value_or(base::Date());
}

TrendLines DecodeTrendLines(std::string_view record) {
  TrendLines lines;
  for (size_t i = 0; i < lines.size(); ++i) {
    lines[i] = DecodeLine(record.data() + i * kTrendLineLength);
  }
  return lines;
}

std::string EncodeTrendLines(const TrendLines& lines) {
  std::string record(kTrendRecordLength, '\0');
  for (size_t i = 0; i < lines.size(); ++i) {
    EncodeLine(lines[i], record.data() + i * kTrendLineLength);
  }
  return record;
}

base::Result<TrendLines> LoadTrendLines(const StoreLocation& location, base::SlotRecord slot) {
  const auto bytes = ReadIfThere(location, kTrendLinesFile);
  if (!bytes) return base::Forward(bytes);
  const auto record = base::RecordView(*bytes, kTrendRecordLength).Record(slot.Value());
  return record ? DecodeTrendLines(*record) : TrendLines();
}

base::Status SaveTrendLines(const StoreLocation& location, base::SlotRecord slot,
                            const TrendLines& lines, base::FileSystem& files) {
  const std::filesystem::path path = PathOf(location, kTrendLinesFile);
  if (slot.Value() < 1 || slot.Value() > std::numeric_limits<int16_t>::max()) {
    return base::Fail("銘柄レコード" + std::to_string(slot.Value()) + "は「" +
                      base::PathText(path) + "」に書き込めません。");
  }
  // A few megabytes at most: replacing the file is simpler than a journal and as safe.
  auto bytes = ReadIfThere(location, kTrendLinesFile);
  if (!bytes) return base::Forward(bytes);
  // A record that was cut must not become the beginning of another one's lines.
  if (const size_t rest = bytes->size() % kTrendRecordLength; rest > 0) {
    const auto kept = KeepCopyAside(location, kTrendLinesFile, files);
    if (!kept) return base::Forward(kept);
    bytes->resize(bytes->size() - rest);
  }
  const auto offset = static_cast<size_t>(slot.Value() - 1) * kTrendRecordLength;
  if (bytes->size() < offset + kTrendRecordLength) bytes->resize(offset + kTrendRecordLength);
  bytes->replace(offset, kTrendRecordLength, EncodeTrendLines(lines));
  return base::ReplaceFile(files, path, *bytes);
}

}  // namespace orin::store
