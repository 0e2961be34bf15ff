#include "app/orin_cli/csv_field.h"

namespace orin::app {

std::string CsvField(const std::string& text) {
  if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
  std::string quoted = "\"";
  for (const char c : text) {
    quoted += c;
    if (c == '"') quoted += c;
  }
  return quoted + "\"";
}

}  // namespace orin::app
