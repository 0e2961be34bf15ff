#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include "analysis/evaluation.h"
#include "app/orin_cli/compiled_expression.h"
#include "app/orin_cli/open_store.h"
#include "base/csv.h"
#include "base/text.h"

namespace orin::app {

namespace {

struct SeriesOptions {
  std::string code;
  std::string from;
  std::string to;
  std::string second;
  std::vector<std::string> in_help;  // the parser never sees an expression
};

/// One expression on every day; which of both it fills depends on what it is.
struct Column {
  bool is_value = false;
  base::ValueColumn values;
  std::vector<uint8_t> truths;

  [[nodiscard]] std::string Cell(size_t place) const {
    if (!is_value) return truths[place] != 0 ? "true" : "false";
    return values.Has(place) ? values.At(place).ToText() : "";
  }
};

Column ColumnOf(analysis::Evaluation& evaluation, size_t expression) {
  Column column;
  column.is_value = evaluation.ProgramOf(expression).IsValue();
  if (column.is_value) {
    evaluation.Values(column.values, expression);
  } else {
    evaluation.Truths(column.truths, expression);
  }
  return column;
}

void Print(const std::vector<std::string>& expressions, const std::vector<Column>& columns,
           std::span<const base::Date> dates, std::ostream& out) {
  out << "年月日";
  for (const std::string& expression : expressions) {
    out << ',' << base::CsvField(base::PrintableLine(expression));
  }
  out << '\n';
  for (size_t place = 0; place < dates.size(); ++place) {
    out << dates[place].ToText();
    for (const Column& column : columns) out << ',' << column.Cell(place);
    out << '\n';
  }
}

int FindSeries(const StoreReading& reading, const SeriesOptions& options,
               const std::vector<std::string>& expressions, Answer& answer) {
  const store::StockStore& store = reading.store;
  const auto stock = FindStock(store, options.code);
  if (!stock) return answer.Report(stock.error());
  const auto second = FindSecondStock(store, options.second, answer);
  const auto days = FindDays(store, options.from, options.to);
  if (!days) return answer.Report(days.error());

  auto programs = CompileAll(expressions, !options.second.empty(), answer);
  if (!programs) return kWrongUsage;
  auto evaluation = analysis::Evaluation::OfPrograms(
      store, std::move(*programs),
      {.days = *days,
       .second_stock = second,
       .adjust_splits = reading.settings.chart_action.adjusts_for_splits});
  if (!evaluation) return answer.Report(evaluation.error());
  evaluation->Load(**stock);

  std::vector<Column> columns;
  for (size_t i = 0; i < expressions.size(); ++i) columns.push_back(ColumnOf(*evaluation, i));
  const auto first = static_cast<size_t>(days->first.Value() - 1);
  const auto last = static_cast<size_t>(days->last.Value());
  Print(expressions, columns, store.Days().Days().subspan(first, last - first), answer.Out());
  return kDone;
}

}  // namespace

void AddSeriesCommand(CLI::App& app, Session& session) {
  const auto options = std::make_shared<SeriesOptions>();
  CLI::App* command = app.add_subcommand("series", "分析項目の式を毎日について計算する");
  command->add_option("--code", options->code, "銘柄コード（必須）")->required()->type_name("CODE");
  command->add_option("--from", options->from, "最初の日付 yyyy/mm/dd（省略時は最も古い日）")
      ->type_name("D");
  command->add_option("--to", options->to, "最後の日付 yyyy/mm/dd（省略時は最新の日）")
      ->type_name("D");
  command->add_option("--second", options->second, "第二銘柄の銘柄コード")->type_name("CODE");
  command->add_option("EXPR", options->in_help, "式（一つ以上、必須）")->type_name("");
  command->footer(
      "年月日と式を見出しとするＣＳＶを、取引日ごとに１行で表示します。値の式は小数４桁の数、\n"
      "計算できない日は空、条件式は true か false です。");
  command->callback([&session, options] {
    if (session.expressions.empty()) throw CLI::RequiredError("EXPR");
    session.run = [&session, options] {
      return AnswerFromStore(session, [&](const StoreReading& reading, Answer& answer) {
        return FindSeries(reading, *options, session.expressions, answer);
      });
    };
  });
}

}  // namespace orin::app
