#include "app/orin_cli/compiled_expression.h"

#include <utility>

#include "analysis/condition_text.h"
#include "analysis/note_sentence.h"
#include "app/orin_cli/command.h"

namespace orin::app {

namespace {

std::optional<analysis::Program> Compile(const std::string& expression, const std::string& prefix) {
  auto program = analysis::BuildProgram(expression);
  if (!program) {
    Tell(prefix + analysis::NoteSentence(program.error()));
    return std::nullopt;
  }
  for (const analysis::Note& note : program->Notes()) Tell(prefix + analysis::NoteSentence(note));
  return std::move(*program);
}

}  // namespace

void TellWithoutSecond(bool needs_second, bool has_code) {
  if (needs_second && !has_code) {
    Tell("--second がないので、第二銘柄とさやの項目は計算できません。");
  }
}

bool IsOneCondition(const std::vector<std::string>& expressions) {
  if (expressions.size() == 1) return true;
  Tell(analysis::Quoted(expressions[1]) +
       "：条件は一つだけです。空白を含む条件は全体を引用符で囲んでください。");
  return false;
}

std::optional<analysis::Program> Compile(const std::string& expression, bool has_code) {
  auto program = Compile(expression, std::string());
  if (program) TellWithoutSecond(program->NeedsSecondStock(), has_code);
  return program;
}

std::optional<std::vector<analysis::Program>> CompileAll(
    const std::vector<std::string>& expressions, bool has_code) {
  std::vector<analysis::Program> programs;
  bool needs_second = false;
  for (const std::string& expression : expressions) {
    const bool is_alone = expressions.size() == 1;
    auto program = Compile(expression, is_alone ? "" : analysis::Quoted(expression) + "の");
    if (!program) continue;
    needs_second = needs_second || program->NeedsSecondStock();
    programs.push_back(std::move(*program));
  }
  TellWithoutSecond(needs_second, has_code);
  if (programs.size() != expressions.size()) return std::nullopt;
  return programs;
}

}  // namespace orin::app
