#include <algorithm>
#include <iterator>
#include <set>

#include "store/file_names.h"
#include "store/master_format.h"
#include "store/store_state.h"
#include "store/stored_file.h"
#include "store/sum_change.h"

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

std::set<int16_t> SourcesOf(const PriceFiles& prices, std::span<const Run> runs) {
  std::set<int16_t> sources;
  for (const Run& run : runs) sources.insert(prices.PlaceOf(run.from).file);
  return sources;
}

/// A daily file that takes the place of an old one, with its sums.
class RewrittenFile {
 public:
  struct Shape {
    int16_t number;
    int32_t records;
    int32_t date_record;
  };

  RewrittenFile(const StoreLocation& location, const PriceFiles& prices, const Shape& shape,
                std::span<const base::Date> days)
      : prices_(prices),
        shape_(shape),
        days_(days),
        runs_(RunsOfFile(days, prices.Days())),
        damage_(location, prices, SourcesOf(prices, runs_)),
        sums_(shape.number, shape.records, static_cast<int32_t>(days.size())) {}

  base::Status Write(base::WritableFile& file) {
    StagedWriter writer(file);
    for (int32_t record = 1; record <= shape_.records; ++record) {
      const std::string entries = EntriesOf(record);
      if (damage_.IsKnown()) TakeSum(record, entries);
      if (const base::Status added = writer.Add(entries); !added) return added;
      if (record % kRecordsPerRelease == 0) prices_.ReleaseMemory();
    }
    return writer.Finish();
  }

  /// Files of sums that say nothing any more are removed, as a missing one is told by the check.
  base::Status ReplaceSums(const StoreLocation& location, Transaction& transaction) {
    const StoreFile file = SumsOf(shape_.number);
    if (damage_.IsKnown()) return transaction.Replace(file, sums_.Finish(damage_.OfFiles()));
    if (Exists(location, file)) transaction.Remove(file);
    return {};
  }

 private:
  [[nodiscard]] std::string EntriesOf(int32_t record) const {
    std::string entries = record == shape_.date_record ? EncodeDates(days_) : no_data_;
    entries.resize(kDailyRecordLength);
    for (const Run& run : runs_) {
      if (record == shape_.date_record) break;
      const char* from = prices_.Entry(base::SlotRecord(record), run.from);
      std::copy_n(from, static_cast<size_t>(run.count) * kBarLength,
                  entries.data() + static_cast<size_t>(run.position) * kBarLength);
    }
    return entries;
  }

  void TakeSum(int32_t record, std::string_view entries) {
    const size_t length = record == shape_.date_record ? kDateEntryLength : kBarLength;
    sums_.Take({shape_.number, record, length}, entries, damage_.OfRecord(record, length));
  }

  const PriceFiles& prices_;
  Shape shape_;
  std::span<const base::Date> days_;
  std::vector<Run> runs_;
  SumDamage damage_;
  NewSums sums_;
  std::string no_data_ = NoDataEntries(kDaysPerFile);
};

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
  const size_t more = days.size() - stored.size();
  if (state_->FitsAppend(more) &&
      std::ranges::equal(stored, std::span(days).first(stored.size()))) {
    return state_->AppendDays(std::span(days).last(more), {});
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
    const int16_t number = prices.PlaceOf(day).file;
    if (const base::Status checked = CheckNewFile(number); !checked) return checked;
    const auto file = transaction.Stage(DailyFile(number));
    if (!file) return base::Forward(file);
    const auto days_of_file = std::span(days).subspan(
        static_cast<size_t>(day), static_cast<size_t>(std::min(kDaysPerFile, count - day)));
    RewrittenFile made(location, prices, {number, RecordsPerFile(), master.Header().date_record},
                       days_of_file);
    base::Status written = made.Write(**file);
    if (written) written = made.ReplaceSums(location, transaction);
    if (!written) return written;
  }
  const MasterRecordBytes header = EncodeMasterHeader(HeaderFor(count, days.back()));
  transaction.Write({FileKind::kMaster, 0}, 0, AsText(header));
  if (const base::Status committed = Commit(transaction); !committed) return committed;
  return Reload();
}

}  // namespace orin::store
