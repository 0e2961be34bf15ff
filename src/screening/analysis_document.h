#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "base/file_system.h"
#include "base/result.h"

namespace orin::screening {

/// The fields of an analysis file as they are written in it, without blanks at the ends; empty
/// where absent. The condition has its blanks, and "\n" where the file begins a new line.
struct AnalysisFields {
  std::string title;
  std::string result_directory;
  std::string date;
  std::string market;
  std::string second_stock;
  std::string condition;

  bool operator==(const AnalysisFields&) const = default;
};

/// The condition as the run reads it: its lines with nothing between them.
std::string JoinedCondition(std::string_view condition);

/// An analysis file under change: its lines, encoding (code page 932, UTF-8, UTF-8 with a mark)
/// and line ends are kept; only the lines of fields that differ are written anew. Reads lines by
/// the rules of ParseAnalysisFile: of several lines of one key the last counts.
class AnalysisDocument {
 public:
  /// A new one: code page 932, CRLF, all six keys.
  AnalysisDocument();
  static AnalysisDocument Parse(std::string_view bytes);
  /// Fails with a sentence where the file cannot be read.
  static base::Result<AnalysisDocument> Read(const std::filesystem::path& file);

  [[nodiscard]] const AnalysisFields& Fields() const { return fields_; }
  /// The bytes of the file with these fields in place of its own. A field that the file lacks
  /// gets a line of its own at its place in the order of the keys, unless it is empty; one made
  /// empty keeps its key. A file that has nothing to change comes back byte for byte. Fails, with a
  /// sentence that names the field, for what the format cannot hold ("：" in any field or a line
  /// break in one that is not the condition) and, with the character, for what code page 932
  /// lacks in a file of that encoding.
  [[nodiscard]] base::Result<std::string> BytesWith(const AnalysisFields& fields) const;
  /// Replaces the file, whole or not at all; the document then is what was written.
  base::Status Save(base::FileSystem& files, const std::filesystem::path& file,
                    const AnalysisFields& fields);

 private:
  enum class Encoding { kCp932, kUtf8, kUtf8WithMark };

  Encoding encoding_ = Encoding::kCp932;
  std::string line_end_ = "\r\n";
  std::vector<std::string> lines_;  // UTF-8
  std::string bytes_;               // as read; empty for a new one
  AnalysisFields fields_;
};

}  // namespace orin::screening
