#include <algorithm>
#include <array>

#include "store/file_names.h"
#include "store/store_state.h"
#include "store/sum_change.h"

namespace orin::store {

namespace {

/// The list without the event; nullopt where the list does not have it.
std::optional<SplitList> Without(const SplitList& list, const SplitEvent& event) {
  std::vector<SplitEvent> events(list.Events().begin(), list.Events().end());
  const auto found = std::ranges::find_if(events, [&event](const SplitEvent& other) {
    return other.code == event.code && other.ratio == event.ratio &&
           other.last_day_with_rights == event.last_day_with_rights;
  });
  if (found == events.end()) return std::nullopt;
  events.erase(found);
  SplitList remaining(std::move(events));
  remaining.KeepUnreadLines(list);
  return remaining;
}

std::string EventText(const SplitEvent& event) {
  return "銘柄" + std::string(event.code.Text()) + "の権利付最終日" +
         event.last_day_with_rights.ToText() + "の株式分割";
}

/// Writes the stock's entries of the days 0..last, file by file.
base::Status WriteAdjusted(const PriceFiles& prices, base::SlotRecord slot, int32_t last,
                           const SplitEvent& event, PriceSumChange& sums,
                           Transaction& transaction) {
  base::BarColumns bars;
  for (int32_t day = 0; day <= last; day += kDaysPerFile) {
    const int32_t last_of_file = std::min(day + kDaysPerFile - 1, last);
    prices.Load(slot, day, last_of_file, base::PriceFields::kAll, bars);
    const auto with_data = [&bars] { return std::ranges::count(bars.volume, base::kNoDataVolume); };
    const auto empty_before = with_data();
    AdjustForSplit(event, bars);
    // In a chart such a day may be missing; stored prices must not get lost.
    if (with_data() != empty_before) {
      return base::Fail(EventText(event) + "で修正すると株価が扱える値の範囲を超えます。");
    }
    std::string entries(bars.Size() * kBarLength, '\0');
    for (size_t i = 0; i < bars.Size(); ++i) EncodeBar(bars.At(i), entries.data() + i * kBarLength);
    transaction.Write(DailyFile(prices.PlaceOf(day).file), RecordOffset(slot.Value()), entries);
    sums.Take(slot, day, entries);
  }
  return {};
}

}  // namespace

base::Status StockStore::MakeMissingSplits(const StoreLocation& location, base::FileSystem& files) {
  // Without an orin.sys there is no store to make it for; a journal may be about to make it.
  if (Exists(location, kSplitsFile) || HasJournal(location)) return {};
  if (!Exists(location, {FileKind::kMaster, 0})) return {};
  // Another process that has the store open for writing makes it itself.
  const auto lock = StoreLock::Acquire(location.system_directory);
  if (!lock || Exists(location, kSplitsFile) || HasJournal(location)) return {};
  return base::ReplaceFile(files, PathOf(location, kSplitsFile), "");
}

base::Status StockStore::SaveSplits(SplitList splits) {
  if (const base::Status ready = state_->PrepareChange(); !ready) return ready;
  splits.KeepUnreadLines(state_->splits);
  const auto bytes = splits.Serialize();
  if (!bytes) return base::Forward(bytes);
  const base::Status replaced =
      base::ReplaceFile(*state_->files, PathOf(state_->location, kSplitsFile), *bytes);
  if (!replaced) {
    // The new file may have its name already and only its flush failed.
    state_->in_doubt = true;
    return replaced;
  }
  state_->splits = std::move(splits);
  return {};
}

base::Status StockStore::CorrectForSplit(const SplitEvent& event) {
  if (const base::Status ready = state_->PrepareChange(); !ready) return ready;
  const auto remaining = Without(state_->splits, event);
  if (!remaining) {
    return base::Fail(EventText(event) + "は「" + FileName(kSplitsFile) + "」にありません。");
  }
  const base::MasterRecord record = state_->master.Find(event.code);
  if (record.IsNone()) {
    return base::Fail("銘柄コード" + std::string(event.code.Text()) + "が見つかりません。");
  }
  const base::SlotRecord slot = state_->master.Stock(record).slot;
  const PriceFiles& prices = state_->prices;
  Transaction transaction(state_->location, *state_->files);
  if (prices.FileCount() > 0) {
    if (const base::Status checked = state_->CheckSlot(slot); !checked) return checked;
    // All stored days, also those before the calendar that was chosen when opening.
    const auto end = std::ranges::upper_bound(prices.Days(), event.last_day_with_rights);
    const auto last = static_cast<int32_t>(end - prices.Days().begin()) - 1;
    PriceSumChange sums(state_->location, prices);
    const auto written = WriteAdjusted(prices, slot, last, event, sums, transaction);
    if (!written) return written;
    sums.AddTo(transaction);
  }
  const auto bytes = remaining->Serialize();
  if (!bytes) return base::Forward(bytes);
  if (const auto staged = transaction.Replace(kSplitsFile, *bytes); !staged) return staged;
  if (const auto committed = state_->Commit(transaction); !committed) return committed;
  state_->splits = *remaining;
  return {};
}

}  // namespace orin::store
