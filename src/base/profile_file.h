#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/cp932.h"
#include "base/file_system.h"
#include "base/result.h"

namespace orin::base {

/// Settings are some dozen kilobytes; what is a thousand times that is no settings file.
inline constexpr int64_t kLargestProfile = int64_t{64} << 20;

/// A profile file: sections in square brackets, one key=value line a setting, in memory whole.
/// Values are text. Lines it does not know (comments, other sections and keys) keep their place
/// and bytes when it is saved.
class ProfileFile {
 public:
  /// An empty profile; saving it makes a code page 932 file with CRLF line ends.
  ProfileFile() = default;
  static ProfileFile Parse(std::string_view bytes);
  /// A missing file is an empty profile. Fails for one beyond kLargestProfile.
  static Result<ProfileFile> Load(const std::filesystem::path& path);

  /// Section and key are found without regard to ASCII case; the first one counts. A key that
  /// ends in a blank is found as such, else without its blank. Blanks around the value and
  /// then one pair of double quotes around it are dropped. An empty value is a value: the
  /// default is for a missing key alone.
  [[nodiscard]] std::string Get(std::string_view section, std::string_view key,
                                std::string_view default_value) const;
  [[nodiscard]] bool Has(std::string_view section, std::string_view key) const;
  /// Replaces the value in its line, or adds the line at the end of its section, or adds the
  /// section. A value that Get would change is written in quotes; one that Get already gives
  /// leaves the line as it is.
  void Set(std::string_view section, std::string_view key, std::string_view value);

  /// The file's bytes in the encoding it was read in. Fails where a value set has a line break
  /// or a character that the encoding lacks.
  [[nodiscard]] Result<std::string> Serialize() const;
  /// Replaces the file whole. A new file can be read by its owner alone, since settings may hold
  /// a password.
  Status Save(FileSystem& files, const std::filesystem::path& path) const;

 private:
  enum class LineKind { kHeading, kKey, kBlank, kOther };

  /// Bytes as read stay bytes, because not all of them need be characters. Neighbouring lines of
  /// the kinds kBlank and kOther are one, so that a file of rubbish does not take many times its
  /// size; so are lines that nothing finds, as the second one of a key.
  struct Line {
    LineKind kind;
    std::string kept;   // bytes as read, without the last line end
    std::string added;  // UTF-8 that is written behind them
    std::string text;   // of kHeading and kKey, the whole as UTF-8
    std::string end;    // as read; empty for a last line without one
  };

  using Positions = std::unordered_map<std::string, size_t>;

  /// Names in the tables are in lower case; the first line of a name is in them.
  struct Section {
    std::vector<Line> lines;  // the heading first, but for what stands above all headings
    bool is_found = false;    // the first of its name
    Positions keys;           // as they stand before the "="
    Positions trimmed_keys;
  };

  struct Place {
    size_t section;
    size_t line;
  };

  void ReadLine(std::string_view bytes, std::string_view end);
  [[nodiscard]] std::string Decode(std::string_view bytes) const;
  void OpenSection(std::string_view name, Line heading);
  void AddOther(std::string_view bytes, std::string_view end);
  static void Register(std::string_view key, size_t position, Section& section);
  [[nodiscard]] std::optional<size_t> FindSection(std::string_view section) const;
  [[nodiscard]] std::optional<Place> FindKey(std::string_view section, std::string_view key) const;
  void EndLastLine(Section& section, size_t position) const;
  void AddKey(std::string_view section, std::string_view key, std::string_view value);
  [[nodiscard]] Status AppendAdded(const Line& line, std::string& bytes) const;

  std::vector<Section> sections_ = std::vector<Section>(1);
  Positions section_positions_;
  TextEncoding encoding_ = TextEncoding::kCp932;
  std::string byte_order_mark_;
  std::string line_end_ = "\r\n";
};

}  // namespace orin::base
