#include "store/stock_store.h"

#include <algorithm>
#include <array>

#include "store/check_parts.h"
#include "store/file_names.h"
#include "store/fingerprint.h"
#include "store/store_state.h"

namespace orin::store {

base::Result<StockStore> StockStore::Open(const StoreLocation& location, const OpenOptions& options,
                                          base::FileSystem& files) {
  auto state = std::make_unique<State>();
  state->location = WithFoundNames(location);
  state->options = options;
  state->files = &files;
  state->original = state->location;
  if (options.original != nullptr) {
    state->original = options.original->state_->original;
    state->fingerprint = options.original->state_->fingerprint;
    state->options.original = nullptr;
  }
  if (const base::Status opened = state->Open(); !opened) return base::Forward(opened);
  return StockStore(std::move(state));
}

StockStore::StockStore(std::unique_ptr<State> state) : state_(std::move(state)) {}
StockStore::StockStore(StockStore&&) noexcept = default;
StockStore& StockStore::operator=(StockStore&&) noexcept = default;
StockStore::~StockStore() = default;

const StoreLocation& StockStore::Location() const { return state_->location; }
const StoreLocation& StockStore::OriginalLocation() const { return state_->original; }
const StockMaster& StockStore::Master() const { return state_->master; }
const Calendar& StockStore::Days() const { return state_->calendar; }
const SplitList& StockStore::Splits() const { return state_->splits; }
std::span<const std::string> StockStore::Problems() const { return state_->problems; }

bool StockStore::HasChangedOnDisk() const {
  // A file that was cut short and made whole again may look as it did before.
  const bool is_whole = state_->prices.IsWhole() && (!state_->credit || state_->credit->IsWhole());
  return !is_whole || FingerprintOf(state_->original) != state_->fingerprint;
}

void StockStore::ReleaseMemory() const { state_->prices.ReleaseMemory(); }

int16_t StockStore::FirstFile() const {
  return state_->options.first_file.value_or(state_->master.Header().first_file);
}

base::Result<std::pair<base::Date, base::Date>> StockStore::DaysOfFile(int16_t file) const {
  const MasterHeader& header = state_->master.Header();
  if (file < header.first_file || file > header.current_file) {
    return base::Fail("株価ファイル「" + FileName({FileKind::kDaily, file}) +
                      "」は使われていません。");
  }
  const std::span<const base::Date> days = state_->prices.Days();
  const auto first = static_cast<size_t>(file - header.first_file) * kDaysPerFile;
  const size_t last = std::min(first + kDaysPerFile, days.size()) - 1;
  return std::pair(days[first], days[last]);
}

void StockStore::LoadBars(base::SlotRecord slot, base::DayIndex first, base::DayIndex last,
                          base::BarColumns& bars, base::PriceFields fields) const {
  // Days outside the calendar would be read beyond the files.
  const int32_t from = std::max(first.Value(), 1);
  const int32_t to = std::min(last.Value(), state_->calendar.Count());
  const int32_t offset = state_->skipped_days - 1;
  if (to < from) {
    bars.Resize(0);
    return;
  }
  state_->prices.Load(slot, from + offset, to + offset, fields, bars);
}

void StockStore::ReadAhead(std::span<const StockRecord> stocks, base::DayIndex first,
                           base::DayIndex last) const {
  std::array<base::SlotRecord, kReadAhead> slots;
  const size_t count = std::min(stocks.size(), slots.size());
  for (size_t i = 0; i < count; ++i) slots[i] = stocks[i].slot;
  const int32_t from = std::max(first.Value(), 1);
  const int32_t to = std::min(last.Value(), state_->calendar.Count());
  const int32_t offset = state_->skipped_days - 1;
  state_->prices.ReadAhead(std::span(slots).first(count), from + offset, to + offset);
}

void StockStore::LoadAdjustedBars(const StockRecord& stock, base::DayIndex first,
                                  base::DayIndex last, base::BarColumns& bars,
                                  base::PriceFields fields) const {
  const std::span<const SplitEvent> events = state_->splits.EventsOf(stock.code);
  // Whether an adjusted bar still is one depends on all of its prices.
  LoadBars(stock.slot, first, last, bars, events.empty() ? fields : base::PriceFields::kAll);
  // Oldest first; an event never touches bars after its own day.
  for (const SplitEvent& event : events) AdjustForSplit(event, bars);
}

const CreditFiles& StockStore::Credit() const {
  std::optional<CreditFiles>& credit = state_->credit;
  if (!credit || credit->DayCount() != state_->prices.DayCount()) {
    credit = CreditFiles::Open(state_->location, state_->master.Header(), state_->prices.Days());
  }
  return *credit;
}

const IntradayFiles& StockStore::Intraday() const {
  std::optional<IntradayFiles>& intraday = state_->intraday;
  if (!intraday) intraday = IntradayFiles::Open(state_->location);
  return *intraday;
}

std::vector<std::string> StockStore::LoadPriceCompanions() const {
  std::vector<std::string> problems = Intraday().Problems();
  static_cast<void>(Credit());
  // The files alone are looked at; no stock is needed for it.
  Findings findings;
  CheckCreditFiles({state_->location, state_->master.Header(), {}}, findings);
  const std::vector<std::string> found = findings.Take();
  problems.insert(problems.end(), found.begin(), found.end());
  return problems;
}

void StockStore::LoadCreditBalances(base::SlotRecord slot, base::DayIndex first,
                                    base::DayIndex last,
                                    std::vector<CreditBalance>& balances) const {
  const int32_t offset = state_->skipped_days - 1;
  Credit().Load(slot, std::max(first.Value(), 1) + offset,
                std::min(last.Value(), state_->calendar.Count()) + offset, balances);
}

}  // namespace orin::store
