#include "settings/setting_form.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "base/text.h"
#include "store/stock_code.h"

namespace orin::settings {

using base::Currency;

namespace {

constexpr int32_t kLastColor = 0xFFFFFF;

bool IsWithin(const SettingForm& form, double value) {
  return value >= form.minimum && value <= form.maximum;
}

bool IsChoice(const SettingForm& form, int32_t value) {
  return std::ranges::any_of(form.choices,
                             [value](const SettingChoice& c) { return c.value == value; });
}

/// The number that one or two digits are, where it is below `limit`.
std::optional<int> ParseTimePart(std::string_view text, int limit) {
  const bool is_digits = std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
  if (text.empty() || text.size() > 2 || !is_digits) return std::nullopt;
  int number = 0;
  for (const char c : text) number = number * 10 + (c - '0');
  if (number >= limit) return std::nullopt;
  return number;
}

/// "hh:mm:ss" of a time that may lack seconds and leading zeros.
std::optional<std::string> ParseTime(std::string_view text) {
  constexpr std::array kLimits = {24, 60, 60};
  const auto parts = base::SplitByDelimiter(text, ":");
  if (!parts || parts->size() < 2 || parts->size() > kLimits.size()) return std::nullopt;
  std::string time;
  for (size_t i = 0; i < kLimits.size(); ++i) {
    const auto number = ParseTimePart(i < parts->size() ? (*parts)[i] : "0", kLimits[i]);
    if (!number) return std::nullopt;
    if (i > 0) time += ':';
    time += static_cast<char>('0' + *number / 10);
    time += static_cast<char>('0' + *number % 10);
  }
  return time;
}

}  // namespace

bool ParseSetting(std::string_view text, const SettingForm& /*form*/, bool& value) {
  text = base::TrimBlanks(text);
  const auto number = Currency::Parse(text);
  const bool is_true = base::EqualsIgnoreCase(text, "True");
  if (!number && !is_true && !base::EqualsIgnoreCase(text, "False")) return false;
  value = is_true || (number && *number != Currency());
  return true;
}

bool ParseSetting(std::string_view text, const SettingForm& form, int32_t& value) {
  const auto parsed = Currency::Parse(base::TrimBlanks(text));
  const auto number = parsed ? parsed->ToInt32() : std::nullopt;
  if (!number) return false;
  const bool is_choice = form.kind == SettingKind::kChoice;
  if (is_choice ? !IsChoice(form, *number) : !IsWithin(form, *number)) return false;
  value = *number;
  return true;
}

bool ParseSetting(std::string_view text, const SettingForm& form, Currency& value) {
  const auto number = Currency::Parse(base::TrimBlanks(text));
  if (!number || !IsWithin(form, number->ToDouble())) return false;
  value = *number;
  return true;
}

bool ParseSetting(std::string_view text, const SettingForm& /*form*/, base::Color& value) {
  const auto parsed = Currency::Parse(base::TrimBlanks(text));
  const auto number = parsed ? parsed->ToInt32() : std::nullopt;
  if (!number || *number < 0 || *number > kLastColor) return false;
  value = base::Color::FromNumber(*number);
  return true;
}

bool ParseSetting(std::string_view text, const SettingForm& /*form*/, base::Date& value) {
  const auto date = base::Date::Parse(base::TrimBlanks(text));
  if (!date) return false;
  value = *date;
  return true;
}

bool ParseSetting(std::string_view text, const SettingForm& form, std::string& value) {
  if (form.kind == SettingKind::kTime) {
    auto time = ParseTime(base::TrimBlanks(text));
    if (time) value = std::move(*time);
    return time.has_value();
  }
  if (form.kind == SettingKind::kStockCode) {
    text = base::TrimBlanks(text);
    if (!text.empty() && !store::StockCode::Parse(text)) return false;
  }
  value = text;
  return true;
}

std::string SettingText(bool value) { return value ? "1" : "0"; }

std::string SettingText(int32_t value) { return std::to_string(value); }

std::string SettingText(Currency value) {
  std::string text = value.ToText();
  text.erase(text.find_last_not_of('0') + 1);
  if (text.ends_with('.')) text.pop_back();
  return text;
}

std::string SettingText(base::Color value) { return std::to_string(value.Number()); }

std::string SettingText(base::Date value) { return value.ToText(); }

std::string SettingText(const std::string& value) { return value; }

}  // namespace orin::settings
