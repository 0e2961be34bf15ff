#include "text_cases.h"

#include <fstream>

#include "support/test_files.h"

namespace orin::analysis {

namespace {

void ReplaceAll(std::string& text, std::string_view from, std::string_view to) {
  for (size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
}

}  // namespace

std::vector<TextCase> ReadTextCases(std::string_view file) {
  constexpr std::string_view kArrow = " ⇒ ";
  const std::string path = support::TestData("analysis/" + std::string(file));
  std::vector<TextCase> cases;
  std::ifstream stream(path);
  std::string line;
  for (int number = 1; std::getline(stream, line); ++number) {
    const size_t arrow = line.find(kArrow);
    if (line.starts_with('#') || arrow == std::string::npos) continue;
    ReplaceAll(line, "␣", " ");
    ReplaceAll(line, "□", "\u3000");
    const size_t middle = line.find(kArrow);
    cases.push_back({line.substr(0, middle), line.substr(middle + kArrow.size()),
                     path + ":" + std::to_string(number)});
  }
  return cases;
}

std::string Repeated(std::string_view text, size_t count) {
  std::string repeated;
  for (size_t i = 0; i < count; ++i) repeated += text;
  return repeated;
}

}  // namespace orin::analysis
