#include "screening/result_columns.h"

#include <deque>

#include "analysis/evaluator.h"
#include "analysis/note_sentence.h"
#include "analysis/program.h"
#include "analysis/stock_context.h"
#include "base/percent.h"
#include "screening/screening_run.h"

namespace orin::screening {

using base::DayIndex;

namespace {

constexpr size_t kRowsPerReport = 8;

/// A column that can be computed.
struct Computed {
  size_t place;
  analysis::Program program;
  analysis::Evaluator evaluator{program};

  Computed(size_t column, analysis::Program built) : place(column), program(std::move(built)) {}
};

/// In a deque the programs stay where their evaluators look for them.
std::deque<Computed> Compile(std::span<const ResultColumn> columns,
                             std::vector<std::string>& notes) {
  std::deque<Computed> computed;
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
    computed.emplace_back(i, std::move(*program));
  }
  return computed;
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

void FillColumns(std::deque<Computed>& computed, analysis::StockContext& context, DayIndex day,
                 ResultRow& row) {
  for (Computed& column : computed) {
    ColumnValue& value = row.columns[column.place];
    if (column.program.IsValue()) {
      const analysis::Value result = column.evaluator.EvaluateOperand(context, day);
      if (result.ok) value.value = result.value;
    } else {
      value.truth = column.evaluator.EvaluateCondition(context, day);
    }
  }
}

}  // namespace

base::Result<std::vector<ResultRow>> LoadResultRows(const store::StockStore& store,
                                                    std::span<const store::StockCode> codes,
                                                    const ResultQuestion& question,
                                                    base::Progress& progress,
                                                    std::vector<std::string>& notes) {
  std::deque<Computed> computed = Compile(question.columns, notes);
  const SecondStock second = FindSecondStock(store, question.second_stock);
  analysis::History needs{.daily = 2, .fields = base::PriceFields::kClose};
  bool needs_second = false;
  for (const Computed& column : computed) {
    needs = needs.Union(column.program.Needs());
    needs_second = needs_second || column.program.NeedsSecondStock();
  }
  if (needs_second && second.record == nullptr) {
    notes.push_back(second.problem.empty()
                        ? "第二銘柄コードがないので、第二銘柄とさやの項目の列は計算できません。"
                        : second.problem);
  }
  const auto beside = analysis::Companions::Load(store, needs);
  if (!beside) return base::Forward(beside);
  analysis::StockContext context(store, needs, question.day, question.day, second.record,
                                 question.adjust_splits);
  context.SetBeside(&*beside);
  context.KeywordDays() = question.days;
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
      context.Load(store.Master().Stock(row.stock));
      FillPrices(context.Daily(), question.day, row);
      FillColumns(computed, context, question.day, row);
    }
    rows.push_back(std::move(row));
  }
  return rows;
}

}  // namespace orin::screening
