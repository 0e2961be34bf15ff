#include "store/intraday_files.h"

#include <algorithm>
#include <system_error>

#include "base/coding.h"
#include "base/file_system.h"
#include "base/record_file.h"
#include "store/file_names.h"

namespace orin::store {

namespace {

std::vector<IntradayBar> DecodeBars(std::string_view record) {
  std::vector<IntradayBar> bars;
  for (size_t i = 0; i < kIntradayEntries; ++i) {
    const IntradayBar bar = DecodeIntradayBar(record.data() + i * kIntradayEntryLength);
    const bool is_time = bar.seconds > 0 && bar.seconds < kSecondsPerDay;
    if (is_time && bar.bar.HasData()) bars.push_back(bar);
  }
  std::ranges::stable_sort(bars, {}, &IntradayBar::seconds);
  return bars;
}

}  // namespace

base::Result<IntradayDay> LoadIntraday(const StoreLocation& location, base::SlotRecord slot,
                                       base::Date last) {
  IntradayDay newest;
  for (int16_t number = 1; number <= kLastFileNumber; ++number) {
    const std::filesystem::path path = PathOf(location, {FileKind::kIntraday, number});
    std::error_code failure;
    if (!std::filesystem::exists(path, failure)) continue;
    const auto bytes = base::ReadFile(path);
    if (!bytes) return base::Forward(bytes);
    const base::RecordView records(*bytes, kIntradayRecordLength);
    const auto heading = records.Record(1);
    const auto record = records.Record(slot.Value());
    if (!heading || !record || slot.Value() < 2) continue;
    const auto date = base::Date::FromFile(base::GetDouble(heading->data()));
    if (!date || date->IsNone() || last < *date || *date < newest.date) continue;
    std::vector<IntradayBar> bars = DecodeBars(*record);
    if (!bars.empty()) newest = {*date, std::move(bars)};
  }
  return newest;
}

std::string EncodeIntradayFile(base::Date date,
                               const std::vector<std::vector<IntradayBar>>& slots) {
  std::string bytes((slots.size() + 1) * kIntradayRecordLength, '\0');
  base::PutDouble(bytes.data(), date.Serial());
  for (size_t slot = 0; slot < slots.size(); ++slot) {
    char* record = bytes.data() + (slot + 1) * kIntradayRecordLength;
    for (size_t i = 0; i < kIntradayEntries; ++i) {
      const IntradayBar bar = i < slots[slot].size() ? slots[slot][i] : IntradayBar();
      EncodeIntradayBar(bar, record + i * kIntradayEntryLength);
    }
  }
  return bytes;
}

}  // namespace orin::store
