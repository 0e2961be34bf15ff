#include "app/orin_cli/explanation_text.h"

#include <algorithm>
#include <vector>

#include "analysis/explanation_outline.h"
#include "analysis/note_sentence.h"
#include "base/text.h"

namespace orin::app {

using analysis::OutlineRow;

namespace {

constexpr size_t kIndent = 2;
constexpr size_t kValueWidth = 18;
// Values of a longer text stand in the next line.
constexpr size_t kWidestText = 56;

std::string Line(const OutlineRow& row, size_t width) {
  std::string line = std::string(row.level * kIndent, ' ') + row.text;
  if (row.value.empty()) return line + "\n";
  if (base::Columns(line) > width) line += "\n";
  const size_t begin = line.find('\n') == std::string::npos ? 0 : line.size();
  line = line.substr(0, begin) + base::PadRight(line.substr(begin), width);
  line += base::PadLeft(row.value, kValueWidth);
  return line + (row.remark.empty() ? "" : "  " + row.remark) + "\n";
}

/// Values stand in one column.
std::string TextOf(const std::vector<OutlineRow>& rows) {
  size_t width = 0;
  for (const OutlineRow& row : rows) {
    const size_t columns = row.level * kIndent + base::Columns(row.text);
    if (!row.value.empty() && columns <= kWidestText) width = std::max(width, columns);
  }
  std::string text;
  for (const OutlineRow& row : rows) text += Line(row, width);
  return text;
}

}  // namespace

std::string ExplanationText(const analysis::Explanation& explanation, const std::string& stock,
                            base::Date date) {
  std::string text = OutcomeText(explanation, stock, date);
  text += "\n" + TextOf(OutlineOf(explanation));
  if (!explanation.notes.empty()) text += "\n書き方の注意\n";
  for (const analysis::Note& note : explanation.notes) {
    text += "  " + analysis::NoteSentence(note) + "\n";
  }
  return text;
}

}  // namespace orin::app
