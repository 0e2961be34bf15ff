#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace orin::app {

/// Japanese headings and words in the help of the program and of every command.
void SpeakJapanese(CLI::App& app);

/// One Japanese sentence for a wrong command line (or the help that was asked for); returns the
/// exit status.
int ExplainUsage(const CLI::App& app, const CLI::ParseError& error);

/// Takes the expressions of `eval` and the like out of the arguments: everything behind such a
/// command that is no option of letters and no option's value, and all behind "--". The parser
/// would read a sign as an option and brackets as a list.
std::vector<std::string> TakeExpressions(const CLI::App& app, std::vector<std::string>& arguments);

}  // namespace orin::app
