#include "acquire/csv_update.h"

#include <algorithm>
#include <span>
#include <string_view>
#include <system_error>
#include <unordered_set>
#include <utility>

#include "acquire/csv_history.h"
#include "acquire/stock_list.h"
#include "base/cp932.h"
#include "base/text.h"

namespace orin::acquire {

namespace {

namespace fs = std::filesystem;
using base::Bar;
using base::BarColumns;
using base::DayIndex;
using base::Status;
using store::BarChange;
using store::StockCode;

constexpr std::string_view kCalendarCode = "^DJI";
constexpr std::string_view kDailyStage = "ミルテ（ＣＳＶ株価更新：日足）";
constexpr std::string_view kWeeklyStage = "ミルテ（ＣＳＶ株価更新：週足）";
constexpr size_t kChangesPerCommit = 250'000;
constexpr size_t kProblemsTold = 100;  // of one file

struct CsvFile {
  StockCode code;
  fs::path path;
};

class CsvUpdate {
 public:
  CsvUpdate(store::StockStore& store, base::FileSystem& files, base::Progress& progress)
      : store_(store), files_(files), progress_(progress) {}

  base::Result<CsvUpdateSummary> Run(const CsvUpdateSource& source);

 private:
  Status Import(const CsvUpdateSource& source);
  base::Result<std::vector<CsvFile>> ListFiles(const fs::path& directory);
  Status AddStocks(const std::optional<fs::path>& list, std::span<const CsvFile> csv_files);
  Status AddCalendarDays(std::span<const CsvFile> csv_files);
  using Pass = void (CsvUpdate::*)(const store::StockRecord&, const CsvFile&, const CsvHistory&);
  Status ImportFiles(std::span<const CsvFile> csv_files, std::string_view stage, Pass pass);
  void TakeDaily(const store::StockRecord& stock, const CsvFile& file, const CsvHistory& history);
  void TakeWeekly(const store::StockRecord& stock, const CsvFile& file, const CsvHistory& history);
  Status CommitChanges();
  std::optional<CsvHistory> ReadHistory(const CsvFile& file);
  void Tell(const fs::path& file, std::span<const LineProblem> problems);
  Status WriteLog();

  store::StockStore& store_;
  base::FileSystem& files_;
  base::Progress& progress_;
  CsvUpdateSummary summary_;
  std::vector<BarChange> changes_;
  BarColumns stored_;
  std::unordered_set<StockCode, store::StockCodeHash> seen_;
};

bool IsCsvName(const fs::path& path) {
  return base::EqualsIgnoreCase(base::PathText(path.extension()), ".csv");
}

/// The calendar's file first, then by code.
bool ComesBefore(const CsvFile& a, const CsvFile& b) {
  const bool a_first = a.code.Text() == kCalendarCode;
  const bool b_first = b.code.Text() == kCalendarCode;
  if (a_first != b_first) return a_first;
  return std::pair(a.code, a.path) < std::pair(b.code, b.path);
}

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

base::Result<std::vector<CsvFile>> CsvUpdate::ListFiles(const fs::path& directory) {
  std::vector<CsvFile> found;
  std::error_code failure;
  for (fs::directory_iterator at(directory, failure), end; !failure && at != end;
       at.increment(failure)) {
    const fs::path& path = at->path();
    if (!IsCsvName(path)) continue;
    const auto code = StockCode::Parse(base::PathText(path.stem()));
    if (!code) {
      Tell(path, std::vector<LineProblem>{{0, "ファイル名が銘柄コードではありません"}});
      continue;
    }
    found.push_back({*code, path});
  }
  if (failure) {
    return base::Fail("ＣＳＶファイルのディレクトリ " + base::PathText(directory) +
                      " を読み込めません。");
  }
  std::sort(found.begin(), found.end(), ComesBefore);
  return found;
}

void CsvUpdate::Tell(const fs::path& file, std::span<const LineProblem> problems) {
  const std::string name = base::PathText(file.filename());
  size_t told = 0;
  for (const LineProblem& problem : problems) {
    if (told == kProblemsTold) {
      summary_.problems.push_back(name + " ほか" + std::to_string(problems.size() - told) +
                                  "行に問題があります。");
      return;
    }
    const std::string place =
        problem.line == 0 ? std::string(" ") : " " + std::to_string(problem.line) + "行目：";
    summary_.problems.push_back(name + place + problem.message + "。");
    ++told;
  }
}

std::optional<CsvHistory> CsvUpdate::ReadHistory(const CsvFile& file) {
  const auto bytes = base::ReadFile(file.path);
  if (!bytes) {
    summary_.problems.push_back(bytes.error().message);
    return std::nullopt;
  }
  CsvHistory history = ParseCsvHistory(base::DecodeText(*bytes).text);
  Tell(file.path, history.problems);
  return history;
}

Status CsvUpdate::AddStocks(const std::optional<fs::path>& list,
                            std::span<const CsvFile> csv_files) {
  std::vector<store::NewStock> wanted;
  if (list) {
    const auto bytes = base::ReadFile(*list);
    if (!bytes) return base::Forward(bytes);
    StockList stocks = ParseStockList(base::DecodeText(*bytes).text);
    Tell(*list, stocks.problems);
    wanted = std::move(stocks.stocks);
  }
  for (const CsvFile& file : csv_files) wanted.push_back(StockOfFileAlone(file.code));

  std::unordered_set<StockCode, store::StockCodeHash> taken;
  std::vector<store::NewStock> added;
  for (store::NewStock& stock : wanted) {
    if (!store_.Master().Find(stock.code).IsNone() || !taken.insert(stock.code).second) continue;
    added.push_back(std::move(stock));
  }
  summary_.added_stocks = static_cast<int32_t>(added.size());
  return added.empty() ? Status() : store_.AddStocks(added);
}

Status CsvUpdate::AddCalendarDays(std::span<const CsvFile> csv_files) {
  const bool has_file = !csv_files.empty() && csv_files.front().code.Text() == kCalendarCode;
  if (!has_file) {
    if (store_.Days().Count() > 0) return {};
    return base::Fail("取引日の暦となる ^DJI.csv がＣＳＶファイルのディレクトリにありません。");
  }
  const auto bytes = base::ReadFile(csv_files.front().path);
  if (!bytes) return base::Forward(bytes);
  // What is wrong with the file is told when its prices are imported.
  const CsvHistory history = ParseCsvHistory(base::DecodeText(*bytes).text);
  std::vector<base::Date> days;
  for (const Bar& bar : history.bars) {
    if (store_.Days().Find(bar.date).IsNone()) days.push_back(bar.date);
  }
  if (days.empty() && store_.Days().Count() == 0) {
    return base::Fail("取引日の暦となる " + base::PathText(csv_files.front().path) +
                      " に株価がありません。");
  }
  return days.empty() ? Status() : store_.AddDays(days);
}

void CsvUpdate::TakeDaily(const store::StockRecord& stock, const CsvFile& file,
                          const CsvHistory& history) {
  std::vector<LineProblem> problems;
  for (size_t i = 0; i < history.bars.size(); ++i) {
    const Bar& bar = history.bars[i];
    const DayIndex day = store_.Days().Find(bar.date);
    if (day.IsNone()) {
      problems.push_back(
          {history.lines[i], "年月日" + Quoted(bar.date.ToText()) + "は取引日ではありません"});
    } else if (stored_.At(static_cast<size_t>(day.Value() - 1)) != bar) {
      changes_.push_back({stock.slot, day, bar});
    }
  }
  Tell(file.path, problems);
}

/// The trading days of the calendar week (Sunday to Saturday) that holds `date`, as positions
/// first..last of the calendar; empty where first > last.
std::pair<size_t, size_t> WeekOf(std::span<const base::Date> days, base::Date date) {
  const int32_t sunday = date.Serial() - (date.Weekday() - 1);
  const auto from = std::lower_bound(days.begin(), days.end(), base::Date::FromSerial(sunday));
  const auto to = std::lower_bound(from, days.end(), base::Date::FromSerial(sunday + 7));
  return {static_cast<size_t>(from - days.begin()), static_cast<size_t>(to - days.begin())};
}

void CsvUpdate::TakeWeekly(const store::StockRecord& stock, const CsvFile& file,
                           const CsvHistory& history) {
  std::vector<LineProblem> problems;
  for (size_t i = 0; i < history.bars.size(); ++i) {
    const Bar& bar = history.bars[i];
    const auto [first, end] = WeekOf(store_.Days().Days(), bar.date);
    if (first == end) {
      problems.push_back(
          {history.lines[i], "年月日" + Quoted(bar.date.ToText()) + "の週に取引日がありません"});
      continue;
    }
    const bool empty_week =
        std::all_of(stored_.volume.begin() + static_cast<std::ptrdiff_t>(first),
                    stored_.volume.begin() + static_cast<std::ptrdiff_t>(end),
                    [](base::Currency volume) { return volume == base::kNoDataVolume; });
    if (empty_week) changes_.push_back({stock.slot, DayIndex(static_cast<int32_t>(end)), bar});
  }
  Tell(file.path, problems);
}

Status CsvUpdate::CommitChanges() {
  if (changes_.empty()) return {};
  if (const Status changed = store_.ChangeBars(changes_); !changed) return changed;
  summary_.changed_bars += static_cast<int64_t>(changes_.size());
  changes_.clear();
  return {};
}

Status CsvUpdate::ImportFiles(std::span<const CsvFile> csv_files, std::string_view stage,
                              Pass pass) {
  const auto total = static_cast<int64_t>(csv_files.size());
  for (int64_t done = 0; done < total && !summary_.stopped; ++done) {
    if (!progress_.Report(stage, done, total)) {
      summary_.stopped = true;
      break;
    }
    const CsvFile& file = csv_files[static_cast<size_t>(done)];
    const base::MasterRecord record = store_.Master().Find(file.code);
    if (record.IsNone()) {
      Tell(file.path, std::vector<LineProblem>{{0, "銘柄コードが見つかりません"}});
      continue;
    }
    const auto history = ReadHistory(file);
    if (!history) continue;
    ++summary_.files;
    seen_.insert(file.code);
    const store::StockRecord& stock = store_.Master().Stock(record);
    store_.LoadBars(stock.slot, DayIndex(1), store_.Days().Last(), stored_);
    (this->*pass)(stock, file, *history);
    if (changes_.size() >= kChangesPerCommit) {
      if (const Status committed = CommitChanges(); !committed) return committed;
    }
  }
  if (!summary_.stopped) static_cast<void>(progress_.Report(stage, total, total));
  return CommitChanges();
}

Status CsvUpdate::WriteLog() {
  std::string text;
  for (const std::string& problem : summary_.problems) text += problem + "\r\n";
  text += "読み込んだファイル：" + std::to_string(summary_.files) + "、追加した銘柄：" +
          std::to_string(summary_.added_stocks) + "、更新した株価：" +
          std::to_string(summary_.changed_bars) + "\r\n";
  if (summary_.stopped) text += "途中で中止しました。\r\n";
  summary_.log_file =
      store_.Location().data_directory / ("K" + store_.Master().Header().date.ToCompact() + ".LOG");
  return base::ReplaceFile(files_, summary_.log_file, base::EncodeCp932Lossy(text));
}

Status CsvUpdate::Import(const CsvUpdateSource& source) {
  const auto daily = ListFiles(source.daily_directory);
  if (!daily) return base::Forward(daily);
  std::vector<CsvFile> weekly;
  if (std::error_code ignored; fs::is_directory(source.weekly_directory, ignored)) {
    auto found = ListFiles(source.weekly_directory);
    if (!found) return base::Forward(found);
    weekly = std::move(*found);
  }
  if (const Status added = AddStocks(source.stock_list, *daily); !added) return added;
  if (const Status added = AddCalendarDays(*daily); !added) return added;
  if (const Status done = ImportFiles(*daily, kDailyStage, &CsvUpdate::TakeDaily); !done) {
    return done;
  }
  return ImportFiles(weekly, kWeeklyStage, &CsvUpdate::TakeWeekly);
}

base::Result<CsvUpdateSummary> CsvUpdate::Run(const CsvUpdateSource& source) {
  const Status imported = Import(source);
  summary_.stocks = static_cast<int32_t>(seen_.size());
  summary_.days = store_.Days().Count();
  if (!imported) return base::Forward(imported);
  if (const Status logged = WriteLog(); !logged) return base::Forward(logged);
  return std::move(summary_);
}

}  // namespace

base::Result<CsvUpdateSummary> UpdateFromCsv(store::StockStore& store,
                                             const CsvUpdateSource& source, base::FileSystem& files,
                                             base::Progress& progress) {
  return CsvUpdate(store, files, progress).Run(source);
}

}  // namespace orin::acquire
