#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/cp932.h"
#include "base/file_system.h"
#include "base/result.h"

namespace orin::base {

/// A profile file: sections in square brackets, one key=value line a setting, in memory whole.
/// Values are text. Lines it does not know (comments, other sections and keys) keep their place
/// and bytes when it is saved.
class ProfileFile {
 public:
  /// An empty profile; saving it makes a code page 932 file with CRLF line ends.
  ProfileFile() = default;
  static ProfileFile Parse(std::string_view bytes);
  /// A missing file is an empty profile.
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
  /// Replaces the file whole.
  Status Save(FileSystem& files, const std::filesystem::path& path) const;

 private:
  /// Bytes as read stay bytes, because not all of them need be characters.
  struct Line {
    std::string kept;   // bytes as read, without the line end
    std::string added;  // UTF-8 that is written behind them
    std::string text;   // the whole as UTF-8
    std::string end;    // as read; empty for a last line without one
  };

  /// The lines [first, last) below a section's heading.
  struct Range {
    size_t first;
    size_t last;
  };

  [[nodiscard]] Line ReadLine(std::string_view bytes, std::string_view end) const;
  [[nodiscard]] std::optional<Range> FindSection(std::string_view section) const;
  [[nodiscard]] const Line* FindKey(std::string_view section, std::string_view key) const;
  void InsertLine(size_t position, const std::string& text);
  [[nodiscard]] Status AppendAdded(const Line& line, std::string& bytes) const;

  std::vector<Line> lines_;
  TextEncoding encoding_ = TextEncoding::kCp932;
  std::string byte_order_mark_;
  std::string line_end_ = "\r\n";
};

}  // namespace orin::base
