#include "acquire/csv_update.h"

#include <algorithm>
#include <span>
#include <string_view>
#include <system_error>
#include <unordered_set>
#include <utility>

#include "acquire/csv_files.h"
#include "acquire/stock_list.h"
#include "base/cp932.h"

namespace orin::acquire {

namespace {

namespace fs = std::filesystem;
using base::Bar;
using base::DayIndex;
using base::Status;
using store::BarChange;
using store::StockCode;

constexpr std::string_view kDailyStage = "ミルテ（ＣＳＶ株価更新：日足）";
constexpr std::string_view kWeeklyStage = "ミルテ（ＣＳＶ株価更新：週足）";
constexpr size_t kChangesPerCommit = 250'000;
// Forty bytes each in the price files.
constexpr int64_t kBarsPerRelease = 500'000;
// Looking at a file for its heading takes a tenth of a millisecond.
constexpr int64_t kLooksPerReport = 50;

using Codes = std::unordered_set<StockCode, store::StockCodeHash>;

/// Days of the calendar as positions first..end of it; empty where both are equal.
struct DaySpan {
  size_t first;
  size_t end;
};

/// The trading days of the calendar week (Sunday to Saturday) that holds `date`.
DaySpan WeekOf(std::span<const base::Date> days, base::Date date) {
  const int32_t sunday = date.Serial() - (date.Weekday() - 1);
  const auto from = std::lower_bound(days.begin(), days.end(), base::Date::FromSerial(sunday));
  const auto to = std::lower_bound(from, days.end(), base::Date::FromSerial(sunday + 7));
  return {static_cast<size_t>(from - days.begin()), static_cast<size_t>(to - days.begin())};
}

DayIndex DayAt(size_t position) { return DayIndex(static_cast<int32_t>(position + 1)); }

store::NewStock StockOfFileAlone(const StockCode& code) {
  store::NewStock stock;
  stock.code = code;
  stock.name = std::string(code.Text());
  if (code.Text().starts_with('^')) {
    stock.kind = store::kKindIndex;
    stock.sector = store::kSectorIndex;
  }
  return stock;
}

class CsvUpdate {
 public:
  CsvUpdate(store::StockStore& store, base::FileSystem& files, base::Progress& progress)
      : store_(store), files_(files), progress_(progress) {}

  base::Result<CsvUpdateSummary> Run(const CsvUpdateSource& source);

 private:
  Status Import(const CsvUpdateSource& source);
  base::Result<StockList> ReadStockList(const std::optional<fs::path>& path);
  /// The days the calendar is to have; none where there is no file to take them from.
  base::Result<std::vector<base::Date>> ReadCalendarDays(const std::filesystem::path& directory);
  [[nodiscard]] std::vector<store::NewStock> StocksToAdd(StockList list);
  void DropSurplus(std::vector<store::NewStock>& stocks);
  Status AddStocks(StockList list);
  using Pass = void (CsvUpdate::*)(const store::StockRecord&, const CsvFile&, const CsvHistory&);
  Status ImportFiles(std::span<const CsvFile> csv_files, std::string_view stage, Pass pass);
  Status ImportFile(const CsvFile& file, Pass pass);
  void TakeDaily(const store::StockRecord& stock, const CsvFile& file, const CsvHistory& history);
  void TakeWeekly(const store::StockRecord& stock, const CsvFile& file, const CsvHistory& history);
  void TakeWeek(const store::StockRecord& stock, DaySpan week, const Bar& bar);
  [[nodiscard]] bool HasDailyLine(const StockCode& code, DaySpan week);
  Status CommitChanges();
  void ReleaseMemory();
  void WriteLog();

  store::StockStore& store_;
  base::FileSystem& files_;
  base::Progress& progress_;
  CsvUpdateSummary summary_;
  FileProblems problems_;
  std::vector<CsvFile> daily_;
  std::vector<CsvFile> weekly_;
  std::vector<BarChange> changes_;
  base::BarColumns stored_;  // of the stock in hand
  int64_t loaded_bars_ = 0;  // since memory was released
  Codes seen_;
  Codes surplus_;  // stocks that the store has no room for
  std::optional<std::pair<StockCode, std::vector<base::Date>>> daily_lines_;  // of one stock
};

base::Result<StockList> CsvUpdate::ReadStockList(const std::optional<fs::path>& path) {
  if (!path) return StockList();
  const auto bytes = base::ReadFile(*path, kLargestStockList);
  if (!bytes) return base::Forward(bytes);
  StockList list = ParseStockList(base::DecodeText(*bytes).text);
  if (!list.has_heading) {
    return base::Fail("銘柄の一覧 " + base::PathText(*path) + " の" +
                      list.problems.Kept().front().message + "。");
  }
  problems_.Add(*path, list.problems);
  return list;
}

base::Result<std::vector<base::Date>> CsvUpdate::ReadCalendarDays(
    const std::filesystem::path& directory) {
  const bool has_calendar = store_.Days().Count() > 0;
  const bool has_file = !daily_.empty() && daily_.front().code.Text() == kCalendarCode;
  if (!has_file) {
    if (has_calendar) return std::vector<base::Date>();
    return base::Fail("取引日の暦となる ^DJI.csv がＣＳＶファイルのディレクトリ " +
                      base::PathText(directory) + " にありません。");
  }
  const CsvFile& file = daily_.front();
  FileProblems problems;  // told when its prices are imported, or below
  auto history = ReadCsvHistory(file, problems);
  if (history) problems.Add(file.path, history->problems);
  if (!has_calendar && (!history || history->trading_days.empty())) {
    return base::Fail("取引日の暦となる " + base::PathText(file.path) + " に取引日がありません。" +
                      (problems.Sentences().empty() ? "" : problems.Sentences().front()));
  }
  if (!history) return std::vector<base::Date>();
  // A day that is still to come is a slip of the pen, and would be the newest for ever. Days that
  // the price files cannot hold would cost all the others.
  std::erase_if(history->trading_days, [today = base::Date::Today()](base::Date day) {
    return day > today || day < store::StockStore::EarliestDay();
  });
  return std::move(history->trading_days);
}

/// The stocks of the list, then those that only have a file that can be read.
std::vector<store::NewStock> CsvUpdate::StocksToAdd(StockList list) {
  std::vector<store::NewStock> added;
  Codes taken(list.wrong_lines.begin(), list.wrong_lines.end());
  const auto take = [&](store::NewStock stock) {
    taken.insert(stock.code);
    if (store_.Master().Find(stock.code).IsNone()) added.push_back(std::move(stock));
  };
  for (store::NewStock& stock : list.stocks) take(std::move(stock));
  int64_t looks = 0;
  for (const CsvFile& file : daily_) {
    if (taken.contains(file.code) || !store_.Master().Find(file.code).IsNone()) continue;
    // The import of its prices tells the faults of a file.
    if (IsCsvHistory(file)) take(StockOfFileAlone(file.code));
    if (++looks % kLooksPerReport != 0) continue;
    summary_.stopped = !progress_.Report(kDailyStage, 0, static_cast<int64_t>(daily_.size()));
    if (summary_.stopped) return {};
  }
  return added;
}

/// Keeps the first ones, as many as the store has room for.
void CsvUpdate::DropSurplus(std::vector<store::NewStock>& stocks) {
  const auto room = std::min(static_cast<size_t>(store_.RoomForStocks()), stocks.size());
  for (const store::NewStock& stock : std::span(stocks).subspan(room)) {
    surplus_.insert(stock.code);
    problems_.Add("銘柄" + std::string(stock.code.Text()) + "は、銘柄の数が上限の" +
                  std::to_string(store::kMostStocks) + "を超えるため追加できません。");
  }
  stocks.resize(room);
}

Status CsvUpdate::AddStocks(StockList list) {
  std::vector<store::NewStock> added = StocksToAdd(std::move(list));
  if (added.empty()) return {};
  DropSurplus(added);
  if (const Status done = store_.AddStocks(added); !done) return done;
  summary_.added_stocks = static_cast<int32_t>(added.size());
  return {};
}

void CsvUpdate::TakeDaily(const store::StockRecord& stock, const CsvFile& file,
                          const CsvHistory& history) {
  LineProblems problems;
  for (size_t i = 0; i < history.bars.size(); ++i) {
    const Bar& bar = history.bars[i];
    const DayIndex day = store_.Days().Find(bar.date);
    if (day.IsNone()) {
      problems.Add(history.lines[i],
                   "年月日" + Quoted(bar.date.ToText()) + "は取引日ではありません");
    } else if (stored_.At(static_cast<size_t>(day.Value() - 1)) != bar) {
      changes_.push_back({stock.slot, day, bar});
    }
  }
  problems_.Add(file.path, problems);
}

void CsvUpdate::TakeWeekly(const store::StockRecord& stock, const CsvFile& file,
                           const CsvHistory& history) {
  LineProblems problems;
  for (size_t i = 0; i < history.bars.size(); ++i) {
    const Bar& bar = history.bars[i];
    const DaySpan week = WeekOf(store_.Days().Days(), bar.date);
    if (week.first < week.end) {
      TakeWeek(stock, week, bar);
    } else {
      problems.Add(history.lines[i],
                   "年月日" + Quoted(bar.date.ToText()) + "の週に取引日がありません");
    }
  }
  problems_.Add(file.path, problems);
}

/// Puts the weekly bar on the last day of a week that has no daily ones. A single bar that no
/// line of the daily file explains is the same week's bar of an earlier run.
void CsvUpdate::TakeWeek(const store::StockRecord& stock, DaySpan week, const Bar& bar) {
  std::vector<size_t> with_data;
  for (size_t day = week.first; day < week.end; ++day) {
    if (stored_.volume[day] != base::kNoDataVolume) with_data.push_back(day);
  }
  if (with_data.size() > 1) return;
  const size_t last = week.end - 1;
  Bar wanted = bar;
  wanted.date = store_.Days().DateOf(DayAt(last));
  if (with_data.size() == 1) {
    if (stored_.At(with_data[0]) == wanted || HasDailyLine(stock.code, week)) return;
    if (with_data[0] != last) changes_.push_back({stock.slot, DayAt(with_data[0]), Bar()});
  }
  changes_.push_back({stock.slot, DayAt(last), wanted});
}

bool CsvUpdate::HasDailyLine(const StockCode& code, DaySpan week) {
  if (!daily_lines_ || daily_lines_->first != code) {
    daily_lines_.emplace(code, std::vector<base::Date>());
    const auto file = std::ranges::find(daily_, code, &CsvFile::code);
    FileProblems ignored;  // told in the daily pass
    auto history = file == daily_.end() ? std::nullopt : ReadCsvHistory(*file, ignored);
    if (history) daily_lines_->second = std::move(history->trading_days);
  }
  const auto days = store_.Days().Days().subspan(week.first, week.end - week.first);
  return std::ranges::any_of(daily_lines_->second, [days](base::Date day) {
    return std::ranges::binary_search(days, day);
  });
}

Status CsvUpdate::CommitChanges() {
  if (changes_.empty()) return {};
  if (const Status changed = store_.ChangeBars(changes_); !changed) return changed;
  summary_.changed_bars += static_cast<int64_t>(changes_.size());
  changes_.clear();
  ReleaseMemory();
  return {};
}

/// Otherwise the price files end up in memory whole.
void CsvUpdate::ReleaseMemory() {
  store_.ReleaseMemory();
  loaded_bars_ = 0;
}

Status CsvUpdate::ImportFile(const CsvFile& file, Pass pass) {
  const auto history = ReadCsvHistory(file, problems_);
  if (!history) return {};
  problems_.Add(file.path, history->problems);
  const base::MasterRecord record = store_.Master().Find(file.code);
  if (record.IsNone()) {
    if (!history->has_heading || surplus_.contains(file.code)) return {};
    problems_.Add(base::PathText(file.path.filename()) + " 銘柄コードが見つかりません。");
    return {};
  }
  ++summary_.files;
  seen_.insert(file.code);
  const store::StockRecord& stock = store_.Master().Stock(record);
  store_.LoadBars(stock.slot, DayIndex(1), store_.Days().Last(), stored_);
  (this->*pass)(stock, file, *history);
  loaded_bars_ += store_.Days().Count();
  if (loaded_bars_ >= kBarsPerRelease) ReleaseMemory();
  return changes_.size() < kChangesPerCommit ? Status() : CommitChanges();
}

Status CsvUpdate::ImportFiles(std::span<const CsvFile> csv_files, std::string_view stage,
                              Pass pass) {
  const auto total = static_cast<int64_t>(csv_files.size());
  for (int64_t done = 0; done < total && !summary_.stopped; ++done) {
    if (!progress_.Report(stage, done, total)) {
      summary_.stopped = true;
      break;
    }
    const Status imported = ImportFile(csv_files[static_cast<size_t>(done)], pass);
    if (!imported) return imported;
  }
  if (!summary_.stopped) static_cast<void>(progress_.Report(stage, total, total));
  return CommitChanges();
}

Status CsvUpdate::Import(const CsvUpdateSource& source) {
  auto daily = ListCsvFiles(source.daily_directory, problems_);
  if (!daily) return base::Forward(daily);
  daily_ = std::move(*daily);
  if (std::error_code ignored; fs::is_directory(source.weekly_directory, ignored)) {
    auto weekly = ListCsvFiles(source.weekly_directory, problems_);
    if (!weekly) return base::Forward(weekly);
    weekly_ = std::move(*weekly);
  }
  auto list = ReadStockList(source.stock_list);
  if (!list) return base::Forward(list);
  // Nothing is changed before it is known that there is a calendar.
  const auto days = ReadCalendarDays(source.daily_directory);
  if (!days) return base::Forward(days);
  if (const Status done = AddStocks(std::move(*list)); !done || summary_.stopped) return done;
  if (const Status done = days->empty() ? Status() : store_.AddDays(*days); !done) return done;
  ReleaseMemory();
  const Status done = ImportFiles(daily_, kDailyStage, &CsvUpdate::TakeDaily);
  return done ? ImportFiles(weekly_, kWeeklyStage, &CsvUpdate::TakeWeekly) : done;
}

/// Without its log an import is not as it should be, though what was committed stays.
void CsvUpdate::WriteLog() {
  if (store_.Master().Header().date.IsNone()) return;
  std::string text;
  for (const std::string& problem : problems_.Sentences()) text += problem + "\r\n";
  if (problems_.Further() > 0) {
    text += "ほか" + std::to_string(problems_.Further()) + "件の問題があります。\r\n";
  }
  text += "読み込んだファイル：" + std::to_string(summary_.files) + "、追加した銘柄：" +
          std::to_string(summary_.added_stocks) + "、更新した株価：" +
          std::to_string(summary_.changed_bars) + "\r\n";
  if (summary_.stopped) text += "途中で中止しました。\r\n";
  const fs::path log =
      store_.Location().data_directory / ("K" + store_.Master().Header().date.ToCompact() + ".LOG");
  const Status written = base::ReplaceFile(files_, log, base::EncodeCp932Lossy(text));
  if (written) {
    summary_.log_file = log;
  } else {
    summary_.log_failure = "株価データのディレクトリ " +
                           base::PathText(store_.Location().data_directory) +
                           " に更新の記録を書き込めません。" + written.error().message;
  }
}

base::Result<CsvUpdateSummary> CsvUpdate::Run(const CsvUpdateSource& source) {
  const Status imported = Import(source);
  if (!imported) problems_.Add(imported.error().message);
  WriteLog();
  if (!imported) return base::Forward(imported);
  summary_.stocks = static_cast<int32_t>(seen_.size());
  summary_.days = store_.Days().Count();
  summary_.problems = problems_.Sentences();
  summary_.further_problems = problems_.Further();
  return std::move(summary_);
}

}  // namespace

std::string ProblemsSentence(const CsvUpdateSummary& summary) {
  if (summary.problems.empty()) return {};
  const std::string place = summary.log_file.empty()
                                ? "があります"
                                : "を " + base::PathText(summary.log_file) + " に記録しました";
  const int64_t count = static_cast<int64_t>(summary.problems.size()) + summary.further_problems;
  return std::to_string(count) + "件の問題" + place + "（最初の問題：" + summary.problems.front() +
         "）。";
}

base::Result<CsvUpdateSummary> UpdateFromCsv(store::StockStore& store,
                                             const CsvUpdateSource& source, base::FileSystem& files,
                                             base::Progress& progress) {
  return CsvUpdate(store, files, progress).Run(source);
}

}  // namespace orin::acquire
