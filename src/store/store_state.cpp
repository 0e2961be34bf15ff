#include "store/store_state.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "base/record_file.h"
#include "store/file_names.h"
#include "store/header_proof.h"
#include "store/master_format.h"

namespace orin::store {

namespace {

// Price files reach 130 MB; they are written without ever being in memory whole.
constexpr size_t kWriteBuffer = size_t{1} << 20;

struct HeaderRule {
  std::string_view field;
  int32_t value;
  int32_t least;
  int32_t greatest;
};

}  // namespace

base::Status CheckHeader(const MasterHeader& header, const std::filesystem::path& path) {
  // Nothing but the first file number counts while there are no price files.
  const bool empty = header.current_file == 0;
  const std::array<HeaderRule, 4> rules = {{
      {"日付レコード", header.date_record, 1, INT16_MAX},
      {"カレントファイル", header.current_file, 0, kLastFileNumber},
      {"先頭ファイル", header.first_file, 1, empty ? kLastFileNumber : header.current_file},
      {"カレントレコード", header.current_record, empty ? INT16_MIN : 1,
       empty ? INT16_MAX : kDaysPerFile},
  }};
  for (const HeaderRule& rule : rules) {
    if (rule.value >= rule.least && rule.value <= rule.greatest) continue;
    return base::Fail("「" + base::PathText(path) + "」の" + std::string(rule.field) + "の値" +
                      std::to_string(rule.value) + "が" + std::to_string(rule.least) + "から" +
                      std::to_string(rule.greatest) + "の範囲にありません。");
  }
  return {};
}

std::string StockStore::State::PartialMasterSentence(size_t length) const {
  return "「" + base::PathText(PathOf(location, kMasterFile)) + "」の長さ" +
         std::to_string(length) + "バイトがレコード長" + std::to_string(kMasterRecordLength) +
         "で割り切れません。";
}

base::Status StockStore::State::LoadMaster() {
  const std::filesystem::path path = PathOf(location, kMasterFile);
  if (!Exists(path)) return base::Fail(MissingSentence(location, kMasterFile));
  const auto bytes = base::ReadFile(path);
  if (!bytes) return base::Forward(bytes);
  const base::RecordView records(*bytes, kMasterRecordLength);
  if (records.Count() == 0) {
    return base::Fail("「" + base::PathText(path) + "」は" + std::to_string(bytes->size()) +
                      "バイトしかなく、先頭のレコードがありません。");
  }
  // A writer takes the rest off or refuses, once it knows the price files.
  if (records.HasPartialRecord() && options.access == Access::kRead) {
    problems.push_back(PartialMasterSentence(bytes->size()));
  }
  // Numbers out of range would lead to places outside the price files further on.
  const MasterHeader header = DecodeMasterHeader(*records.Record(1));
  if (const base::Status checked = CheckHeader(header, path); !checked) return checked;
  std::vector<StockRecord> stocks;
  stocks.reserve(static_cast<size_t>(records.Count()));
  for (int32_t number = 2; number <= records.Count(); ++number) {
    stocks.push_back(DecodeStockRecord(*records.Record(number)));
  }
  master = StockMaster(header, std::move(stocks));
  return {};
}

base::Status StockStore::State::LoadPrices() {
  auto opened = PriceFiles::Open(location, master);
  if (!opened) return base::Forward(opened);
  prices = std::move(*opened);
  credit.reset();
  const MasterHeader& header = master.Header();
  skipped_days = 0;
  if (options.first_file) {
    const int32_t last_file = std::max(header.current_file, header.first_file);
    if (*options.first_file < header.first_file || *options.first_file > last_file) {
      return base::Fail("先頭ファイルの指定" + std::to_string(*options.first_file) + "が" +
                        std::to_string(header.first_file) + "から" + std::to_string(last_file) +
                        "の範囲にありません。");
    }
    skipped_days = (*options.first_file - header.first_file) * kDaysPerFile;
  }
  SetCalendar();
  return {};
}

base::Status StockStore::State::Prove() {
  const std::span<const base::Date> days = prices.Days();
  HeaderProof proof =
      ProveHeader(location, master.Header(), days.empty() ? base::Date() : days.back());
  leftover = proof.leftover;
  if (proof.findings.empty()) return {};
  if (options.access == Access::kWrite) return base::Fail(RefusalFor(proof.findings.front()));
  std::ranges::move(proof.findings, std::back_inserter(problems));
  return {};
}

void StockStore::State::SetCalendar() {
  const std::span<const base::Date> days = prices.Days();
  calendar = Calendar(std::vector<base::Date>(days.begin() + skipped_days, days.end()));
}

base::Status StockStore::State::LoadSplits() {
  const std::filesystem::path path = PathOf(location, kSplitsFile);
  splits = SplitList();
  if (!Exists(path)) {
    // A reader may lack the right to write, and for it a missing list is an empty one.
    if (options.access == Access::kRead) return {};
    return base::ReplaceFile(*files, path, "");
  }
  const auto bytes = base::ReadFile(path);
  if (!bytes) return base::Forward(bytes);
  std::vector<std::string> unread;
  splits = SplitList::Parse(*bytes, FileName(kSplitsFile), unread);
  problems.insert(problems.end(), unread.begin(), unread.end());
  return {};
}

base::Status StockStore::State::Load() {
  problems = recovery_problems;
  if (const base::Status loaded = LoadMaster(); !loaded) return loaded;
  if (const base::Status loaded = LoadPrices(); !loaded) return loaded;
  if (const base::Status proven = Prove(); !proven) return proven;
  const SlotAccount account = CountSlots(location, master, prices.LongestRecords());
  if (!account.IsExplained()) problems.push_back(SentenceOf(account, location));
  if (options.access == Access::kWrite) {
    if (const base::Status cut = TakeOffStrayBytes(account); !cut) return cut;
  }
  ExamineCompanions();
  return LoadSplits();
}

base::Status StockStore::State::Reload() {
  base::Status loaded = LoadMaster();
  if (loaded) loaded = LoadPrices();
  if (!loaded) in_doubt = true;
  return loaded;
}

base::Status StockStore::State::PrepareChange() {
  if (options.access != Access::kWrite) {
    return base::Fail("「" + base::PathText(location.system_directory) +
                      "」の株価データは読み取り専用で開かれています。");
  }
  // The files, not the memory, say whether the change that failed has happened.
  if (!in_doubt) return {};
  if (const base::Status recovered = Recover(); !recovered) return recovered;
  TakeAwayLeftovers();
  // Loading may rebuild orin.ind, and a failure of that leaves a journal of its own.
  in_doubt = false;
  const base::Status loaded = Load();
  if (loaded && !in_doubt) return {};
  in_doubt = true;
  if (!loaded) return loaded;
  return base::Fail("「" + base::PathText(PathOf(location, {FileKind::kJournal, 0})) +
                    "」の更新を終えられないので、更新できません。もう一度実行してください。");
}

base::Status StockStore::State::CheckPricesAreWhole() {
  if (prices.IsWhole()) return {};
  in_doubt = true;
  return base::Fail("「" + base::PathText(location.data_directory) +
                    "」の株価ファイルがほかのプログラムに短くされたので、更新を中止しました。");
}

base::Status StockStore::State::Commit(Transaction& transaction) {
  if (const base::Status whole = CheckPricesAreWhole(); !whole) return whole;
  const base::Status committed = transaction.Commit();
  if (transaction.InDoubt()) in_doubt = true;
  return committed;
}

base::Status StockStore::State::CommitHeader(const MasterHeader& header) {
  if (const base::Status whole = CheckPricesAreWhole(); !whole) return whole;
  // One record lies within one disk sector, so that this write is whole or not at all and needs
  // no journal. What it commits is on the disk already.
  const MasterRecordBytes bytes = EncodeMasterHeader(header);
  const auto file = files->OpenForUpdate(PathOf(location, kMasterFile));
  if (!file) return base::Forward(file);
  base::Status status = (*file)->WriteAt(0, AsText(bytes));
  if (status) status = (*file)->Sync();
  if (!status) {
    in_doubt = true;
    return status;
  }
  master.SetHeader(header);
  return {};
}

MasterHeader StockStore::State::HeaderFor(int32_t count, base::Date date) const {
  MasterHeader header = master.Header();
  header.date = date;
  const int32_t file = header.first_file + (count - 1) / kDaysPerFile;
  header.current_file = static_cast<int16_t>(file);
  header.current_record = static_cast<int16_t>((count - 1) % kDaysPerFile + 1);
  return header;
}

int32_t StockStore::State::RecordsPerFile() const {
  if (prices.FileCount() > 0) return prices.Records();
  return std::max(HighestSlot(master, 0), int32_t{master.Header().date_record});
}

base::Status StockStore::State::CheckSlot(base::SlotRecord slot) const {
  // The bound is what the files hold, not what the master names: a damaged record must not make
  // a write leave its file.
  const int32_t number = slot.Value();
  if (number >= 1 && number <= RecordsPerFile() && number != master.Header().date_record) return {};
  return base::Fail("銘柄レコード" + std::to_string(number) + "は株価ファイルにありません。");
}

std::string EncodeDates(std::span<const base::Date> dates) {
  std::string bytes;
  bytes.reserve(dates.size() * kDateEntryLength);
  for (const base::Date date : dates) bytes += EncodeDateEntry(date);
  return bytes;
}

base::Status StagedWriter::Add(std::string_view bytes) {
  buffer_ += bytes;
  return buffer_.size() >= kWriteBuffer ? Flush() : base::Status();
}

base::Status StagedWriter::Flush() {
  const base::Status written = file_.WriteAt(offset_, buffer_);
  offset_ += static_cast<int64_t>(buffer_.size());
  buffer_.clear();
  return written;
}

base::Status StagedWriter::Finish() {
  if (!buffer_.empty()) {
    if (const base::Status flushed = Flush(); !flushed) return flushed;
  }
  return file_.Sync();
}

}  // namespace orin::store
