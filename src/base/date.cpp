#include "base/date.h"

#include <array>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <ctime>

namespace orin::base {

namespace {

using std::chrono::sys_days;
using std::chrono::year_month_day;

constexpr sys_days kDayZero = std::chrono::year{1899} / 12 / 30;
constexpr int kFirstYear = 100;
constexpr int kLastYear = 9999;

year_month_day Split(int32_t serial) { return kDayZero + std::chrono::days{serial}; }

std::optional<int> ParseDigits(std::string_view text, size_t at_most) {
  if (text.empty() || text.size() > at_most) return std::nullopt;
  int value = 0;
  const char* end = text.data() + text.size();
  const auto [rest, failure] = std::from_chars(text.data(), end, value);
  if (failure != std::errc{} || rest != end || value < 0) return std::nullopt;
  return value;
}

std::optional<Date> FromParts(std::string_view year, std::string_view month, std::string_view day) {
  const auto y = ParseDigits(year, 4);
  const auto m = ParseDigits(month, 2);
  const auto d = ParseDigits(day, 2);
  if (year.size() != 4 || !y || !m || !d) return std::nullopt;
  return Date::FromYmd(*y, *m, *d);
}

std::string Format(const char* format, int32_t serial) {
  const year_month_day ymd = Split(serial);
  std::array<char, 32> text{};
  const int length =
      std::snprintf(text.data(), text.size(), format, static_cast<int>(ymd.year()),
                    static_cast<unsigned>(ymd.month()), static_cast<unsigned>(ymd.day()));
  return std::string(text.data(), static_cast<size_t>(length));
}

}  // namespace

std::optional<Date> Date::FromYmd(int year, int month, int day) {
  if (year < kFirstYear || year > kLastYear || month < 1 || day < 1) return std::nullopt;
  const year_month_day ymd{std::chrono::year{year},
                           std::chrono::month{static_cast<unsigned>(month)},
                           std::chrono::day{static_cast<unsigned>(day)}};
  if (!ymd.ok()) return std::nullopt;
  return Date(static_cast<int32_t>((sys_days{ymd} - kDayZero).count()));
}

std::optional<Date> Date::Parse(std::string_view text) {
  const size_t first = text.find('/');
  if (first == std::string_view::npos) return std::nullopt;
  const size_t second = text.find('/', first + 1);
  if (second == std::string_view::npos) return std::nullopt;
  return FromParts(text.substr(0, first), text.substr(first + 1, second - first - 1),
                   text.substr(second + 1));
}

std::optional<Date> Date::ParseCompact(std::string_view text) {
  if (text.size() != 8) return std::nullopt;
  return FromParts(text.substr(0, 4), text.substr(4, 2), text.substr(6, 2));
}

std::optional<Date> Date::FromFile(double stored) {
  static const double first = FromYmd(kFirstYear, 1, 1)->Serial();
  static const double last = FromYmd(kLastYear, 12, 31)->Serial();
  if (!(stored >= first && stored <= last)) return std::nullopt;
  const auto serial = static_cast<int32_t>(stored);
  if (static_cast<double>(serial) != stored) return std::nullopt;
  return Date(serial);
}

Date Date::Today() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  return FromYmd(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday).value_or(Date());
}

int Date::Year() const { return static_cast<int>(Split(serial_).year()); }

int Date::Month() const { return static_cast<int>(static_cast<unsigned>(Split(serial_).month())); }

int Date::Weekday() const {
  const std::chrono::weekday day{kDayZero + std::chrono::days{serial_}};
  return static_cast<int>(day.c_encoding()) + 1;
}

std::string Date::ToText() const { return Format("%04d/%02u/%02u", serial_); }

std::string Date::ToCompact() const { return Format("%04d%02u%02u", serial_); }

}  // namespace orin::base
