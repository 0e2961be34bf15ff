#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orin::analysis {

/// One line "text ⇒ expected" of a file of cases.
struct TextCase {
  std::string text;
  std::string expected;
  std::string where;  // file:line
};

/// The cases of a file in the test data. Lines that begin with "#" and empty lines are skipped; ␣
/// and □ stand for the half-width and the full-width blank.
std::vector<TextCase> ReadTextCases(std::string_view file);

/// `count` times the text.
std::string Repeated(std::string_view text, size_t count);

}  // namespace orin::analysis
