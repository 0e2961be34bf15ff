#include <memory>
#include <utility>

#include "base/paths.h"
#include "screening/result_sets.h"
#include "screening/ui/check2_form.h"
#include "widgets/job_progress.h"
#include "widgets/qt_text.h"

// The run of the screening window, and what comes of it.

namespace orin::screening {

namespace fs = std::filesystem;
using widgets::Text;

/// A run over the ticked entries.
struct check2_Form::Run {
  const store::StockStore& store;
  RunOptions options;
  std::optional<int16_t> first_file;
  base::Progress& progress;
  std::vector<ResultContent> results = {};
  std::vector<std::string> failures = {};
  bool is_stopped = false;
  bool has_store_changed = false;
};

void check2_Form::Command1_Click() {
  if (IsRunning() || !state_.store) return;
  // Days and stocks of the windows are those of the run.
  if (state_.store->HasChangedOnDisk()) surroundings_.reload_store();
  if (!state_.store) return;
  const auto files = Files();
  if (files.ticked.empty()) {
    surroundings_.fail(base::PathText(GroupFile()) + " に実行する分析ファイルがありません。");
    return;
  }
  const auto first_file =
      FirstFileOfRun(state_.store->Master().Header(), state_.settings.common.first_price_file);
  const auto own_store = OpenFromFirstFile(first_file);
  if (!own_store) {
    surroundings_.fail(own_store.error().message);
    return;
  }
  const store::StockStore& store = *own_store ? **own_store : *state_.store;
  count_.Stop();
  count_timer_.stop();
  list_->ClearOutcomes();
  auto progress =
      std::make_unique<widgets::JobProgress>(window(), Text(base::StageCaption("株価分析")));
  job_ = progress.get();
  EnableButtons();
  Run run{store,
          {.base_directory = state_.places.program_directory,
           .adjust_splits = state_.settings.chart_action.adjusts_for_splits,
           .days = DaysOfGroup(store, files.all, ChosenDate()),
           .date = ChosenDate()},
          *first_file,
          *progress};
  RunTicked(run);
  // Whoever closes the window wants to see nothing any more.
  if (!is_stopping_to_close_) ShowResults(run);
  job_ = nullptr;
  progress.reset();
  Report(run);
  EnableButtons();
  CountSoon();
  if (is_stopping_to_close_) (parentWidget() != nullptr ? parentWidget() : this)->close();
}

/// None where all price files are read: the store that is open serves.
base::Result<std::optional<store::StockStore>> check2_Form::OpenFromFirstFile(
    const base::Result<std::optional<int16_t>>& first_file) const {
  if (!first_file) return base::Forward(first_file);
  if (!*first_file) return std::optional<store::StockStore>();
  auto opened = store::StockStore::Open(
      state_.store->Location(), {store::Access::kRead, *first_file, &*state_.store}, *state_.files);
  if (!opened) return base::Forward(opened);
  return std::optional(std::move(*opened));
}

void check2_Form::ShowResults(Run& run) {
  const auto total = static_cast<int64_t>(run.results.size());
  for (int64_t i = 0; i < total; ++i) {
    static_cast<void>(run.progress.Report("ミルテ（分析結果）", i, total));
    surroundings_.show(std::move(run.results[static_cast<size_t>(i)]));
  }
}

void check2_Form::RunTicked(Run& run) {
  const auto files = Files().all;
  const auto& entries = state_.settings.analysis_group.entries;
  for (size_t place = 0; place < entries.size(); ++place) {
    if (!entries.at(place).check || files[place].empty()) continue;
    if (!RunEntry(run, place, files[place])) return;
  }
}

bool check2_Form::RunEntry(Run& run, size_t place, const fs::path& file) {
  auto result = RunAnalysisFile(run.store, file, run.options, *state_.files, run.progress);
  if (!result) {
    const RunFailure& failure = result.error();
    run.is_stopped = failure.kind == RunFailure::Kind::kStopped;
    run.has_store_changed = failure.kind == RunFailure::Kind::kStoreChanged;
    list_->ShowOutcome(place,
                       run.is_stopped ? QStringLiteral("中止") : QStringLiteral("使えません"),
                       {failure.message});
    if (!run.is_stopped) run.failures.push_back(failure.message);
    return !run.is_stopped && !run.has_store_changed;
  }
  list_->ShowOutcome(place, QStringLiteral("%1銘柄").arg(result->selected.size()), result->notes);
  ResultContent content;
  content.title = result->analysis.title;
  content.date = result->date;
  for (const SelectedStock& selected : result->selected) {
    content.codes.push_back(selected.stock.code);
  }
  content.list = result->result_list;
  content.analysis = std::move(result->analysis);
  content.days = result->days;
  content.own_days = std::move(result->own_days);
  content.first_file = run.first_file;
  run.results.push_back(std::move(content));
  // A stop between two files.
  if (is_stopping_to_close_) run.is_stopped = true;
  return !run.is_stopped;
}

void check2_Form::Report(const Run& run) {
  if (run.has_store_changed) state_.CompareStore();
  if (is_stopping_to_close_) return;
  if (!run.is_stopped && !run.has_store_changed) {
    // It stands until the next job.
    window()->setWindowTitle(QStringLiteral("ミルテ（株価分析終了）"));
    messages_.Inform("株価チェックが終了しました。");
  }
  if (!run.failures.empty()) {
    std::string text;
    for (const std::string& failure : run.failures) text += (text.empty() ? "" : "\n") + failure;
    surroundings_.fail(text);
  }
}

void check2_Form::mnu_openlist_Click() {
  const fs::path current = CurrentFile();
  fs::path start = state_.places.program_directory;
  if (!current.empty()) {
    const auto analysis = ReadAnalysisFile(current);
    const auto directory = analysis
                               ? FindResultDirectory(*analysis, "", state_.places.program_directory)
                               : base::Result<fs::path>(start);
    if (directory) start = *directory;
  }
  const auto file = messages_.ChooseFile(
      {.caption = "結果リスト", .filter = "結果リスト|*.txt|", .start = start});
  if (!file) return;
  const auto list = ReadList(*file);
  if (!list) {
    messages_.Warn(list.error().message);
    return;
  }
  if (!list->date) {
    messages_.Warn(base::PathText(*file) +
                   " に「D:」の日付の行がないので、結果リストではありません。");
    return;
  }
  ResultContent content;
  content.title = list->title;
  content.date = *list->date;
  content.codes = list->codes;
  content.list = *file;
  // The condition is that of the entry with the title, where there is one.
  const auto files = Files().all;
  for (const fs::path& each : files) {
    if (each.empty()) continue;
    auto analysis = ReadAnalysisFile(each);
    if (analysis && analysis->title == list->title) content.analysis = std::move(*analysis);
  }
  surroundings_.show(std::move(content));
}

void check2_Form::mnu_analysisday_Click() {
  const fs::path file = CurrentFile();
  if (file.empty() || !state_.store) return;
  const auto analysis = ReadAnalysisFile(file);
  if (!analysis) {
    surroundings_.fail(analysis.error().message);
    return;
  }
  const auto date = ChosenDate();
  const auto day = FindDay(*state_.store, date ? date : analysis->date, base::PathText(file));
  if (!day) {
    surroundings_.fail(day.error().message);
    return;
  }
  const auto written = WriteAnalysisDay(*state_.files, file, state_.store->Days().DateOf(*day));
  if (!written) {
    surroundings_.fail(written.error().message);
    return;
  }
  messages_.Inform(
      "株価分析日付ファイル（analysisday.txt）を\n分析ファイルと同じディレクトリに作成しました。");
}

}  // namespace orin::screening
