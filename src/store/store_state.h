#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/file_system.h"
#include "store/credit_files.h"
#include "store/intraday_files.h"
#include "store/price_files.h"
#include "store/price_sums.h"
#include "store/slot_account.h"
#include "store/stock_store.h"
#include "store/store_lock.h"
#include "store/stored_file.h"
#include "store/transaction.h"

namespace orin::store {

/// What the parts of StockStore share.
struct StockStore::State {
  StoreLocation location;
  OpenOptions options;
  base::FileSystem* files = nullptr;
  StoreLock lock;  // held where access is kWrite
  StockMaster master;
  PriceFiles prices;  // all files of the header
  /// Opened by the first who asks, for the days there are then.
  std::optional<CreditFiles> credit;
  std::optional<IntradayFiles> intraday;  // likewise
  Calendar calendar;                      // from the first file chosen
  int32_t skipped_days = 0;               // stored days before the calendar's first
  SplitList splits;
  /// The file behind the current one that a new file may replace; 0: none.
  int16_t leftover = 0;
  /// Where HasChangedOnDisk looks, and the files there as they were before they were loaded.
  StoreLocation original;
  std::string fingerprint;
  std::vector<std::string> problems;
  std::vector<std::string> recovery_problems;  // those of them that loading does not find
  /// Those of orin.ind and orin.add that do not agree with orin.sys.
  std::vector<StoreFile> damaged_companions;
  /// A change has failed halfway through its commit: what is in memory may not be what is on the
  /// disk.
  bool in_doubt = false;

  /// Lock where need be, recovery and loading.
  base::Status Open();
  base::Status OpenForWriting();
  /// Waits for a writer's commit, kCommitPatience at most.
  base::Status OpenForReading();
  base::Status RecoverForReading(std::chrono::steady_clock::time_point deadline);

  /// Reads everything from the files.
  base::Status Load();
  /// Reads master and price files again after a commit.
  base::Status Reload();
  base::Status LoadMaster();
  base::Status LoadPrices();
  /// Whether header and files agree: a writer refuses otherwise, a reader tells.
  base::Status Prove();
  base::Status LoadSplits();
  /// For a writer: rebuilds a missing orin.ind, and finds out whether orin.ind and orin.add
  /// agree with the master. For a reader: whether there is an orin.ind.
  void ExamineCompanions();
  void RebuildIndex();
  void SetCalendar();

  /// To be called before any change: fails where the store is open for reading; finishes or
  /// takes back what an earlier failure has left in doubt.
  base::Status PrepareChange();
  /// Finishes or takes back what a killed writer or a failed change has left behind.
  base::Status Recover();
  /// Removes what they left of files in the making; what stays is a problem.
  void TakeAwayLeftovers();
  /// Takes off what follows the last whole record of a file of records, where no record can have
  /// been cut: a copy stays beside the file. Fails where orin.sys may have lost a stock or a price
  /// file the end of a record.
  base::Status TakeOffStrayBytes(const SlotAccount& account);
  /// Fails where a price file ends within a record that a stock or the checksums account for.
  [[nodiscard]] base::Status CheckLastPriceRecords() const;
  [[nodiscard]] bool AccountsForRecord(int16_t file, int32_t record) const;
  struct RecordFile {
    StoreFile file;
    size_t record_length;
  };
  /// Those that a writer changes.
  [[nodiscard]] std::vector<RecordFile> RecordFiles() const;
  /// Whether the whole records are all that there can have been.
  [[nodiscard]] bool HoldsEverySlot(const StoreFile& file, int32_t records,
                                    const SlotAccount& account) const;
  /// "「orin.sys」の長さ…がレコード長…で割り切れません。"
  [[nodiscard]] std::string PartialMasterSentence(size_t length) const;
  /// To be called before orin.ind and orin.add are replaced: keeps what they hold where it is
  /// damaged and would be lost.
  base::Status KeepDamagedCompanions();
  /// Fails where a price file has been cut short since it was opened: what was read from it to be
  /// written elsewhere may be zeros.
  base::Status CheckPricesAreWhole();
  /// Commits and keeps in mind where that leaves doubt.
  base::Status Commit(Transaction& transaction);
  /// Writes record 1 of orin.sys: the commit of appended days.
  base::Status CommitHeader(const MasterHeader& header);

  using SlotBar = std::pair<base::SlotRecord, base::Bar>;

  /// Whether so many newer days can be appended: those of more than one file, and several that
  /// begin one, take RewriteDays, so that all of a stopped append is one day in one new file.
  [[nodiscard]] bool FitsAppend(size_t count) const;
  /// Adds days behind the last one, as many as FitsAppend. `bars` are those of the first of them;
  /// every other entry is without data.
  base::Status AppendDays(std::span<const base::Date> dates, std::span<const SlotBar> bars);
  /// Makes `days` the stored days, with the entries of those stored before. The files from the
  /// first change on are written as new files and take the place of the old ones in one
  /// transaction.
  base::Status RewriteDays(const std::vector<base::Date>& days);
  base::Status AppendToCurrentFile(std::span<const base::Date> dates,
                                   std::span<const base::Bar* const> bars);
  base::Status AppendNewFile(int16_t number, base::Date date,
                             std::span<const base::Bar* const> bars);
  /// Fails where a file behind the current one lies in the place of a new one and is no leftover.
  [[nodiscard]] base::Status CheckNewFile(int16_t number) const;
  /// Gives a new daily file its file of sums, and the names in its directory their place on the
  /// disk.
  base::Status PlaceNewSums(int16_t number, std::string_view bytes);
  /// Makes the file of sums of a daily file from what that holds.
  base::Status StageSums(int16_t number, Transaction& transaction) const;
  /// A record of a daily file of this store.
  [[nodiscard]] SummedRecord Summed(int16_t file, int32_t record) const {
    return {file, record, record == master.Header().date_record ? kDateEntryLength : kBarLength};
  }
  [[nodiscard]] base::Status CheckDayCount(size_t count) const;
  /// Fails for a date that the files cannot hold.
  [[nodiscard]] static base::Status CheckDate(base::Date date);

  /// The number of records that every price file has, or the first one will have.
  [[nodiscard]] int32_t RecordsPerFile() const;
  /// Fails where the price files have no place for the slot.
  [[nodiscard]] base::Status CheckSlot(base::SlotRecord slot) const;
  /// The header as it is to be with `count` stored days, the newest being `date`.
  [[nodiscard]] MasterHeader HeaderFor(int32_t count, base::Date date) const;
};

/// Fills bytes up and hands them on in large writes.
class StagedWriter {
 public:
  explicit StagedWriter(base::WritableFile& file) : file_(file) {}
  base::Status Add(std::string_view bytes);
  /// The rest, and the flush to the disk.
  base::Status Finish();

 private:
  base::Status Flush();

  base::WritableFile& file_;
  std::string buffer_;
  int64_t offset_ = 0;
};

/// Where a record of a daily file begins.
inline int64_t RecordOffset(int32_t record) {
  return (int64_t{record} - 1) * int64_t{kDailyRecordLength};
}

/// The entries of a record of dates.
std::string EncodeDates(std::span<const base::Date> dates);

/// What is told where orin.sys or orin.ind is missing.
std::string MissingSentence(const StoreLocation& location, const StoreFile& file);

/// Checks orin.sys's header numbers; fails with a sentence that names file and value.
base::Status CheckHeader(const MasterHeader& header, const std::filesystem::path& path);

}  // namespace orin::store
