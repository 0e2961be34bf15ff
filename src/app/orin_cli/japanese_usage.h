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

/// An expression of `eval` that begins with a sign, as "-1 * 2", is no option: it gets a blank
/// in front. `arguments` in the order of the command line; afterwards last first, as the parser
/// takes them.
void ProtectExpressions(std::vector<std::string>& arguments);

}  // namespace orin::app
