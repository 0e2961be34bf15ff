#pragma once

#include <array>
#include <compare>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "base/result.h"

namespace orin::store {

/// What stands in the place of a code where a record has been emptied: the text "!@@@@@@@@" as
/// far as a field of eight holds it. It is no stock's code.
inline constexpr std::string_view kEmptiedCode = "!@@@@@@@";

/// A ticker: one to eight printable ASCII characters other than comma and blank, as "AAPL",
/// "BRK.B", "BF/B" or "^DJI". It is no file name; CodeFileStem makes one.
class StockCode {
 public:
  static constexpr size_t kWidth = 8;

  StockCode() { padded_.fill(' '); }
  /// Blanks on the right are dropped first. Fails with a sentence that shows the text.
  static base::Result<StockCode> Parse(std::string_view text);

  [[nodiscard]] std::string_view Text() const;
  /// Left-aligned in eight characters (the form "!@@@@@@@@").
  [[nodiscard]] std::string_view Padded() const { return {padded_.data(), kWidth}; }

  auto operator<=>(const StockCode&) const = default;

 private:
  std::array<char, kWidth> padded_;
};

struct StockCodeHash {
  size_t operator()(const StockCode& code) const {
    return std::hash<std::string_view>()(code.Padded());
  }
};

}  // namespace orin::store
