#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orin::base {

/// A field of a CSV line, quoted where it has to be.
std::string CsvField(std::string_view text);

/// The fields of a CSV line as CsvField wrote them.
std::vector<std::string> CsvFields(std::string_view line);

}  // namespace orin::base
