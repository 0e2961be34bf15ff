#include <algorithm>
#include <iostream>
#include <memory>
#include <utility>
#include <vector>

#include "analysis/evaluation.h"
#include "analysis/note_sentence.h"
#include "app/orin_cli/compiled_expression.h"
#include "app/orin_cli/open_store.h"
#include "base/text.h"

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
  bool has_second_code;
  analysis::EvaluationOptions options;  // for one day
};

std::string ValueText(analysis::Evaluation& evaluation) {
  const base::DayIndex day = evaluation.Days().last;
  if (!evaluation.ProgramOf().IsValue()) return evaluation.IsTrue(day) ? "true" : "false";
  const analysis::Value value = evaluation.ValueOn(day);
  return value.ok ? value.value.ToText() : "fail";
}

/// Answers with the line of one expression and gives its exit status.
int AddValue(const std::string& expression, const Subject& subject, Answer& answer) {
  auto program = analysis::BuildProgram(expression);
  if (!program) {
    const std::string sentence = base::PrintableLine(analysis::NoteSentence(program.error()));
    answer.Out() << "error: " << sentence << '\n';
    return kWrongUsage;
  }
  for (const analysis::Note& note : program->Notes()) answer.Tell(analysis::NoteSentence(note));
  TellWithoutSecond(program->NeedsSecondStock(), subject.has_second_code, answer);
  auto evaluation =
      analysis::Evaluation::OfProgram(subject.store, std::move(*program), subject.options);
  if (!evaluation) return answer.Report(evaluation.error());
  evaluation->Load(subject.stock);
  answer.Out() << ValueText(*evaluation) << '\n';
  return kDone;
}

std::vector<std::string> ReadExpressions(std::istream& input) {
  std::vector<std::string> expressions;
  for (std::string line; std::getline(input, line);) {
    if (line.ends_with('\r')) line.pop_back();
    expressions.push_back(std::move(line));
  }
  return expressions;
}

int FindValues(const StoreReading& reading, const EvalOptions& options,
               const std::vector<std::string>& expressions, Answer& answer) {
  const store::StockStore& store = reading.store;
  const auto stock = FindStock(store, options.code);
  if (!stock) return answer.Report(stock.error());
  const auto second = FindSecondStock(store, options.second, answer);
  const auto day = FindDay(store, options.date);
  if (!day) return answer.Report(day.error());

  const Subject subject{store,
                        **stock,
                        !options.second.empty(),
                        {.days = {*day, *day},
                         .second_stock = second,
                         .adjust_splits = reading.settings.chart_action.adjusts_for_splits}};
  int status = kDone;
  for (const std::string& expression : expressions) {
    status = std::max(status, AddValue(expression, subject, answer));
  }
  return status;
}

int RunEval(const Session& session, const EvalOptions& options) {
  // The input can be read once, the store any number of times.
  const std::vector<std::string> expressions =
      session.expressions.empty() ? ReadExpressions(std::cin) : session.expressions;
  return AnswerFromStore(session, [&](const StoreReading& reading, Answer& answer) {
    return FindValues(reading, options, expressions, answer);
  });
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
