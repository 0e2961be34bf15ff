#include "store/price_files.h"

#include <algorithm>
#include <limits>

#include "base/coding.h"
#include "base/record_file.h"
#include "store/file_names.h"
#include "store/stored_file.h"

namespace orin::store {

namespace {

int32_t RecordsIn(std::string_view bytes) {
  return base::RecordView(bytes, kDailyRecordLength).Count();
}

std::string NameForMessage(const StoreLocation& location, int16_t file) {
  return "株価ファイル「" + base::PathText(PathOf(location, {FileKind::kDaily, file})) + "」";
}

std::string DateForMessage(const StoreLocation& location, const DayPlace& place) {
  return NameForMessage(location, place.file) + "の日付レコードの" +
         std::to_string(place.position + 1) + "番目";
}

struct FieldColumn {
  std::vector<base::Currency> base::BarColumns::*column;
  size_t offset;  // in an entry
};
constexpr FieldColumn kFieldColumns[] = {
    {&base::BarColumns::open, bar_offset::kOpen},
    {&base::BarColumns::high, bar_offset::kHigh},
    {&base::BarColumns::low, bar_offset::kLow},
    {&base::BarColumns::close, bar_offset::kClose},
    {&base::BarColumns::volume, bar_offset::kVolume},
};

void PutNoData(base::BarColumns& bars) {
  for (const FieldColumn& field : kFieldColumns)
    std::ranges::fill(bars.*field.column, base::Currency());
  std::ranges::fill(bars.volume, base::kNoDataVolume);
}

// Field by field, because most conditions ask for one price: what is not asked for costs nothing.
void PutEntries(const char* entry, base::BarColumns& bars, size_t position, size_t count) {
  for (const FieldColumn& field : kFieldColumns) {
    std::vector<base::Currency>& column = bars.*field.column;
    if (column.empty()) continue;
    const char* value = entry + field.offset;
    base::Currency* out = column.data() + position;
    for (size_t i = 0; i < count; ++i) out[i] = base::GetCurrency(value + i * kBarLength);
  }
}

}  // namespace

int32_t HighestSlot(const StockMaster& master, int32_t records) {
  // A slot beyond every file is a damaged record. Taking it at its word would call all files too
  // short, or make the next one 130 MB long.
  const int32_t limit = records > 0 ? records : std::numeric_limits<int16_t>::max();
  int32_t highest = 0;
  for (const StockRecord& stock : master.Stocks()) {
    if (stock.slot.Value() <= limit) highest = std::max(highest, stock.slot.Value());
  }
  return highest;
}

base::Result<PriceFiles> PriceFiles::Open(const StoreLocation& location,
                                          const StockMaster& master) {
  const MasterHeader& header = master.Header();
  PriceFiles prices;
  prices.first_file_ = header.first_file;
  prices.date_record_ = header.date_record;
  if (header.current_file == 0) return prices;
  for (int16_t file = header.first_file; file <= header.current_file; ++file) {
    if (const auto mapped = prices.MapFile(location, file); !mapped) return base::Forward(mapped);
  }
  if (const auto whole = prices.CheckLengths(location, master); !whole) return base::Forward(whole);
  prices.CountRecords();
  if (const auto read = prices.ReadDays(location, header); !read) return base::Forward(read);
  return prices;
}

int32_t PriceFiles::LongestRecords() const {
  int32_t longest = 0;
  for (const base::MappedFile& file : files_) {
    longest = std::max(longest, RecordsIn(file.Bytes()));
  }
  return longest;
}

base::Status PriceFiles::MapFile(const StoreLocation& location, int16_t file) {
  const std::filesystem::path path = PathOf(location, {FileKind::kDaily, file});
  if (!Exists(path)) {
    return base::Fail(NameForMessage(location, file) + "がありません。");
  }
  auto mapped = base::MappedFile::Open(path);
  if (!mapped) return base::Forward(mapped);
  files_.push_back(std::move(*mapped));
  return {};
}

void PriceFiles::CountRecords() {
  records_ = std::numeric_limits<int32_t>::max();
  for (const base::MappedFile& file : files_) {
    records_ = std::min(records_, RecordsIn(file.Bytes()));
  }
}

base::Status PriceFiles::CheckLengths(const StoreLocation& location,
                                      const StockMaster& master) const {
  // A file that lacks what another one has was cut off. Longer ones are readable.
  const int32_t needed = std::max(HighestSlot(master, LongestRecords()), date_record_);
  for (int32_t i = 0; i < FileCount(); ++i) {
    const int32_t records = RecordsIn(files_[static_cast<size_t>(i)].Bytes());
    if (records >= needed) continue;
    return base::Fail(NameForMessage(location, static_cast<int16_t>(first_file_ + i)) +
                      "が短すぎます（" + std::to_string(needed) + "レコード必要なところ" +
                      std::to_string(records) + "レコード）。");
  }
  return {};
}

base::Status PriceFiles::ReadDays(const StoreLocation& location, const MasterHeader& header) {
  const int32_t count = (FileCount() - 1) * kDaysPerFile + header.current_record;
  days_.reserve(static_cast<size_t>(count));
  for (int32_t day = 0; day < count; ++day) {
    const DayPlace place = PlaceOf(day);
    const base::RecordView records(Bytes(place.file), kDailyRecordLength);
    const char* dates = records.Record(date_record_)->data();
    const auto date =
        DecodeDateEntry(dates + static_cast<size_t>(place.position) * kDateEntryLength);
    if (!date || date->IsNone()) {
      return base::Fail(DateForMessage(location, place) + "が日付ではありません。");
    }
    if (!days_.empty() && *date <= days_.back()) {
      return base::Fail(DateForMessage(location, place) + "の日付" + date->ToText() + "が前の日付" +
                        days_.back().ToText() + "より後ではありません。");
    }
    days_.push_back(*date);
  }
  return {};
}

const char* PriceFiles::Entry(base::SlotRecord slot, int32_t day) const {
  const DayPlace place = PlaceOf(day);
  return Bytes(place.file).data() + static_cast<size_t>(slot.Value() - 1) * kDailyRecordLength +
         static_cast<size_t>(place.position) * kBarLength;
}

void PriceFiles::Load(base::SlotRecord slot, int32_t first, int32_t last, base::PriceFields fields,
                      base::BarColumns& bars) const {
  const auto count = static_cast<size_t>(std::max(last - first + 1, 0));
  bars.Resize(count, fields);
  std::copy_n(days_.begin() + first, count, bars.dates.begin());
  // A damaged record costs its own stock only.
  if (!HasSlot(slot)) {
    PutNoData(bars);
    return;
  }
  for (int32_t day = first; day <= last;) {
    const int32_t in_file = std::min(kDaysPerFile - day % kDaysPerFile, last - day + 1);
    PutEntries(Entry(slot, day), bars, static_cast<size_t>(day - first),
               static_cast<size_t>(in_file));
    day += in_file;
  }
}

void PriceFiles::ReadAhead(std::span<const base::SlotRecord> slots, int32_t first,
                           int32_t last) const {
  // A stock's entries lie apart, a stretch a file, and the processor waits at the beginning of
  // each. Neighbouring stocks lie side by side in every file: touched file by file, they come in as
  // one stream.
  constexpr size_t kCacheLine = 64;
  for (int32_t day = first; day <= last;) {
    const int32_t in_file = std::min(kDaysPerFile - day % kDaysPerFile, last - day + 1);
    for (const base::SlotRecord slot : slots) {
      if (!HasSlot(slot)) continue;
      const char* entry = Entry(slot, day);
      const size_t length = static_cast<size_t>(in_file) * kBarLength;
      for (size_t at = 0; at < length; at += kCacheLine) {
        static_cast<void>(*static_cast<const volatile char*>(entry + at));
      }
    }
    day += in_file;
  }
}

base::Status PriceFiles::TakeNewDay(const StoreLocation& location, base::Date date) {
  const int16_t file = PlaceOf(DayCount()).file;
  // Mapped files are shared with the disk, so that days written into them are seen at once.
  if (file == first_file_ + FileCount()) {
    if (const base::Status mapped = MapFile(location, file); !mapped) return mapped;
    CountRecords();
  }
  days_.push_back(date);
  return {};
}

}  // namespace orin::store
