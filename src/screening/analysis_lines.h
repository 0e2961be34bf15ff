#pragma once

#include <optional>
#include <string_view>

#include "base/text.h"

namespace orin::screening {

// The lines of an analysis file.

inline constexpr std::string_view kSeparator = "：";
inline constexpr std::string_view kConditionKey = "分析項目";

/// A line "key：value".
struct AnalysisLine {
  std::string_view key;    // without blanks around it
  std::string_view value;  // as it stands
};

/// nullopt for a line that does not have exactly one separator.
inline std::optional<AnalysisLine> PartsOfLine(std::string_view line) {
  const size_t at = line.find(kSeparator);
  if (at == std::string_view::npos) return std::nullopt;
  const std::string_view rest = line.substr(at + kSeparator.size());
  if (rest.find(kSeparator) != std::string_view::npos) return std::nullopt;
  return AnalysisLine{base::TrimBlanks(line.substr(0, at)), rest};
}

/// Whether the line, behind that of the condition, is more of it.
inline bool ContinuesCondition(std::string_view line) {
  return line.find(kSeparator) == std::string_view::npos && !base::TrimBlanks(line).empty();
}

}  // namespace orin::screening
