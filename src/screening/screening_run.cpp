#include "screening/screening_run.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

#include "analysis/evaluator.h"
#include "analysis/note_sentence.h"
#include "analysis/program.h"
#include "analysis/stock_context.h"
#include "base/cp932.h"
#include "base/paths.h"
#include "base/text.h"
#include "store/stored_file.h"

namespace orin::screening {

namespace {

namespace fs = std::filesystem;
using base::DayIndex;
using base::Fail;
using base::Forward;
using base::Result;

tl::unexpected<RunFailure> Failure(std::string message,
                                   RunFailure::Kind kind = RunFailure::Kind::kOther) {
  return tl::unexpected<RunFailure>(RunFailure{std::move(message), kind});
}

constexpr std::string_view kDefaultDirectoryFile = "workresultfilename.txt";
constexpr int64_t kStocksPerReport = 4;
constexpr const char* kFewFiles = "データファイルは４ファイル以上必要です。";

std::string StageCaption(const std::string& title) { return "ミルテ（株価分析：" + title + "）"; }

SelectedStock Describe(const store::StockRecord& stock, base::BarsView daily, DayIndex day) {
  SelectedStock selected{stock, std::nullopt, std::nullopt};
  const int32_t t = day.Value();
  if (!daily.HasData(t)) return selected;
  selected.close = daily.Close(t);
  if (t > daily.First() && daily.HasData(t - 1)) {
    selected.change = daily.Close(t).Minus(daily.Close(t - 1));
  }
  return selected;
}

analysis::NumberedKeyword AnalysisDate(size_t place) {
  return {analysis::DayKeyword::kAnalysisDate, static_cast<int32_t>(place) + 1};
}

void AddNotes(const analysis::Program& program, const AnalysisFile& analysis,
              const SecondStock& second, std::vector<std::string>& notes) {
  for (const analysis::Note& note : program.Notes()) {
    notes.push_back("分析項目の" + analysis::NoteSentence(note));
  }
  if (program.IsValue()) {
    notes.emplace_back("分析項目に比較演算子がないので、どの銘柄も選ばれません。");
  }
  if (!second.problem.empty()) {
    notes.push_back(second.problem);
  } else if (program.NeedsSecondStock() && !analysis.second_stock &&
             !analysis.is_second_stock_wrong) {
    notes.emplace_back("第二銘柄コードがないので、第二銘柄とさやの項目は計算できません。");
  }
}

void AddNotes(const StockDays& own_days, std::vector<std::string>& notes) {
  const std::string file(kStockDaysFile);
  if (!own_days.days.empty()) {
    notes.push_back(file + " により、" + std::to_string(own_days.days.size()) +
                    "銘柄は別の日付で分析しました。");
  }
  const std::string of_file = file + " の";
  for (const std::string& note : own_days.notes) notes.push_back(of_file + note);
}

/// The days that are read: those of the run and of the stocks with a day of their own.
struct DaySpan {
  DayIndex first;
  DayIndex last;
};
DaySpan DaysRead(const SelectDay& when) {
  DaySpan span{when.day, when.day};
  if (when.own_days == nullptr) return span;
  for (const auto& [code, day] : when.own_days->days) {
    span.first = std::min(span.first, day);
    span.last = std::max(span.last, day);
  }
  return span;
}

}  // namespace

SecondStock FindSecondStock(const store::StockStore& store,
                            const std::optional<store::StockCode>& code) {
  if (!code) return {};
  const base::MasterRecord record = store.Master().Find(*code);
  if (record.IsNone()) {
    return {nullptr, "第二銘柄コード「" + std::string(code->Text()) +
                         "」の銘柄がないので、第二銘柄とさやの項目は計算できません。"};
  }
  return {&store.Master().Stock(record), ""};
}

Result<DayIndex> FindDay(const store::StockStore& store, const std::optional<base::Date>& date,
                         const std::string& file_name) {
  if (store.Days().Count() == 0) return Fail("株価データがまだありません。");
  if (!date) return store.Days().Last();
  const DayIndex day = store.Days().Find(*date);
  if (!day.IsNone()) return day;
  return Fail(file_name + " の分析日付 " + date->ToText() +
              " の株価データがありません（有効な日付は " + store.Days().Days().front().ToText() +
              "～" + store.Days().Days().back().ToText() + " の取引日です）。");
}

Result<AnalysisFile> ReadAnalysisFile(const fs::path& file) {
  const auto bytes = base::ReadFile(file, kLargestAnalysisFile);
  if (!bytes) return Forward(bytes);
  return ParseAnalysisFile(base::DecodeText(*bytes).text, base::PathText(file));
}

Result<fs::path> FindResultDirectory(const AnalysisFile& analysis, const std::string& file_name,
                                     const fs::path& base_directory) {
  std::string directory = analysis.result_directory;
  const fs::path default_file = base_directory / kDefaultDirectoryFile;
  if (directory.empty() && store::Exists(default_file)) {
    const auto bytes = base::ReadFile(default_file, kLargestAnalysisFile);
    if (!bytes) return Forward(bytes);
    const std::string text = base::DecodeText(*bytes).text;
    const auto lines = base::SplitLines(text);
    if (!lines.empty()) directory = std::string(base::TrimBlanks(lines.front()));
  }
  if (directory.empty()) return Fail(file_name + " に分析結果格納場所がありません。");
  fs::path path = base::NativePath(directory, base_directory);
  std::error_code ignored;
  if (!fs::is_directory(path, ignored)) {
    return Fail(file_name + " の分析結果格納場所 " + base::PathText(path) +
                " というディレクトリがありません。");
  }
  return path;
}

Outcome<std::vector<SelectedStock>> Select(const store::StockStore& store,
                                           const AnalysisFile& analysis, const SelectDay& when,
                                           base::Progress& progress,
                                           std::vector<std::string>& notes) {
  const SecondStock second = FindSecondStock(store, analysis.second_stock);
  const auto program = analysis::BuildProgram(analysis.condition);
  if (!program) {
    return Failure("分析項目の" + analysis::NoteSentence(program.error()),
                   RunFailure::Kind::kCannotBeCompiled);
  }
  AddNotes(*program, analysis, second, notes);

  // The line of a selected stock shows the change, which needs the day before.
  const analysis::History needs =
      program->Needs().Union({.daily = 2, .fields = base::PriceFields::kClose});
  const auto beside = analysis::Companions::Load(store, needs);
  if (!beside) return Failure(beside.error().message);
  const DaySpan days = DaysRead(when);
  analysis::StockContext context(store, needs, days.first, days.last, second.record,
                                 when.adjust_splits);
  context.SetBeside(&*beside);
  context.KeywordDays() = when.days;
  analysis::Evaluator evaluator(*program);
  const std::string stage = StageCaption(analysis.title);
  const auto stocks = store.Master().Stocks();
  const auto total = static_cast<int64_t>(stocks.size());
  std::vector<SelectedStock> selected;
  for (int64_t done = 0; done < total; ++done) {
    if (done % kStocksPerReport == 0 && !progress.Report(stage, done, total)) {
      return Failure("株価分析「" + analysis.title + "」を中止しました。",
                     RunFailure::Kind::kStopped);
    }
    const auto place = static_cast<size_t>(done);
    const store::StockRecord& stock = stocks[place];
    if (!Matches(analysis.market, stock)) continue;
    const DayIndex day =
        when.own_days == nullptr ? when.day : when.own_days->Of(stock.code, when.day);
    context.LoadNext(stocks, place);
    if (!evaluator.EvaluateCondition(context, day)) continue;
    selected.push_back(Describe(stock, context.Daily(), day));
    progress.Found(static_cast<int64_t>(selected.size()));
  }
  static_cast<void>(progress.Report(stage, total, total));
  return selected;
}

analysis::RunDays DaysOfFile(DayIndex day) {
  analysis::RunDays days;
  days.Set(AnalysisDate(0), day);
  return days;
}

analysis::RunDays DaysOfGroup(const store::StockStore& store, std::span<const fs::path> files,
                              std::optional<base::Date> date) {
  analysis::RunDays days;
  for (size_t place = 0; place < files.size(); ++place) {
    if (files[place].empty()) continue;
    const auto analysis = ReadAnalysisFile(files[place]);
    if (!analysis) continue;
    const auto day = FindDay(store, date ? date : analysis->date, "");
    if (day) days.Set(AnalysisDate(place), *day);
  }
  return days;
}

Outcome<RunResult> RunAnalysisFile(const store::StockStore& store, const fs::path& file,
                                   const RunOptions& options, base::FileSystem& files,
                                   base::Progress& progress) {
  const std::string file_name = base::PathText(file);
  auto analysis = ReadAnalysisFile(file);
  if (!analysis) return Failure(analysis.error().message);
  // A stop is seen at the next report.
  static_cast<void>(progress.Report(StageCaption(analysis->title), 0, 0));
  const auto day = FindDay(store, options.date ? options.date : analysis->date, file_name);
  if (!day) return Failure(day.error().message);
  const auto directory = FindResultDirectory(*analysis, file_name, options.base_directory);
  if (!directory) return Failure(directory.error().message);
  auto own_days = ReadStockDays(options.base_directory, store);
  if (!own_days) return Failure(own_days.error().message);

  RunResult result;
  result.analysis = std::move(*analysis);
  result.date = store.Days().DateOf(*day);
  result.days = options.days.value_or(DaysOfFile(*day));
  result.own_days = std::move(*own_days);
  result.result_list = *directory / ResultListName(result.date);
  result.notes = result.analysis.notes;
  AddNotes(result.own_days, result.notes);
  if (const auto title = base::EncodeCp932(result.analysis.title); !title) {
    result.notes.push_back("タイトルの" + title.error().message);
  }
  const SelectDay when{*day, options.adjust_splits, result.days, &result.own_days};
  auto selected = Select(store, result.analysis, when, progress, result.notes);
  if (!selected) {
    return Failure(file_name + " の" + selected.error().message, selected.error().kind);
  }
  if (store.HasChangedOnDisk()) {
    return Failure(file_name +
                       " の株価分析の途中で株価データが更新されたので、結果を書き込みませんでした。"
                       "もう一度実行して下さい。",
                   RunFailure::Kind::kStoreChanged);
  }
  result.selected = std::move(*selected);
  const std::string text = FormatResultList(result.analysis.title, result.date, result.selected);
  if (const auto written = WriteResultList(files, result.result_list, text); !written) {
    return Failure(file_name + " の分析結果を書き込めません。" + written.error().message);
  }
  return result;
}

base::Status WriteAnalysisDay(base::FileSystem& files, const fs::path& analysis_file,
                              base::Date date) {
  const auto bytes = base::EncodeCp932("analysis_day：" + date.ToText() + "\r\n");
  if (!bytes) return Forward(bytes);
  return base::ReplaceFile(files, analysis_file.parent_path() / "analysisday.txt", *bytes);
}

Result<std::optional<int16_t>> FirstFileOfRun(const store::MasterHeader& header, int32_t setting,
                                              std::optional<int32_t> option) {
  if (!option && setting == 0) return std::nullopt;
  const int32_t first = header.first_file;
  const int32_t last = std::max(first, header.current_file - kFewestPriceFiles + 1);
  const int32_t number = option.value_or(setting);
  if (number >= first && number <= last) return static_cast<int16_t>(number);
  const std::string range = std::to_string(first) + "から" + std::to_string(last) + "までの番号";
  const bool is_file = number >= first && number <= header.current_file;
  if (is_file && option) return Fail(kFewFiles);
  if (option) {
    return Fail("先頭ファイルの番号" + std::to_string(number) + "は" + range + "ではありません。");
  }
  return Fail((is_file ? std::string(kFewFiles) + "\n" : "") + "設定 AnalysisSystemFirstFile の値" +
              std::to_string(number) + "では株価分析を始められません。先頭ファイルには" + range +
              "か、すべてのファイルを読む0を指定してください。");
}

Result<std::string> ExplainFirstFile(const store::StockStore& store, int16_t first_file) {
  const auto days = store.DaysOfFile(first_file);
  if (!days) return Forward(days);
  return "先頭ファイルの番号を大きくすると株価分析のスピードが速くなりますが、株価分析に必要なデー"
         "タ"
         "がないと、\n正しく株価分析ができません。\n先頭ファイルの番号が" +
         std::to_string(first_file) + "の場合、有効な株価データ日付は、" + days->first.ToText() +
         "～" + store.Days().Days().back().ToText() +
         "までです。\nこの日付以前のデータを使用して株価分析する必要がある場合、先頭ファイルの番号"
         "を"
         "小さくして下さい。";
}

}  // namespace orin::screening
