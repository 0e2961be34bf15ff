#pragma once

#include <optional>
#include <string>
#include <vector>

#include "analysis/program.h"
#include "app/orin_cli/answer.h"

namespace orin::app {

/// Says on standard error that one condition is one argument where there are several.
bool IsOneCondition(const std::vector<std::string>& expressions);

/// A sentence where the second stock is needed and no code of one was given.
void TellWithoutSecond(bool needs_second, bool has_code, Answer& answer);

/// Compiles an expression; its notes, or why it cannot be compiled (then nullopt), are told. So is
/// that it needs the second stock where no code of one was given.
std::optional<analysis::Program> Compile(const std::string& expression, bool has_code,
                                         Answer& answer);

/// All of them; nullopt where one cannot be compiled. With several, what is told names them.
std::optional<std::vector<analysis::Program>> CompileAll(
    const std::vector<std::string>& expressions, bool has_code, Answer& answer);

}  // namespace orin::app
