#include "app/orin_cli/compiled_expression.h"

#include <utility>

#include "analysis/condition_text.h"
#include "analysis/note_sentence.h"
#include "app/orin_cli/command.h"

namespace orin::app {

namespace {

std::optional<analysis::Program> CompileAlone(const std::string& expression,
                                              const std::string& prefix, Answer& answer) {
  auto program = analysis::BuildProgram(expression);
  if (!program) {
    answer.Tell(prefix + analysis::NoteSentence(program.error()));
    return std::nullopt;
  }
  for (const analysis::Note& note : program->Notes())
    answer.Tell(prefix + analysis::NoteSentence(note));
  return std::move(*program);
}

}  // namespace

void TellWithoutSecond(bool needs_second, bool has_code, Answer& answer) {
  if (needs_second && !has_code) {
    answer.Tell("--second がないので、第二銘柄とさやの項目は計算できません。");
  }
}

bool IsOneCondition(const std::vector<std::string>& expressions) {
  if (expressions.size() == 1) return true;
  Tell(analysis::Quoted(expressions[1]) +
       "：条件は一つだけです。空白を含む条件は全体を引用符で囲んでください。");
  return false;
}

std::optional<analysis::Program> Compile(const std::string& expression, bool has_code,
                                         Answer& answer) {
  auto program = CompileAlone(expression, std::string(), answer);
  if (program) TellWithoutSecond(program->NeedsSecondStock(), has_code, answer);
  return program;
}

std::optional<std::vector<analysis::Program>> CompileAll(
    const std::vector<std::string>& expressions, bool has_code, Answer& answer) {
  std::vector<analysis::Program> programs;
  bool needs_second = false;
  for (const std::string& expression : expressions) {
    const bool is_alone = expressions.size() == 1;
    auto program =
        CompileAlone(expression, is_alone ? "" : analysis::Quoted(expression) + "の", answer);
    if (!program) continue;
    needs_second = needs_second || program->NeedsSecondStock();
    programs.push_back(std::move(*program));
  }
  TellWithoutSecond(needs_second, has_code, answer);
  if (programs.size() != expressions.size()) return std::nullopt;
  return programs;
}

}  // namespace orin::app
