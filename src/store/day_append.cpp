#include <algorithm>
#include <cstring>

#include "store/file_names.h"
#include "store/store_state.h"
#include "store/sum_change.h"

namespace orin::store {

base::Status StockStore::AppendDay(base::Date date,
                                   std::span<const std::pair<base::SlotRecord, base::Bar>> bars) {
  if (const base::Status ready = state_->PrepareChange(); !ready) return ready;
  if (const base::Status checked = State::CheckDate(date); !checked) return checked;
  const std::span<const base::Date> days = state_->prices.Days();
  if (!days.empty() && date <= days.back()) {
    return base::Fail("追加する日付" + date.ToText() + "が株価データの最新日付（" +
                      days.back().ToText() + "）より後ではありません。");
  }
  return state_->AppendDays(std::span(&date, 1), bars);
}

base::Status StockStore::State::CheckDate(base::Date date) {
  // The file's date counts the days after 1899/12/30, and 0 is an unused entry.
  if (date.Serial() >= 1 && base::Date::FromFile(date.Serial())) return {};
  return base::Fail("追加する日付" + date.ToText() +
                    "は、株価データに保存できる1899/12/31から9999/12/31までの範囲にありません。");
}

base::Status StockStore::State::CheckDayCount(size_t count) const {
  const int16_t first = master.Header().first_file;
  const size_t most = static_cast<size_t>(kLastFileNumber - first + 1) * kDaysPerFile;
  if (count <= most) return {};
  return base::Fail("株価ファイルは" + FileName(DailyFile(kLastFileNumber)) + "までのため、" +
                    std::to_string(count) + "日分の日付を保存できません。");
}

base::Status StockStore::State::AppendDays(std::span<const base::Date> dates,
                                           std::span<const SlotBar> bars) {
  const auto stored = static_cast<size_t>(prices.DayCount());
  if (const auto checked = CheckDayCount(stored + dates.size()); !checked) return checked;
  std::vector<const base::Bar*> by_record;
  if (!bars.empty()) by_record.resize(static_cast<size_t>(RecordsPerFile()) + 1);
  for (const auto& [slot, bar] : bars) {
    if (const base::Status checked = CheckSlot(slot); !checked) return checked;
    by_record[static_cast<size_t>(slot.Value())] = &bar;
  }
  const DayPlace place = prices.PlaceOf(static_cast<int32_t>(stored));
  const base::Status added = place.position > 0
                                 ? AppendToCurrentFile(dates, by_record)
                                 : AppendNewFile(place.file, dates.front(), by_record);
  if (!added) return added;
  const auto count = static_cast<int32_t>(stored + dates.size());
  // Up to here no reader can see the new days.
  if (const auto saved = CommitHeader(HeaderFor(count, dates.back())); !saved) return saved;
  for (const base::Date date : dates) {
    if (const auto taken = prices.TakeNewDay(location, date); !taken) {
      // Committed, but not mapped: the next change loads everything again first.
      in_doubt = true;
      return taken;
    }
  }
  SetCalendar();
  return {};
}

base::Status StockStore::State::AppendToCurrentFile(std::span<const base::Date> dates,
                                                    std::span<const base::Bar* const> bars) {
  const int32_t day = prices.DayCount();
  const DayPlace place = prices.PlaceOf(day);
  const int32_t date_record = master.Header().date_record;
  const auto file = files->OpenForUpdate(PathOf(location, DailyFile(place.file)));
  if (!file) return base::Forward(file);
  const std::string no_data = NoDataEntries(dates.size());
  SumAppend sums(location, place.file, place.position);
  std::string entries;
  for (int32_t record = 1; record <= prices.Records(); ++record) {
    if (record == date_record) continue;
    entries = no_data;
    const base::Bar* bar = bars.empty() ? nullptr : bars[static_cast<size_t>(record)];
    if (bar != nullptr) EncodeBar(*bar, entries.data());
    sums.Take({place.file, record}, entries);
    // Behind the last committed day there may be remains of a day that never was; most entries
    // are without data as they should be.
    const char* stored = prices.Entry(base::SlotRecord(record), day);
    if (std::memcmp(stored, entries.data(), entries.size()) == 0) continue;
    const int64_t offset = RecordOffset(record) + place.position * int64_t{kBarLength};
    if (const auto written = (*file)->WriteAt(offset, entries); !written) return written;
  }
  const int64_t offset = RecordOffset(date_record) + place.position * int64_t{kDateEntryLength};
  entries = EncodeDates(dates);
  sums.Take({place.file, date_record, kDateEntryLength}, entries);
  base::Status status = (*file)->WriteAt(offset, entries);
  if (status) status = (*file)->Sync();
  return status ? sums.Write(static_cast<int32_t>(dates.size()), *files) : status;
}

bool StockStore::State::FitsAppend(size_t count) const {
  const auto position = static_cast<size_t>(prices.PlaceOf(prices.DayCount()).position);
  return position == 0 ? count == 1 : position + count <= size_t{kDaysPerFile};
}

base::Status StockStore::State::CheckNewFile(int16_t number) const {
  const StoreFile file = DailyFile(number);
  if (number <= master.Header().current_file || number == leftover) return {};
  if (!Exists(location, file)) return {};
  return base::Fail("株価ファイル「" + base::PathText(PathOf(location, file)) +
                    "」がすでにあるので、新しい日のために作れません。別の場所に移してください。");
}

base::Status StockStore::State::AppendNewFile(int16_t number, base::Date date,
                                              std::span<const base::Bar* const> bars) {
  if (const base::Status checked = CheckNewFile(number); !checked) return checked;
  // The file has its name only once it is whole; one that a killed writer has left is replaced.
  const std::filesystem::path staged = StagedPathOf(location, DailyFile(number));
  const std::string no_data = NoDataEntries(kDaysPerFile);
  NewSums sums(number, RecordsPerFile(), 1);
  const auto write = [&]() -> base::Status {
    const auto file = files->Create(staged);
    if (!file) return base::Forward(file);
    StagedWriter writer(**file);
    std::string entries;
    for (int32_t record = 1; record <= RecordsPerFile(); ++record) {
      entries = record == master.Header().date_record ? EncodeDateEntry(date) : no_data;
      entries.resize(kDailyRecordLength);
      const base::Bar* bar = bars.empty() ? nullptr : bars[static_cast<size_t>(record)];
      if (bar != nullptr) EncodeBar(*bar, entries.data());
      sums.Take(Summed(number, record), entries);
      if (const base::Status added = writer.Add(entries); !added) return added;
    }
    return writer.Finish();
  };
  base::Status status = write();
  // From here on the file may be found, and is to be replaced should the append fail.
  if (status) leftover = number;
  if (status) status = files->Rename(staged, PathOf(location, DailyFile(number)));
  if (!status) {
    static_cast<void>(files->Remove(staged));
    return status;
  }
  return PlaceNewSums(number, sums.Finish());
}

base::Status StockStore::State::PlaceNewSums(int16_t number, std::string_view bytes) {
  const std::filesystem::path path = PathOf(location, SumsOf(number));
  // A store without sums stays without; a killed writer may have left some.
  if (KeepsSums(location)) return base::ReplaceFile(*files, path, bytes);
  if (Exists(path)) {
    if (const base::Status removed = files->Remove(path); !removed) return removed;
  }
  return files->SyncDirectory(location.data_directory);
}

}  // namespace orin::store
