#include "base/cp932.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <iconv.h>
#include <vector>

#include "base/text.h"
#include "base/utf8.h"

namespace orin::base {

namespace {

bool IsAscii(unsigned char byte) { return byte < 0x80; }

bool IsLead(unsigned char byte) {
  return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
}

size_t PairCode(unsigned char lead, unsigned char trail) {
  return static_cast<size_t>(lead) << 8 | trail;
}

/// One direction of the system's conversion, for the time the tables are built.
class Converter {
 public:
  Converter(const char* to, const char* from) : handle_(iconv_open(to, from)) {}
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;
  ~Converter() {
    if (IsOpen()) iconv_close(handle_);
  }

  /// The characters of `text` up to the first that the other code does not have, appended to
  /// `converted`; gives how many bytes of `text` they are.
  size_t ConvertSome(std::string_view text, std::string& converted) {
    if (!IsOpen()) return 0;
    std::string source(text);
    std::array<char, 1024> buffer{};
    char* from = source.data();
    size_t from_left = source.size();
    char* to = buffer.data();
    size_t to_left = buffer.size();
    // Neither code has states that a failure could leave behind.
    iconv(handle_, &from, &from_left, &to, &to_left);
    converted.append(buffer.data(), buffer.size() - to_left);
    return source.size() - from_left;
  }

 private:
  [[nodiscard]] bool IsOpen() const {
    return reinterpret_cast<intptr_t>(handle_) != -1;  // NOLINT(performance-no-int-to-ptr)
  }

  iconv_t handle_;
};

/// All characters of the code page lie in the basic plane. 0: none.
struct Tables {
  std::vector<uint16_t> character_of = std::vector<uint16_t>(0x10000);  // by byte or pair code
  std::vector<uint16_t> code_of = std::vector<uint16_t>(0x10000);       // by character

  Tables();

 private:
  void AddAll(std::string_view codes, size_t width, Converter& decoder, Converter& encoder);
  void Add(std::string_view bytes, const CodePoint& character, Converter& encoder);
};

uint16_t CodeOf(std::string_view bytes) {
  size_t code = 0;
  for (const char c : bytes) code = code << 8 | static_cast<unsigned char>(c);
  return static_cast<uint16_t>(code);
}

/// `codes` of `width` bytes each, those without a character among them.
void Tables::AddAll(std::string_view codes, size_t width, Converter& decoder, Converter& encoder) {
  std::string converted;
  while (!codes.empty()) {
    converted.clear();
    const size_t taken = decoder.ConvertSome(codes, converted);
    std::string_view rest = converted;
    for (size_t at = 0; at < taken; at += width) {
      const CodePoint character = FirstCodePoint(rest);
      Add(codes.substr(at, width), character, encoder);
      rest.remove_prefix(character.length);
    }
    codes.remove_prefix(std::min(taken + width, codes.size()));
  }
}

void Tables::Add(std::string_view bytes, const CodePoint& character, Converter& encoder) {
  if (!character.valid || character.value > 0xFFFF) return;
  character_of[CodeOf(bytes)] = static_cast<uint16_t>(character.value);
  uint16_t& code = code_of[character.value];
  if (code == 0) {
    code = CodeOf(bytes);
    return;
  }
  // Some characters have several codes; the one to write is the converter's choice.
  std::string utf8;
  AppendUtf8(utf8, character.value);
  std::string preferred;
  if (encoder.ConvertSome(utf8, preferred) == utf8.size()) code = CodeOf(preferred);
}

// Row by row and not code by code: every start of the program that meets a Japanese letter waits
// for these tables.
Tables::Tables() {
  Converter decoder("UTF-8", "CP932");
  Converter encoder("CP932", "UTF-8");
  std::string singles;
  for (int lead = 0; lead < 0x100; ++lead) {
    const auto first = static_cast<char>(lead);
    if (!IsLead(static_cast<unsigned char>(lead))) {
      singles += first;
      continue;
    }
    std::string row;
    for (int trail = 0x40; trail <= 0xFC; ++trail) {
      row += first;
      row += static_cast<char>(trail);
    }
    AddAll(row, 2, decoder, encoder);
  }
  AddAll(singles, 1, decoder, encoder);
  // Other systems write these three with another character.
  code_of[0x301C] = code_of[0xFF5E];
  code_of[0x2212] = code_of[0xFF0D];
  code_of[0x2016] = code_of[0x2225];
}

const Tables& Cp932() {
  static const Tables tables;
  return tables;
}

/// Bytes of the first character: 2 where the next two are one character, else 1.
size_t CharacterLength(std::string_view bytes) {
  if (bytes.size() < 2) return 1;
  const auto lead = static_cast<unsigned char>(bytes[0]);
  if (!IsLead(lead)) return 1;
  return Cp932().character_of[PairCode(lead, static_cast<unsigned char>(bytes[1]))] != 0 ? 2 : 1;
}

/// "U+1F600", or the byte as "0x8F" where it is no character.
std::string NumberOf(std::string_view character, const CodePoint& point) {
  std::array<char, 16> number{};
  std::snprintf(number.data(), number.size(), point.valid ? "U+%04X" : "0x%02X",
                point.valid ? static_cast<unsigned>(point.value)
                            : static_cast<unsigned>(static_cast<unsigned char>(character[0])));
  return number.data();
}

std::string CannotEncode(std::string_view character, const CodePoint& point) {
  const std::string subject =
      point.valid ? "文字「" + std::string(character) + "」" : "読めないバイト";
  return subject + "（" + NumberOf(character, point) +
         "）はシフトJISにないため、ファイルに書けません。";
}

}  // namespace

std::string DecodeCp932(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size() * 3 / 2);
  while (!bytes.empty()) {
    const auto lead = static_cast<unsigned char>(bytes[0]);
    size_t length = 1;
    if (IsAscii(lead)) {
      text += bytes[0];
    } else {
      length = CharacterLength(bytes);
      const size_t code = length == 2 ? PairCode(lead, static_cast<unsigned char>(bytes[1])) : lead;
      const uint16_t character = Cp932().character_of[code];
      AppendUtf8(text, character != 0 ? character : kReplacementCharacter);
    }
    bytes.remove_prefix(length);
  }
  return text;
}

Result<std::string> EncodeCp932(std::string_view utf8) {
  std::string bytes;
  bytes.reserve(utf8.size());
  while (!utf8.empty()) {
    if (IsAscii(static_cast<unsigned char>(utf8[0]))) {
      bytes += utf8[0];
      utf8.remove_prefix(1);
      continue;
    }
    const CodePoint point = FirstCodePoint(utf8);
    const uint16_t code =
        point.valid && point.value <= 0xFFFF ? Cp932().code_of[point.value] : uint16_t{0};
    if (code == 0) return Fail(CannotEncode(utf8.substr(0, point.length), point));
    if (code > 0xFF) bytes += static_cast<char>(code >> 8);
    bytes += static_cast<char>(code & 0xFF);
    utf8.remove_prefix(point.length);
  }
  return bytes;
}

std::string DecodeFixedField(std::string_view field) {
  constexpr std::string_view kPadding(" \0", 2);
  const size_t last = field.find_last_not_of(kPadding);
  return DecodeCp932(field.substr(0, last == std::string_view::npos ? 0 : last + 1));
}

std::string EncodeCp932Lossy(std::string_view utf8) {
  auto whole = EncodeCp932(utf8);
  if (whole) return std::move(*whole);
  std::string bytes;
  while (!utf8.empty()) {
    const CodePoint point = FirstCodePoint(utf8);
    const std::string_view character = utf8.substr(0, point.length);
    const auto encoded = EncodeCp932(character);
    bytes += encoded ? *encoded : NumberOf(character, point);
    utf8.remove_prefix(point.length);
  }
  return bytes;
}

Result<std::string> EncodeFixedField(std::string_view utf8, size_t width) {
  auto bytes = EncodeCp932(utf8);
  if (!bytes) return bytes;
  size_t length = 0;
  while (length < bytes->size()) {
    const size_t next = CharacterLength(std::string_view(*bytes).substr(length));
    if (length + next > width) break;
    length += next;
  }
  bytes->resize(length);
  bytes->resize(width, ' ');
  return bytes;
}

DecodedText DecodeText(std::string_view bytes) {
  if (!IsValidUtf8(bytes)) return DecodedText{DecodeCp932(bytes), TextEncoding::kCp932};
  if (bytes.starts_with(kUtf8Mark)) bytes.remove_prefix(kUtf8Mark.size());
  return DecodedText{std::string(bytes), TextEncoding::kUtf8};
}

bool IsValidUtf8(std::string_view bytes) {
  while (!bytes.empty()) {
    const CodePoint point = FirstCodePoint(bytes);
    if (!point.valid) return false;
    bytes.remove_prefix(point.length);
  }
  return true;
}

}  // namespace orin::base
