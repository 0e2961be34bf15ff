#include <iostream>
#include <memory>
#include <vector>

#include "analysis/explanation.h"
#include "analysis/note_sentence.h"
#include "analysis/program.h"
#include "app/orin_cli/compiled_expression.h"
#include "app/orin_cli/explanation_text.h"
#include "app/orin_cli/open_store.h"
#include "base/text.h"

namespace orin::app {

namespace {

struct ExplainOptions {
  std::string code;
  std::string date;
  std::string second;
  std::vector<std::string> in_help;  // the parser never sees an expression
};

int RunExplain(const Session& session, const ExplainOptions& options) {
  if (!IsOneCondition(session.expressions)) return kWrongUsage;
  const std::string& condition = session.expressions.front();
  if (base::TrimBlanks(condition).empty()) {
    Tell("条件が空です。");
    return kWrongUsage;
  }
  const auto opened = OpenStore(session, store::Access::kRead);
  if (!opened) return Report(opened.error());
  const auto stock = FindStock(opened->store, options.code);
  if (!stock) return Report(stock.error());
  const auto second = FindSecondStock(opened->store, options.second);
  if (!second) return Report(second.error());
  const auto day = FindDay(opened->store, options.date);
  if (!day) return Report(day.error());

  // What the compiler has to say is part of the explanation.
  const auto program = analysis::BuildProgram(condition);
  if (!program) {
    Tell(analysis::NoteSentence(program.error()));
    return kWrongUsage;
  }
  const auto beside = analysis::Companions::Load(opened->store, program->Needs());
  if (!beside) return Report(beside.error());
  analysis::StockContext context(opened->store, program->Needs(), *day, *day, *second,
                                 opened->settings.chart_action.bunkatsu_auto_check);
  context.SetBeside(&*beside);
  // As a screening with one analysis file of that date sets it.
  context.KeywordDays().Set({analysis::DayKeyword::kAnalysisDate, 1}, *day);
  context.Load(**stock);
  const auto explanation = analysis::Explain(condition, context, *day);
  if (!explanation) {
    Tell(analysis::NoteSentence(explanation.error()));
    return kWrongUsage;
  }
  const std::string name = std::string((*stock)->code.Text()) + "（" + (*stock)->name + "）";
  std::cout << ExplanationText(*explanation, name, opened->store.Days().DateOf(*day));
  return kDone;
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
