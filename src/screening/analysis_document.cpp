#include "screening/analysis_document.h"

#include <algorithm>
#include <array>
#include <optional>

#include "base/cp932.h"
#include "base/text.h"
#include "screening/analysis_file.h"
#include "screening/analysis_lines.h"

namespace orin::screening {

namespace {

struct FieldRow {
  std::string_view key;
  std::string AnalysisFields::*field;
};

/// In the order in which a new file has them.
constexpr std::array<FieldRow, 6> kFields = {{
    {"タイトル", &AnalysisFields::title},
    {"分析結果格納場所", &AnalysisFields::result_directory},
    {"分析日付", &AnalysisFields::date},
    {"分析上場市場", &AnalysisFields::market},
    {"第二銘柄コード", &AnalysisFields::second_stock},
    {kConditionKey, &AnalysisFields::condition},
}};

/// The lines that a field takes: none where begin is end.
struct LineRange {
  size_t begin = 0;
  size_t end = 0;
};

/// Where the last value of each key stands.
std::array<std::optional<LineRange>, kFields.size()> FindFields(
    const std::vector<std::string>& lines) {
  std::array<std::optional<LineRange>, kFields.size()> found;
  bool in_condition = false;
  for (size_t i = 0; i < lines.size(); ++i) {
    const auto parts = PartsOfLine(lines[i]);
    if (!parts) {
      // Two separators end nothing; blank lines within a condition are its own.
      if (in_condition && ContinuesCondition(lines[i])) found.back()->end = i + 1;
      continue;
    }
    in_condition = parts->key == kConditionKey;
    const auto row = std::ranges::find(kFields, parts->key, &FieldRow::key);
    if (row == kFields.end()) continue;
    auto& place = found[static_cast<size_t>(row - kFields.begin())];
    // An empty value is an absent one, but for the condition.
    const bool is_empty = !in_condition && base::TrimBlanks(parts->value).empty();
    if (!place || !is_empty) place = LineRange{i, i + 1};
  }
  return found;
}

std::string ValueOf(const std::vector<std::string>& lines, const LineRange& range,
                    bool is_condition) {
  const auto parts = PartsOfLine(lines[range.begin]);
  if (!is_condition) return std::string(base::TrimBlanks(parts->value));
  std::string value(parts->value);
  for (size_t i = range.begin + 1; i < range.end; ++i) {
    if (ContinuesCondition(lines[i])) value += "\n" + lines[i];
  }
  return value;
}

base::Status Check(const FieldRow& row, const std::string& value) {
  const std::string name(row.key);
  if (value.find(kSeparator) != std::string::npos) {
    return base::Fail(name +
                      "に「：」は使えません。分析ファイルの項目名と値を区切る文字だからです。");
  }
  if (row.key != kConditionKey && value.find_first_of("\r\n") != std::string::npos) {
    return base::Fail(name + "に改行は使えません。");
  }
  return {};
}

std::vector<std::string> LinesOf(const FieldRow& row, const std::string& value) {
  std::vector<std::string> lines;
  std::string line = std::string(row.key) + std::string(kSeparator);
  for (const char c : value) {
    if (c == '\n') {
      lines.push_back(std::move(line));
      line.clear();
    } else if (c != '\r') {
      line += c;
    }
  }
  lines.push_back(std::move(line));
  return lines;
}

}  // namespace

std::string JoinedCondition(std::string_view condition) {
  std::string joined;
  std::ranges::copy_if(condition, std::back_inserter(joined), [](char c) { return c != '\n'; });
  return joined;
}

AnalysisDocument::AnalysisDocument() {
  for (const FieldRow& row : kFields) {
    lines_.push_back(std::string(row.key) + std::string(kSeparator));
  }
}

AnalysisDocument AnalysisDocument::Parse(std::string_view bytes) {
  AnalysisDocument document;
  document.bytes_ = bytes;
  const base::DecodedText decoded = base::DecodeText(bytes);
  document.encoding_ = bytes.starts_with(base::kUtf8Mark) ? Encoding::kUtf8WithMark
                       : decoded.encoding == base::TextEncoding::kCp932 ||
                               std::ranges::none_of(bytes, [](char c) { return c < 0; })
                           ? Encoding::kCp932
                           : Encoding::kUtf8;
  document.line_end_ =
      decoded.text.find("\r\n") != std::string::npos || decoded.text.find('\n') == std::string::npos
          ? "\r\n"
          : "\n";
  document.lines_.clear();
  for (const std::string_view line : base::SplitLines(decoded.text)) {
    document.lines_.emplace_back(line);
  }
  const auto found = FindFields(document.lines_);
  for (size_t i = 0; i < kFields.size(); ++i) {
    if (!found[i]) continue;
    document.fields_.*kFields[i].field =
        ValueOf(document.lines_, *found[i], kFields[i].key == kConditionKey);
  }
  return document;
}

base::Result<AnalysisDocument> AnalysisDocument::Read(const std::filesystem::path& file) {
  const auto bytes = base::ReadFile(file, kLargestAnalysisFile);
  if (!bytes) return base::Forward(bytes);
  return Parse(*bytes);
}

base::Result<std::string> AnalysisDocument::BytesWith(const AnalysisFields& fields) const {
  if (fields == fields_ && !bytes_.empty()) return bytes_;
  std::vector<std::string> lines = lines_;
  for (size_t i = 0; i < kFields.size(); ++i) {
    const FieldRow& row = kFields[i];
    const std::string& value = fields.*row.field;
    if (value == fields_.*row.field) continue;
    if (const auto checked = Check(row, value); !checked) return base::Forward(checked);
    const auto places = FindFields(lines);
    LineRange place;
    if (places[i]) {
      place = *places[i];
    } else if (row.key == kConditionKey) {
      // It goes on as far as there is no other key: nothing may stand behind it.
      place = {lines.size(), lines.size()};
    } else {
      // Behind the keys that come before it.
      for (size_t before = 0; before < i; ++before) {
        if (places[before]) place.begin = std::max(place.begin, places[before]->end);
      }
      place.end = place.begin;
    }
    std::vector<std::string> written = LinesOf(row, value);
    // Lines between those of the condition that are none of it.
    for (size_t line = place.begin + 1; line < place.end; ++line) {
      if (!ContinuesCondition(lines[line])) written.push_back(std::move(lines[line]));
    }
    const auto at = lines.erase(lines.begin() + static_cast<std::ptrdiff_t>(place.begin),
                                lines.begin() + static_cast<std::ptrdiff_t>(place.end));
    lines.insert(at, written.begin(), written.end());
  }
  std::string text;
  for (const std::string& line : lines) text += line + line_end_;
  if (encoding_ == Encoding::kCp932) return base::EncodeCp932(text);
  return encoding_ == Encoding::kUtf8 ? text : std::string(base::kUtf8Mark) + text;
}

base::Status AnalysisDocument::Save(base::FileSystem& files, const std::filesystem::path& file,
                                    const AnalysisFields& fields) {
  const auto bytes = BytesWith(fields);
  if (!bytes) return base::Forward(bytes);
  const auto saved = base::ReplaceFile(files, file, *bytes);
  if (saved) *this = Parse(*bytes);
  return saved;
}

}  // namespace orin::screening
