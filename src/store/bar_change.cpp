#include <algorithm>
#include <cstring>
#include <tuple>

#include "store/file_names.h"
#include "store/store_state.h"
#include "store/sum_change.h"

namespace orin::store {

namespace {

auto PlaceInFiles(const BarChange& change) { return std::tie(change.slot, change.day); }

/// Joins entries that stand next to each other in a file into one write.
class EntryWriter {
 public:
  EntryWriter(const PriceFiles& prices, Transaction& transaction)
      : prices_(prices), transaction_(transaction) {}

  /// `day` from 0.
  void Add(base::SlotRecord slot, int32_t day, const char* entry) {
    const DayPlace place = prices_.PlaceOf(day);
    const int64_t offset = RecordOffset(slot.Value()) + place.position * int64_t{kBarLength};
    if (place.file != file_ || offset != offset_ + static_cast<int64_t>(entries_.size())) {
      Finish();
      file_ = place.file;
      offset_ = offset;
    }
    entries_.append(entry, kBarLength);
  }

  void Finish() {
    if (!entries_.empty()) transaction_.Write(DailyFile(file_), offset_, entries_);
    entries_.clear();
  }

 private:
  const PriceFiles& prices_;
  Transaction& transaction_;
  std::string entries_;
  int16_t file_ = 0;
  int64_t offset_ = 0;
};

/// By slot and day; of several changes of one entry the last one counts.
std::vector<const BarChange*> InFileOrder(std::span<const BarChange> changes) {
  std::vector<const BarChange*> ordered;
  ordered.reserve(changes.size());
  for (const BarChange& change : changes) ordered.push_back(&change);
  // The update hands them over in order; sorting millions of them is worth avoiding.
  if (std::ranges::is_sorted(changes, {}, PlaceInFiles)) return ordered;
  std::ranges::stable_sort(ordered, {},
                           [](const BarChange* change) { return PlaceInFiles(*change); });
  return ordered;
}

}  // namespace

base::Status StockStore::ChangeBars(std::span<const BarChange> changes) {
  if (const base::Status ready = state_->PrepareChange(); !ready) return ready;
  for (const BarChange& change : changes) {
    if (const base::Status checked = state_->CheckSlot(change.slot); !checked) return checked;
    if (change.day.Value() >= 1 && change.day <= state_->calendar.Last()) continue;
    return base::Fail("株価を変更する日" + std::to_string(change.day.Value()) +
                      "番目は営業日の範囲にありません。");
  }
  const PriceFiles& prices = state_->prices;
  Transaction transaction(state_->location, *state_->files);
  EntryWriter writer(prices, transaction);
  PriceSumChange sums(state_->location, prices);
  const std::vector<const BarChange*> ordered = InFileOrder(changes);
  for (size_t i = 0; i < ordered.size(); ++i) {
    const BarChange& change = *ordered[i];
    const bool superseded =
        i + 1 < ordered.size() && PlaceInFiles(change) == PlaceInFiles(*ordered[i + 1]);
    if (superseded) continue;
    const int32_t day = change.day.Value() - 1 + state_->skipped_days;
    std::array<char, kBarLength> entry{};
    EncodeBar(change.bar, entry.data());
    // Importing a history again changes few bars; the others need not go through the journal.
    if (std::memcmp(prices.Entry(change.slot, day), entry.data(), entry.size()) == 0) continue;
    writer.Add(change.slot, day, entry.data());
    sums.Take(change.slot, day, std::string_view(entry.data(), entry.size()));
  }
  writer.Finish();
  sums.AddTo(transaction);
  return state_->Commit(transaction);
}

}  // namespace orin::store
