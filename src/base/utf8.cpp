#include "base/utf8.h"

#include <array>

namespace orin::base {

namespace {

/// A form of the encoding: which lead bytes have it and what range it alone may express.
struct Form {
  unsigned char lead_mask;
  unsigned char lead_bits;
  size_t length;
  char32_t smallest;
};

constexpr std::array kForms = {
    Form{0x80, 0x00, 1, 0x0},
    Form{0xE0, 0xC0, 2, 0x80},
    Form{0xF0, 0xE0, 3, 0x800},
    Form{0xF8, 0xF0, 4, 0x10000},
};

bool IsScalar(char32_t value) { return value <= 0x10FFFF && !(value >= 0xD800 && value <= 0xDFFF); }

CodePoint Decode(std::string_view utf8, const Form& form) {
  constexpr CodePoint kInvalid{kReplacementCharacter, 1, false};
  if (utf8.size() < form.length) return kInvalid;
  char32_t value = static_cast<unsigned char>(utf8[0]) & ~form.lead_mask & 0xFFU;
  for (const char c : utf8.substr(1, form.length - 1)) {
    const auto byte = static_cast<unsigned char>(c);
    if ((byte & 0xC0U) != 0x80U) return kInvalid;
    value = value << 6 | (byte & 0x3FU);
  }
  if (value < form.smallest || !IsScalar(value)) return kInvalid;
  return CodePoint{value, form.length, true};
}

}  // namespace

CodePoint FirstCodePoint(std::string_view utf8) {
  const auto lead = static_cast<unsigned char>(utf8[0]);
  for (const Form& form : kForms) {
    if ((lead & form.lead_mask) == form.lead_bits) return Decode(utf8, form);
  }
  return CodePoint{kReplacementCharacter, 1, false};
}

void AppendUtf8(std::string& text, char32_t value) {
  size_t form = 0;
  while (form + 1 < kForms.size() && value >= kForms[form + 1].smallest) ++form;
  size_t shift = 6 * (kForms[form].length - 1);
  text += static_cast<char>(kForms[form].lead_bits | value >> shift);
  while (shift > 0) {
    shift -= 6;
    text += static_cast<char>(0x80U | (value >> shift & 0x3FU));
  }
}

}  // namespace orin::base
