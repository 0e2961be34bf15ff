#include <algorithm>
#include <iostream>
#include <memory>
#include <vector>

#include "analysis/evaluator.h"
#include "analysis/note_sentence.h"
#include "analysis/program.h"
#include "app/orin_cli/compiled_expression.h"
#include "app/orin_cli/open_store.h"

namespace orin::app {

namespace {

struct EvalOptions {
  std::string code;
  std::string date;
  std::string second;
  std::vector<std::string> in_help;  // the parser never sees an expression
};

struct Subject {
  const store::StockStore& store;
  const store::StockRecord& stock;
  const store::StockRecord* second;
  bool has_second_code;
  base::DayIndex day;
  bool adjust_splits;
};

base::Result<std::string> Evaluate(const analysis::Program& program, const Subject& subject) {
  const auto beside = analysis::Companions::Load(subject.store, program.Needs());
  if (!beside) return base::Forward(beside);
  analysis::StockContext context(subject.store, program.Needs(), subject.day, subject.day,
                                 subject.second, subject.adjust_splits);
  context.SetBeside(&*beside);
  // As a screening with one analysis file of that date sets it.
  context.KeywordDays().Set({analysis::DayKeyword::kAnalysisDate, 1}, subject.day);
  context.Load(subject.stock);
  analysis::Evaluator evaluator(program);
  if (!program.IsValue()) {
    return evaluator.EvaluateCondition(context, subject.day) ? "true" : "false";
  }
  const analysis::Value value = evaluator.EvaluateOperand(context, subject.day);
  return value.ok ? value.value.ToText() : "fail";
}

/// Prints the line of one expression and gives its exit status.
int PrintValue(const std::string& expression, const Subject& subject) {
  const auto program = analysis::BuildProgram(expression);
  if (!program) {
    std::cout << "error: " << analysis::NoteSentence(program.error()) << '\n';
    return kWrongUsage;
  }
  for (const analysis::Note& note : program->Notes()) Tell(analysis::NoteSentence(note));
  TellWithoutSecond(program->NeedsSecondStock(), subject.has_second_code);
  const auto value = Evaluate(*program, subject);
  if (!value) return Report(value.error());
  std::cout << *value << '\n';
  return kDone;
}

int RunEval(const Session& session, const EvalOptions& options) {
  const auto opened = OpenStore(session, store::Access::kRead);
  if (!opened) return Report(opened.error());
  const auto stock = FindStock(opened->store, options.code);
  if (!stock) return Report(stock.error());
  const store::StockRecord* second = FindSecondStock(opened->store, options.second);
  const auto day = FindDay(opened->store, options.date);
  if (!day) return Report(day.error());

  const Subject subject{opened->store, **stock,
                        second,        !options.second.empty(),
                        *day,          opened->settings.chart_action.bunkatsu_auto_check};
  int status = kDone;
  for (const std::string& expression : session.expressions) {
    status = std::max(status, PrintValue(expression, subject));
  }
  if (session.expressions.empty()) {
    for (std::string line; std::getline(std::cin, line);) {
      if (line.ends_with('\r')) line.pop_back();
      status = std::max(status, PrintValue(line, subject));
    }
  }
  return status;
}

}  // namespace

void AddEvalCommand(CLI::App& app, Session& session) {
  const auto options = std::make_shared<EvalOptions>();
  CLI::App* command = app.add_subcommand("eval", "分析項目の式を計算する");
  command->add_option("--code", options->code, "銘柄コード（必須）")->required()->type_name("CODE");
  command->add_option("--date", options->date, "分析日付 yyyy/mm/dd（省略時は最新の日）")
      ->type_name("D");
  command->add_option("--second", options->second, "第二銘柄の銘柄コード")->type_name("CODE");
  command->add_option("EXPR", options->in_help, "式（省略時は標準入力の１行ごと）")->type_name("");
  command->footer(
      "条件式には true か false を、値の式には小数４桁の数を、計算できないときは fail を、\n"
      "書き方が違うときは error: と理由を、式ごとに１行で表示します。");
  command->callback([&session, options] {
    session.run = [&session, options] { return RunEval(session, *options); };
  });
}

}  // namespace orin::app
