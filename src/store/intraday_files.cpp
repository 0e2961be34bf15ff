#include "store/intraday_files.h"

#include <algorithm>
#include <cerrno>
#include <functional>
#include <optional>
#include <unistd.h>
#include <utility>

#include "base/coding.h"
#include "base/file_descriptor.h"
#include "base/file_system.h"
#include "base/system_error.h"
#include "store/file_names.h"
#include "store/stored_file.h"

namespace orin::store {

namespace {

struct IntradayRecord {
  size_t file_length = 0;
  std::string bytes;  // fewer than a record's, or none, where the file ends before
};

/// One record alone: a file holds those of all stocks.
base::Result<IntradayRecord> ReadRecord(const std::filesystem::path& path, int32_t number) {
  const auto file = base::OpenRegularFile(path);
  if (!file) return base::Forward(file);
  IntradayRecord record{static_cast<size_t>(file->size), std::string(kIntradayRecordLength, '\0')};
  const auto offset = static_cast<off_t>(number - 1) * static_cast<off_t>(kIntradayRecordLength);
  const ssize_t count = base::RetryInterrupted([&] {
    return pread(file->descriptor.Number(), record.bytes.data(), record.bytes.size(), offset);
  });
  if (count < 0) return base::FailSystemCall(path, "を読み込めません", errno);
  record.bytes.resize(static_cast<size_t>(count));
  return record;
}

/// Of the first record; nullopt where it is damaged.
std::optional<base::Date> DateOf(const IntradayRecord& heading) {
  if (heading.bytes.size() < kIntradayRecordLength) return base::Date();
  return base::Date::FromFile(base::GetDouble(heading.bytes.data()));
}

std::vector<IntradayBar> DecodeBars(std::string_view record) {
  std::vector<IntradayBar> bars;
  if (record.size() < kIntradayRecordLength) return bars;
  for (size_t i = 0; i < kIntradayEntries; ++i) {
    const IntradayBar bar = DecodeIntradayBar(record.data() + i * kIntradayEntryLength);
    const bool is_time = bar.seconds > 0 && bar.seconds < kSecondsPerDay;
    if (is_time && bar.bar.HasData()) bars.push_back(bar);
  }
  std::ranges::stable_sort(bars, {}, &IntradayBar::seconds);
  return bars;
}

}  // namespace

IntradayFiles IntradayFiles::Open(const StoreLocation& location) {
  IntradayFiles all;
  for (int16_t number = 1; number <= kLastFileNumber; ++number) {
    const StoreFile file = {FileKind::kIntraday, number};
    if (Exists(location, file)) all.Add(PathOf(location, file));
  }
  std::ranges::reverse(all.files_);
  std::ranges::stable_sort(all.files_, std::ranges::greater(), &DatedFile::date);
  return all;
}

void IntradayFiles::Add(const std::filesystem::path& path) {
  const auto heading = ReadRecord(path, 1);
  if (!heading) {
    problems_.push_back(heading.error().message);
    if (readable_) readable_ = base::Forward(heading);
    return;
  }
  if (heading->file_length == 0) {
    problems_.push_back("「" + base::PathText(path) + "」は空で、日付のレコードがありません。");
  } else if (heading->file_length % kIntradayRecordLength != 0) {
    problems_.push_back("「" + base::PathText(path) + "」の長さ" +
                        std::to_string(heading->file_length) + "バイトがレコード長" +
                        std::to_string(kIntradayRecordLength) + "で割り切れません。");
  }
  const auto date = DateOf(*heading);
  if (!date) problems_.push_back("「" + base::PathText(path) + "」の日付が日付ではありません。");
  if (date && !date->IsNone()) files_.push_back({*date, path});
}

base::Result<IntradayDay> IntradayFiles::Newest(base::SlotRecord slot, base::Date last) const {
  if (!readable_) return base::Forward(readable_);
  if (slot.Value() < 2) return IntradayDay();
  for (const DatedFile& file : files_) {
    if (last < file.date) continue;
    const auto record = ReadRecord(file.path, slot.Value());
    if (!record) return base::Forward(record);
    std::vector<IntradayBar> bars = DecodeBars(record->bytes);
    if (!bars.empty()) return IntradayDay{file.date, std::move(bars)};
  }
  return IntradayDay();
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
