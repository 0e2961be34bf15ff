#pragma once

#include <string>

namespace orin::app {

/// A field of a CSV line, quoted where it has to be.
std::string CsvField(const std::string& text);

}  // namespace orin::app
