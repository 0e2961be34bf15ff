#include "base/shown_number.h"

namespace orin::base {

namespace {

constexpr int64_t kUnit = Currency::kScale;

}  // namespace

std::string Grouped(Currency value, int32_t decimals, bool with_sign) {
  int64_t step = 1;
  for (int32_t i = decimals; i < 4; ++i) step *= 10;
  const bool is_negative = value.Raw() < 0;
  uint64_t raw =
      is_negative ? 0 - static_cast<uint64_t>(value.Raw()) : static_cast<uint64_t>(value.Raw());
  const auto unit = static_cast<uint64_t>(step);
  raw = (raw + unit / 2) / unit * unit;
  std::string text = std::to_string(raw / kUnit);
  for (size_t i = text.size(); i > 3; i -= 3) text.insert(i - 3, ",");
  if (decimals > 0) {
    const std::string fraction = std::to_string(raw % kUnit + kUnit).substr(1);
    text += "." + fraction.substr(0, static_cast<size_t>(decimals));
  }
  if (raw == 0) return text;
  if (is_negative) return "-" + text;
  return with_sign ? "+" + text : text;
}

std::string PlainNumber(std::string_view shown) {
  std::string plain;
  for (const char c : shown) {
    if (c != ',' && c != '+') plain += c;
  }
  const size_t percent = plain.find("％");
  return percent == std::string::npos ? plain : plain.substr(0, percent);
}

}  // namespace orin::base
