#pragma once

#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "base/bars.h"
#include "base/file_system.h"
#include "base/ordinal.h"
#include "base/progress.h"
#include "base/result.h"
#include "store/calendar.h"
#include "store/company_table.h"
#include "store/price_format.h"
#include "store/splits.h"
#include "store/stock_master.h"
#include "store/store_location.h"

namespace orin::store {

class CreditFiles;
class IntradayFiles;
class StockStore;

enum class Access { kRead, kWrite };

struct OpenOptions {
  Access access = Access::kRead;
  /// The number of the first price file to use; none: the oldest of the master's header. The
  /// calendar then begins at that file's first day.
  std::optional<int16_t> first_file;
  /// For reading a copy of a store, or a store once more: the one that was copied or opened before,
  /// itself open for reading. What has changed on the disk is then what has changed there since.
  /// Used while opening alone.
  const StockStore* original = nullptr;
};

/// The most stocks that a store has ever room for: record numbers of orin.sys and slots have 16
/// bits, and each has a record that is no stock's.
inline constexpr int32_t kMostStocks = std::numeric_limits<int16_t>::max() - 1;

/// A stock to be added; it gets the next record of the master and the next slot.
struct NewStock {
  StockCode code;
  std::string name;
  int16_t listing = 3;
  int16_t kind = 1;
  int16_t sector = 0;
};

/// The bar a stock is to have on a day that the calendar already has.
struct BarChange {
  base::SlotRecord slot;
  base::DayIndex day;
  base::Bar bar;  // its date does not count
};

/// The stock master, the price files, the calendar and the split list, loaded and kept together.
/// Every change is whole or not at all, whenever the program is killed and when the disk is full.
class StockStore {
 public:
  /// Makes an empty store with its directories. Where there is any file of a store already, it
  /// refuses and writes nothing; but a 株式分割.txt is kept, and what a killed Create has left is
  /// completed.
  static base::Status Create(const StoreLocation& location, base::FileSystem& files);
  /// Makes an empty 株式分割.txt where a store has none, as Open does for writing. Writes nothing
  /// while another process has the store open for writing or where a recovery is due.
  static base::Status MakeMissingSplits(const StoreLocation& location, base::FileSystem& files);
  /// Finishes what a killed writer had committed and removes what it had not, then loads.
  /// For writing, fails where another process has the store open for writing. A reader waits up
  /// to three seconds for such a process to finish a commit and fails only then.
  static base::Result<StockStore> Open(const StoreLocation& location, const OpenOptions& options,
                                       base::FileSystem& files);
  StockStore(StockStore&&) noexcept;
  StockStore& operator=(StockStore&&) noexcept;
  ~StockStore();

  [[nodiscard]] const StoreLocation& Location() const;
  /// Where the store itself is; for a copy another place than Location().
  [[nodiscard]] const StoreLocation& OriginalLocation() const;
  [[nodiscard]] const StockMaster& Master() const;
  [[nodiscard]] const Calendar& Days() const;
  [[nodiscard]] const SplitList& Splits() const;
  /// What was passed over in loading or is damaged without keeping the store from being used, a
  /// sentence each: split lines, a journal, a cut orin.sys, slots without a stock, a missing
  /// orin.ind; for a writer also an orin.ind or orin.add that disagrees with orin.sys.
  [[nodiscard]] std::span<const std::string> Problems() const;
  /// Whether another process has changed any file of the store but the trend lines since it was
  /// loaded, or is about to; what was read after that may mix states before and after the change.
  /// True as well once part of a price file was gone from the disk when it was read, which then
  /// gave zeros. For a store that was opened for reading.
  [[nodiscard]] bool HasChangedOnDisk() const;
  /// The number of the first price file in use, as chosen when opening.
  [[nodiscard]] int16_t FirstFile() const;
  /// First and last stored day of a price file; fails where the file is not in use.
  [[nodiscard]] base::Result<std::pair<base::Date, base::Date>> DaysOfFile(int16_t file) const;

  /// The bars of the days first..last as stored, into `bars`, which is emptied first. Days are
  /// within the calendar. Copies only the entries, and of them only the prices, asked for.
  void LoadBars(base::SlotRecord slot, base::DayIndex first, base::DayIndex last,
                base::BarColumns& bars, base::PriceFields fields = base::PriceFields::kAll) const;
  /// Makes loading the bars of these stocks, all of them soon, faster: worth it where there are
  /// some neighbours. At most kReadAhead of them.
  static constexpr size_t kReadAhead = 16;
  void ReadAhead(std::span<const StockRecord> stocks, base::DayIndex first,
                 base::DayIndex last) const;
  /// The same, adjusted for the splits of the stock; one with splits gets all its prices.
  void LoadAdjustedBars(const StockRecord& stock, base::DayIndex first, base::DayIndex last,
                        base::BarColumns& bars,
                        base::PriceFields fields = base::PriceFields::kAll) const;
  /// The credit balances of the days first..last, within the calendar, into `balances`, which is
  /// emptied first. They are 0 on a day that the credit files do not have, and are not adjusted
  /// for splits. The first call maps the files.
  void LoadCreditBalances(base::SlotRecord slot, base::DayIndex first, base::DayIndex last,
                          std::vector<CreditBalance>& balances) const;
  /// The intraday files as the first call finds them.
  [[nodiscard]] const IntradayFiles& Intraday() const;
  /// Makes those first calls for the credit and the intraday files. Gives a sentence for each file
  /// that is missing, cannot be read or is damaged, as CheckStore does.
  [[nodiscard]] std::vector<std::string> LoadPriceCompanions() const;

  /// Gives back the memory that loading bars takes: to be called now and then by a job that goes
  /// through all stocks, so that it does not end up with all price files in memory.
  void ReleaseMemory() const;

  // What follows needs Access::kWrite.

  /// How many stocks AddStocks can add at most.
  [[nodiscard]] int32_t RoomForStocks() const;
  /// Adds to orin.sys, orin.ind and orin.add and gives every price file the new slots. An
  /// orin.ind or orin.add that disagrees with orin.sys is kept as orin.ind.bad or orin.add.bad.
  base::Status AddStocks(std::span<const NewStock> stocks);
  /// One newer day for all stocks; a slot without a bar gets no data.
  base::Status AppendDay(base::Date date,
                         std::span<const std::pair<base::SlotRecord, base::Bar>> bars);
  /// The earliest day that the price files can hold.
  static base::Date EarliestDay() { return base::Date::FromSerial(1); }
  /// Makes every one of `dates` (ascending, 1899/12/31 to 9999/12/31) a day of the calendar,
  /// without data. Days newer than the newest are appended; others are put between, in front too.
  base::Status AddDays(std::span<const base::Date> dates);
  /// Replaces the bars of days that exist, all of them or none.
  base::Status ChangeBars(std::span<const BarChange> changes);
  /// Replaces the events of 株式分割.txt; its lines that are no event stay behind them.
  base::Status SaveSplits(SplitList splits);
  /// Writes the event's adjustment into the stored prices and takes it off the list, in one.
  base::Status CorrectForSplit(const SplitEvent& event);
  /// Replaces orin.fin and orin.acc, both or neither.
  base::Status SaveCompanies(const CompanyTable& companies);
  /// Makes new checksums of all files from their contents, all or none, also for a store that
  /// had none before. Fails when stopped.
  base::Status MakeSums(base::Progress& progress);
  /// Takes the stocks that orin.del marks "Delete" out of orin.sys, orin.ind, orin.add and
  /// orin.del and gives their number. Later stocks move up by a record; every slot stays where
  /// it is, and that of a stock taken out is unused until a new stock gets it, emptied; its trend
  /// lines and company data are gone. Refuses while there are fewer than ten price files.
  base::Result<int32_t> PurgeDeletedStocks();

 private:
  struct State;
  explicit StockStore(std::unique_ptr<State> state);

  [[nodiscard]] const CreditFiles& Credit() const;

  std::unique_ptr<State> state_;
};

}  // namespace orin::store
