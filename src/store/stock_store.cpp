#include "store/stock_store.h"

#include <algorithm>

#include "store/companion_formats.h"
#include "store/file_names.h"
#include "store/master_format.h"
#include "store/store_state.h"

namespace orin::store {

namespace {

constexpr int kLoadAttempts = 3;

base::Status CreateFiles(const StoreLocation& location, base::FileSystem& files) {
  const auto no_stocks = EncodeStockList(StockList());
  if (!no_stocks) return base::Forward(no_stocks);
  const auto no_splits = SplitList().Serialize();
  if (!no_splits) return base::Forward(no_splits);
  const MasterRecordBytes header = EncodeMasterHeader(MasterHeader());
  struct NewFile {
    FileKind kind;
    std::string_view bytes;
  };
  // orin.sys comes last: it is what makes the directory a store.
  const std::array<NewFile, 5> new_files = {{{FileKind::kNameIndex, ""},
                                             {FileKind::kAdded, *no_stocks},
                                             {FileKind::kDeleted, *no_stocks},
                                             {FileKind::kSplits, *no_splits},
                                             {FileKind::kMaster, AsText(header)}}};
  for (const NewFile& file : new_files) {
    const base::Status made =
        base::ReplaceFile(files, PathOf(location, {file.kind, 0}), file.bytes);
    if (!made) return made;
  }
  return {};
}

/// Brings the files into the state of the last commit.
base::Status Recover(const StoreLocation& location, Access access, base::FileSystem& files) {
  if (access == Access::kWrite) {
    const base::Status recovered = RecoverStore(location, files);
    return recovered ? RemoveLeftovers(location, files) : recovered;
  }
  // Readers do without the lock, but what a dead writer has begun must be finished by someone.
  if (!HasJournal(location)) return {};
  const auto lock = StoreLock::Acquire(location.system_directory);
  if (!lock) return base::Forward(lock);
  return RecoverStore(location, files);
}

}  // namespace

base::Status StockStore::Create(const StoreLocation& location, base::FileSystem& files) {
  for (const auto& directory : {location.system_directory, location.data_directory}) {
    if (const base::Status made = files.MakeDirectory(directory); !made) return made;
  }
  const auto lock = StoreLock::Acquire(location.system_directory);
  if (!lock) return base::Forward(lock);
  const std::filesystem::path master = PathOf(location, {FileKind::kMaster, 0});
  std::error_code failure;
  if (std::filesystem::exists(master, failure)) {
    return base::Fail("「" + base::PathText(master) + "」がすでにあります。");
  }
  return CreateFiles(location, files);
}

base::Result<StockStore> StockStore::Open(const StoreLocation& location, const OpenOptions& options,
                                          base::FileSystem& files) {
  auto state = std::make_unique<State>();
  state->location = location;
  state->options = options;
  state->files = &files;
  std::error_code failure;
  const bool has_directory = std::filesystem::is_directory(location.system_directory, failure);
  // Without its directory there is nothing to lock; loading says what is missing.
  if (has_directory && options.access == Access::kWrite) {
    auto lock = StoreLock::Acquire(location.system_directory);
    if (!lock) return base::Forward(lock);
    state->lock = std::move(*lock);
  }
  base::Status loaded;
  // A writer may begin its commit while a reader loads; what the reader has is mixed then.
  for (int attempt = 0; attempt < kLoadAttempts; ++attempt) {
    const base::Status recovered =
        has_directory ? Recover(location, options.access, files) : base::Status();
    if (!recovered) return base::Forward(recovered);
    loaded = state->Load();
    if (options.access == Access::kWrite || !HasJournal(location)) break;
  }
  if (!loaded) return base::Forward(loaded);
  return StockStore(std::move(state));
}

StockStore::StockStore(std::unique_ptr<State> state) : state_(std::move(state)) {}
StockStore::StockStore(StockStore&&) noexcept = default;
StockStore& StockStore::operator=(StockStore&&) noexcept = default;
StockStore::~StockStore() = default;

const StoreLocation& StockStore::Location() const { return state_->location; }
const StockMaster& StockStore::Master() const { return state_->master; }
const Calendar& StockStore::Days() const { return state_->calendar; }
const SplitList& StockStore::Splits() const { return state_->splits; }
std::span<const std::string> StockStore::Problems() const { return state_->problems; }

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
                          base::BarColumns& bars) const {
  // Days outside the calendar would be read beyond the files.
  const int32_t from = std::max(first.Value(), 1);
  const int32_t to = std::min(last.Value(), state_->calendar.Count());
  const int32_t offset = state_->skipped_days - 1;
  if (to < from) {
    bars.Resize(0);
    return;
  }
  state_->prices.Load(slot, from + offset, to + offset, bars);
}

void StockStore::LoadAdjustedBars(const StockRecord& stock, base::DayIndex first,
                                  base::DayIndex last, base::BarColumns& bars) const {
  LoadBars(stock.slot, first, last, bars);
  // Oldest first; an event never touches bars after its own day.
  for (const SplitEvent& event : state_->splits.EventsOf(stock.code)) AdjustForSplit(event, bars);
}

}  // namespace orin::store
