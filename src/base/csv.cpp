#include "base/csv.h"

#include <utility>

namespace orin::base {

std::string CsvField(std::string_view text) {
  if (text.find_first_of(",\"\r\n") == std::string_view::npos) return std::string(text);
  std::string quoted = "\"";
  for (const char c : text) {
    quoted += c;
    if (c == '"') quoted += c;
  }
  return quoted + "\"";
}

std::vector<std::string> CsvFields(std::string_view line) {
  std::vector<std::string> fields(1);
  bool is_quoted = false;
  for (size_t i = 0; i < line.size(); ++i) {
    const char c = line[i];
    if (c == '"' && is_quoted && line.substr(i + 1).starts_with('"')) {
      fields.back() += c;
      ++i;
    } else if (c == '"') {
      is_quoted = !is_quoted;
    } else if (c == ',' && !is_quoted) {
      fields.emplace_back();
    } else {
      fields.back() += c;
    }
  }
  return fields;
}

}  // namespace orin::base
