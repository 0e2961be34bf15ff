#include "acquire/csv_fields.h"

#include <algorithm>
#include <vector>

#include "base/text.h"

namespace orin::acquire {

namespace {

std::string_view Unquoted(std::string_view field) {
  field = base::TrimBlanks(field);
  if (field.size() >= 2 && field.front() == '"' && field.back() == '"') {
    field = field.substr(1, field.size() - 2);
  }
  return field;
}

}  // namespace

size_t SplitFields(std::string_view line, std::span<std::string_view> fields) {
  size_t count = 0;
  size_t last_filled = 0;
  for (;;) {
    const size_t comma = line.find(',');
    const std::string_view field = Unquoted(line.substr(0, comma));
    if (count < fields.size()) fields[count] = field;
    ++count;
    if (!field.empty()) last_filled = count;
    if (comma == std::string_view::npos)
      return std::max(std::min(count, fields.size()), last_filled);
    line.remove_prefix(comma + 1);
  }
}

bool IsHeading(std::string_view line, std::span<const std::string_view> names) {
  std::vector<std::string_view> fields(names.size());
  return SplitFields(line, fields) == names.size() && std::ranges::equal(fields, names);
}

}  // namespace orin::acquire
