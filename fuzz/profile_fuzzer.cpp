#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/cp932.h"
#include "base/profile_file.h"
#include "fuzz/require.h"

namespace {

using orin::base::ProfileFile;
using orin::fuzz::Require;

/// A profile file and a setting to be written into it, parted by zero bytes. Names and value may
/// be left out.
struct Input {
  std::string_view file;
  std::string section = "Bus";
  std::string key = "ini_file ";
  std::string value = " \"data\\\" ";
};

Input Split(std::string_view bytes) {
  Input input;
  const auto take = [&bytes] {
    const std::string_view piece = bytes.substr(0, bytes.find('\0'));
    bytes.remove_prefix(std::min(piece.size() + 1, bytes.size()));
    return piece;
  };
  input.file = take();
  for (std::string* text : {&input.section, &input.key, &input.value}) {
    if (!bytes.empty()) *text = take();
  }
  return input;
}

/// Names come from the program's key tables: ASCII letters, digits, "_" and blanks within or
/// behind.
bool IsName(std::string_view text) {
  const auto allowed = [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
           c == ' ';
  };
  return !text.empty() && text.front() != ' ' && std::ranges::all_of(text, allowed);
}

/// How a profile file is read: UTF-8 only where a character of three bytes or more shows it.
bool LooksLikeUtf8(std::string_view bytes) {
  return orin::base::IsValidUtf8(bytes) &&
         std::ranges::any_of(bytes, [](char c) { return static_cast<unsigned char>(c) >= 0xE0; });
}

bool IsAscii(std::string_view text) {
  return std::ranges::none_of(text, [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
}

/// Some characters have two forms in Unicode and one in code page 932.
std::string AsFileHolds(const std::string& value, bool utf8) {
  const auto encoded = orin::base::EncodeCp932(value);
  return utf8 || !encoded ? value : orin::base::DecodeCp932(*encoded);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const Input input = Split({reinterpret_cast<const char*>(data), size});
  ProfileFile profile = ProfileFile::Parse(input.file);
  const auto unchanged = profile.Serialize();
  Require(unchanged && *unchanged == input.file, "a file that is not changed keeps its bytes");

  const bool settable = IsName(input.section) && IsName(input.key) &&
                        input.value.find_first_of("\r\n") == std::string::npos;
  if (!settable) {
    static_cast<void>(profile.Get(input.section, input.key, input.value));
    return 0;
  }
  profile.Set(input.section, input.key, input.value);
  Require(profile.Get(input.section, input.key, "") == input.value, "a set value is read back");
  const auto bytes = profile.Serialize();
  if (!bytes) {
    Require(!IsAscii(input.value), "ASCII can always be written");
    return 0;
  }
  const bool utf8 = LooksLikeUtf8(input.file);
  // Bytes of code page 932 can happen to be UTF-8; nobody can tell those files apart.
  if (LooksLikeUtf8(*bytes) != utf8 && !IsAscii(input.value)) return 0;
  const ProfileFile reparsed = ProfileFile::Parse(*bytes);
  Require(reparsed.Get(input.section, input.key, "") == AsFileHolds(input.value, utf8),
          "a set value is read back from the file");
  return 0;
}
