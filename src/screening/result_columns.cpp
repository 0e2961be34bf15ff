#include "screening/result_columns.h"

#include <utility>

#include "analysis/evaluation.h"
#include "analysis/note_sentence.h"
#include "base/percent.h"

namespace orin::screening {

using base::DayIndex;

namespace {

constexpr size_t kRowsPerReport = 8;

/// The columns that can be compiled.
struct CompiledColumns {
  std::vector<size_t> places;  // among all columns
  std::vector<analysis::Program> programs;
};

CompiledColumns Compile(std::span<const ResultColumn> columns, std::vector<std::string>& notes) {
  CompiledColumns compiled;
  for (size_t i = 0; i < columns.size(); ++i) {
    auto program = analysis::BuildProgram(columns[i].expression);
    if (!program) {
      notes.push_back("列「" + columns[i].expression + "」の" +
                      analysis::NoteSentence(program.error()));
      continue;
    }
    for (const analysis::Note& note : program->Notes()) {
      notes.push_back("列「" + columns[i].expression + "」の" + analysis::NoteSentence(note));
    }
    compiled.places.push_back(i);
    compiled.programs.push_back(std::move(*program));
  }
  return compiled;
}

void FillPrices(base::BarsView daily, DayIndex day, ResultRow& row) {
  const int32_t t = day.Value();
  if (!daily.HasData(t)) return;
  row.close = daily.Close(t);
  row.volume = daily.Volume(t);
  if (t <= daily.First() || !daily.HasData(t - 1)) return;
  const base::Currency before = daily.Close(t - 1);
  row.change = daily.Close(t).Minus(before);
  if (row.change) row.change_percent = base::PercentOf(*row.change, before);
}

ColumnValue ValueOf(analysis::Evaluation& evaluation, size_t expression, DayIndex day) {
  ColumnValue shown;
  if (evaluation.ProgramOf(expression).IsValue()) {
    const analysis::Value value = evaluation.ValueOn(day, expression);
    if (value.ok) shown.value = value.value;
  } else {
    shown.truth = evaluation.IsTrue(day, expression);
  }
  return shown;
}

}  // namespace

base::Result<std::vector<ResultRow>> LoadResultRows(const store::StockStore& store,
                                                    std::span<const store::StockCode> codes,
                                                    const ResultQuestion& question,
                                                    base::Progress& progress,
                                                    std::vector<std::string>& notes) {
  CompiledColumns compiled = Compile(question.columns, notes);
  auto evaluation = analysis::Evaluation::OfPrograms(
      store, std::move(compiled.programs),
      {.days = {question.day, question.day},
       .second_stock = question.second_stock,
       .adjust_splits = question.adjust_splits,
       .keyword_days = question.days,
       .own_needs = {.daily = 2, .fields = base::PriceFields::kClose}});
  if (!evaluation) return base::Forward(evaluation);
  if (evaluation->NeedsSecondStock() && !evaluation->SecondStockProblem().empty()) {
    notes.push_back(evaluation->SecondStockProblem());
  }
  std::vector<ResultRow> rows;
  rows.reserve(codes.size());
  const auto total = static_cast<int64_t>(codes.size());
  for (const store::StockCode& code : codes) {
    if (rows.size() % kRowsPerReport == 0 &&
        !progress.Report("分析結果の値を計算しています。", static_cast<int64_t>(rows.size()),
                         total)) {
      return base::Fail("分析結果の値の計算を中止しました。");
    }
    ResultRow row;
    row.code = code;
    row.stock = store.Master().Find(code);
    row.columns.resize(question.columns.size());
    if (!row.stock.IsNone()) {
      evaluation->Load(store.Master().Stock(row.stock));
      FillPrices(evaluation->Daily(), question.day, row);
      for (size_t i = 0; i < compiled.places.size(); ++i) {
        row.columns[compiled.places[i]] = ValueOf(*evaluation, i, question.day);
      }
    }
    rows.push_back(std::move(row));
  }
  return rows;
}

}  // namespace orin::screening
