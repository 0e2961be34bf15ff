#include <memory>
#include <vector>

#include "app/orin_cli/compiled_expression.h"
#include "app/orin_cli/explanation_text.h"
#include "app/orin_cli/open_store.h"
#include "base/text.h"
#include "screening/explain_stock.h"

namespace orin::app {

namespace {

struct ExplainOptions {
  std::string code;
  std::string date;
  std::string second;
  std::vector<std::string> in_help;  // the parser never sees an expression
};

int FindExplanation(const StoreReading& reading, const std::string& condition,
                    const ExplainOptions& options, Answer& answer) {
  const auto stock = FindStock(reading.store, options.code);
  if (!stock) return answer.Report(stock.error());
  const auto second = FindSecondStock(reading.store, options.second, answer);
  const auto day = FindDay(reading.store, options.date);
  if (!day) return answer.Report(day.error());

  screening::ExplainQuestion question;
  question.stock = reading.store.Master().Find((*stock)->code);
  question.day = *day;
  question.second_stock = second;
  question.adjust_splits = reading.settings.chart_action.adjusts_for_splits;
  const auto explanation = screening::ExplainStock(reading.store, condition, question);
  if (!explanation) {
    answer.Tell(explanation.error().message);
    return explanation.error().kind == screening::RunFailure::Kind::kCannotBeCompiled ? kWrongUsage
                                                                                      : kFailed;
  }
  const std::string name = std::string((*stock)->code.Text()) + "（" + (*stock)->name + "）";
  answer.Out() << base::Printable(
      ExplanationText(*explanation, name, reading.store.Days().DateOf(*day)));
  return kDone;
}

int RunExplain(const Session& session, const ExplainOptions& options) {
  if (!IsOneCondition(session.expressions)) return kWrongUsage;
  const std::string& condition = session.expressions.front();
  if (base::TrimBlanks(condition).empty()) {
    Tell("条件が空です。");
    return kWrongUsage;
  }
  return AnswerFromStore(session, [&](const StoreReading& reading, Answer& answer) {
    return FindExplanation(reading, condition, options, answer);
  });
}

}  // namespace

void AddExplainCommand(CLI::App& app, Session& session) {
  const auto options = std::make_shared<ExplainOptions>();
  CLI::App* command = app.add_subcommand("explain", "銘柄が選ばれる、選ばれない理由を説明する");
  command->add_option("--code", options->code, "銘柄コード（必須）")->required()->type_name("CODE");
  command->add_option("--date", options->date, "分析日付 yyyy/mm/dd（省略時は最新の日）")
      ->type_name("D");
  command->add_option("--second", options->second, "第二銘柄の銘柄コード")->type_name("CODE");
  command->add_option("CONDITION", options->in_help, "条件か値の式（必須）")->type_name("");
  command->footer(
      "結論と理由を一文で、続いて条件ごとに左右の値、その差、値の元になった足の日付を表示します。");
  command->callback([&session, options] {
    if (session.expressions.empty()) throw CLI::RequiredError("CONDITION");
    session.run = [&session, options] { return RunExplain(session, *options); };
  });
}

}  // namespace orin::app
