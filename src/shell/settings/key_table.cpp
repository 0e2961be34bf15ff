#include "shell/settings/key_table.h"

#include "base/currency.h"
#include "base/text.h"

namespace orin::shell {

using base::Currency;

bool IsTicked(std::string_view text) {
  text = base::TrimBlanks(text);
  if (base::EqualsIgnoreCase(text, "True")) return true;
  const auto number = Currency::Parse(text);
  return number && *number != Currency();
}

void AssignText(std::string& value, std::string_view text, std::string_view /*fallback*/) {
  value = text;
}

void AssignText(int32_t& value, std::string_view text, std::string_view fallback) {
  auto number = Currency::Parse(base::TrimBlanks(text));
  if (!number || !number->ToInt32()) number = Currency::Parse(fallback);
  value = number.value_or(Currency()).ToInt32().value_or(0);
}

void AssignText(bool& value, std::string_view text, std::string_view /*fallback*/) {
  value = IsTicked(text);
}

std::string TextOf(const std::string& value) { return value; }

std::string TextOf(int32_t value) { return std::to_string(value); }

std::string TextOf(bool value) { return value ? "1" : "0"; }

}  // namespace orin::shell
