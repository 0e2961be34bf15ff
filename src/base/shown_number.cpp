#include "base/shown_number.h"

namespace orin::base {

namespace {

constexpr auto kUnit = static_cast<uint64_t>(Currency::kScale);

uint64_t Magnitude(int64_t value) {
  return value < 0 ? 0 - static_cast<uint64_t>(value) : static_cast<uint64_t>(value);
}

std::string Digits(uint64_t whole, const NumberFormat& format) {
  std::string digits = std::to_string(whole);
  if (!format.is_grouped) return digits;
  for (size_t i = digits.size(); i > 3; i -= 3) digits.insert(i - 3, 1, ',');
  return digits;
}

const char* Sign(bool is_negative, bool is_zero, const NumberFormat& format) {
  if (is_zero) return "";
  if (is_negative) return "-";
  return format.has_plus ? "+" : "";
}

}  // namespace

std::string FormatNumber(Currency value, const NumberFormat& format) {
  uint64_t step = 1;
  for (int32_t i = format.decimals; i < 4; ++i) step *= 10;
  const uint64_t rounded = (Magnitude(value.Raw()) + step / 2) / step * step;
  std::string text = Sign(value.Raw() < 0, rounded == 0, format);
  text += Digits(rounded / kUnit, format);
  if (format.decimals > 0) {
    const std::string fraction = std::to_string(rounded % kUnit + kUnit);
    text += '.';
    text.append(fraction, 1, static_cast<size_t>(format.decimals));
  }
  return text;
}

std::string FormatWhole(int64_t value, const NumberFormat& format) {
  std::string text = Sign(value < 0, value == 0, format);
  text += Digits(Magnitude(value), format);
  return text;
}

}  // namespace orin::base
