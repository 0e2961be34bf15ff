#include <algorithm>
#include <iterator>

#include "store/file_names.h"
#include "store/master_format.h"
#include "store/store_state.h"

namespace orin::store {

namespace {

/// Days of the old files that stay next to each other in one of the new ones.
struct Run {
  int32_t from;      // first day in the old files
  int32_t position;  // 0..99, its entry in the new file
  int32_t count;
};

/// Where the entries of a new file come from; a run lies within one old file.
std::vector<Run> RunsOfFile(std::span<const base::Date> days,
                            std::span<const base::Date> old_days) {
  std::vector<Run> runs;
  for (size_t i = 0; i < days.size(); ++i) {
    const auto old_day = std::ranges::lower_bound(old_days, days[i]);
    if (old_day == old_days.end() || *old_day != days[i]) continue;
    const auto from = static_cast<int32_t>(old_day - old_days.begin());
    const auto position = static_cast<int32_t>(i);
    const bool goes_on = !runs.empty() && from % kDaysPerFile != 0 &&
                         runs.back().from + runs.back().count == from &&
                         runs.back().position + runs.back().count == position;
    if (goes_on) {
      ++runs.back().count;
    } else {
      runs.push_back(Run{from, position, 1});
    }
  }
  return runs;
}

// All the entries of a file for these are eight megabytes.
constexpr int32_t kRecordsPerRelease = 2048;

base::Status WriteNewFile(const PriceFiles& prices, std::span<const base::Date> days,
                          int32_t date_record, base::WritableFile& file) {
  const std::vector<Run> runs = RunsOfFile(days, prices.Days());
  const std::string no_data = NoDataEntries(kDaysPerFile);
  StagedWriter writer(file);
  std::string entries;
  for (int32_t record = 1; record <= prices.Records(); ++record) {
    entries = record == date_record ? EncodeDates(days) : no_data;
    entries.resize(kDailyRecordLength);
    for (const Run& run : runs) {
      if (record == date_record) break;
      const char* from = prices.Entry(base::SlotRecord(record), run.from);
      std::copy_n(from, static_cast<size_t>(run.count) * kBarLength,
                  entries.data() + static_cast<size_t>(run.position) * kBarLength);
    }
    if (const base::Status added = writer.Add(entries); !added) return added;
    if (record % kRecordsPerRelease == 0) prices.ReleaseMemory();
  }
  return writer.Finish();
}

}  // namespace

base::Status StockStore::AddDays(std::span<const base::Date> dates) {
  if (const base::Status ready = state_->PrepareChange(); !ready) return ready;
  for (const base::Date date : dates) {
    if (const base::Status checked = State::CheckDate(date); !checked) return checked;
  }
  const auto unsorted = std::ranges::is_sorted_until(dates);
  if (unsorted != dates.end()) {
    return base::Fail("追加する日付" + unsorted->ToText() + "が古い順に並んでいません。");
  }
  const std::span<const base::Date> stored = state_->prices.Days();
  std::vector<base::Date> days;
  std::ranges::set_union(stored, dates, std::back_inserter(days));
  days.erase(std::unique(days.begin(), days.end()), days.end());
  if (days.size() == stored.size()) return {};
  // The usual case, a year of newer days, needs no rewriting.
  if (std::ranges::equal(stored, std::span(days).first(stored.size()))) {
    return state_->AppendDays(std::span(days).subspan(stored.size()), {});
  }
  return state_->RewriteDays(days);
}

base::Status StockStore::State::RewriteDays(const std::vector<base::Date>& days) {
  if (const base::Status checked = CheckDayCount(days.size()); !checked) return checked;
  const std::span<const base::Date> stored = prices.Days();
  const auto changed = std::ranges::mismatch(stored, days).in2 - days.begin();
  const auto count = static_cast<int32_t>(days.size());
  Transaction transaction(location, *files);
  // Files before the first new day keep their days and stay.
  int32_t day = static_cast<int32_t>(changed) / kDaysPerFile * kDaysPerFile;
  for (; day < count; day += kDaysPerFile) {
    const auto file = transaction.Stage(DailyFile(prices.PlaceOf(day).file));
    if (!file) return base::Forward(file);
    const auto days_of_file = std::span(days).subspan(
        static_cast<size_t>(day), static_cast<size_t>(std::min(kDaysPerFile, count - day)));
    const base::Status written =
        WriteNewFile(prices, days_of_file, master.Header().date_record, **file);
    if (!written) return written;
  }
  const MasterRecordBytes header = EncodeMasterHeader(HeaderFor(count, days.back()));
  transaction.Write({FileKind::kMaster, 0}, 0, AsText(header));
  if (const base::Status committed = Commit(transaction); !committed) return committed;
  return Reload();
}

}  // namespace orin::store
