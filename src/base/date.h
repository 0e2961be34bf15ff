#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orin::base {

/// A calendar day, held as the number of days since 1899-12-30. 0 means "no date".
/// Dates are accepted from 0100/01/01 to 9999/12/31.
class Date {
 public:
  constexpr Date() = default;
  static constexpr Date FromSerial(int32_t serial) { return Date(serial); }
  /// nullopt where the calendar has no such day.
  static std::optional<Date> FromYmd(int year, int month, int day);
  /// "yyyy/mm/dd"; month and day may have one digit.
  static std::optional<Date> Parse(std::string_view text);
  /// "yyyymmdd".
  static std::optional<Date> ParseCompact(std::string_view text);
  /// The 8-byte date of the files; nullopt for fractions, NaN and days out of range.
  static std::optional<Date> FromFile(double stored);
  /// The day it is here by the system's clock.
  static Date Today();

  [[nodiscard]] constexpr int32_t Serial() const { return serial_; }
  [[nodiscard]] constexpr bool IsNone() const { return serial_ == 0; }
  [[nodiscard]] int Year() const;
  [[nodiscard]] int Month() const;
  /// Sunday 1 ... Saturday 7.
  [[nodiscard]] int Weekday() const;
  /// "yyyy/mm/dd".
  [[nodiscard]] std::string ToText() const;
  /// "yyyymmdd".
  [[nodiscard]] std::string ToCompact() const;

  constexpr auto operator<=>(const Date&) const = default;

 private:
  constexpr explicit Date(int32_t serial) : serial_(serial) {}

  int32_t serial_ = 0;
};

}  // namespace orin::base
