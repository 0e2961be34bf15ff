#include "base/profile_file.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <system_error>
#include <utility>

#include "base/text.h"

namespace orin::base {

namespace {

/// The name of the section whose heading `line` is.
std::optional<std::string_view> SectionName(std::string_view line) {
  line = TrimBlanks(line);
  if (!line.starts_with('[')) return std::nullopt;
  const size_t end = line.find(']');
  if (end == std::string_view::npos) return std::nullopt;
  return TrimBlanks(line.substr(1, end - 1));
}

/// What stands before the "=", blanks included.
std::optional<std::string_view> KeyOf(std::string_view line) {
  if (TrimBlanks(line).starts_with(';')) return std::nullopt;
  const size_t end = line.find('=');
  if (end == std::string_view::npos) return std::nullopt;
  return line.substr(0, end);
}

/// What Get makes of the text behind the "=".
std::string_view Unwrap(std::string_view value) {
  value = TrimBlanks(value);
  if (value.size() < 2 || !value.starts_with('"') || !value.ends_with('"')) return value;
  return value.substr(1, value.size() - 2);
}

std::string Wrap(std::string_view value) {
  if (Unwrap(value) == value) return std::string(value);
  return '"' + std::string(value) + '"';
}

/// For comparison without regard to ASCII case.
std::string Fold(std::string_view text) {
  std::string folded(text);
  for (char& c : folded) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return folded;
}

/// Half-width katakana of code page 932 can look like characters of two bytes in UTF-8, but
/// Japanese text in UTF-8 has characters of three.
TextEncoding EncodingOf(std::string_view bytes) {
  const bool any_wide =
      std::ranges::any_of(bytes, [](char c) { return static_cast<unsigned char>(c) >= 0xE0; });
  return any_wide && IsValidUtf8(bytes) ? TextEncoding::kUtf8 : TextEncoding::kCp932;
}

}  // namespace

ProfileFile ProfileFile::Parse(std::string_view bytes) {
  ProfileFile profile;
  profile.encoding_ = EncodingOf(bytes);
  if (bytes.starts_with(kUtf8Mark)) {
    profile.byte_order_mark_ = kUtf8Mark;
    bytes.remove_prefix(kUtf8Mark.size());
  }
  bool first = true;
  while (!bytes.empty()) {
    const size_t line_feed = bytes.find('\n');
    const bool ended = line_feed != std::string_view::npos;
    const size_t size = ended ? line_feed + 1 : bytes.size();
    size_t end = ended ? line_feed : size;
    while (ended && end > 0 && bytes[end - 1] == '\r') --end;
    profile.ReadLine(bytes.substr(0, end), bytes.substr(end, size - end));
    if (first && ended) profile.line_end_ = end < line_feed ? "\r\n" : "\n";
    first = false;
    bytes.remove_prefix(size);
  }
  return profile;
}

// Only lines that can be found need their text: neither "=" nor a "[" at the start is ever a part
// of another character.
void ProfileFile::ReadLine(std::string_view bytes, std::string_view end) {
  if (TrimBlanks(bytes).starts_with('[')) {
    Line heading{LineKind::kHeading, std::string(bytes), "", Decode(bytes), std::string(end)};
    if (const auto name = SectionName(heading.text)) {
      // The name goes with the line it is in.
      return OpenSection(std::string(*name), std::move(heading));
    }
  }
  Section& section = sections_.back();
  if (section.is_found && bytes.find('=') != std::string_view::npos) {
    std::string text = Decode(bytes);
    const auto key = KeyOf(text);
    if (key && !section.keys.contains(Fold(*key))) {
      Register(*key, section.lines.size(), section);
      section.lines.push_back(
          {LineKind::kKey, std::string(bytes), "", std::move(text), std::string(end)});
      return;
    }
  }
  AddOther(bytes, end);
}

std::string ProfileFile::Decode(std::string_view bytes) const {
  return encoding_ == TextEncoding::kCp932 ? DecodeCp932(bytes) : std::string(bytes);
}

void ProfileFile::OpenSection(std::string_view name, Line heading) {
  const bool is_found = section_positions_.try_emplace(Fold(name), sections_.size()).second;
  if (!is_found && !sections_.back().is_found) return AddOther(heading.kept, heading.end);
  sections_.emplace_back();
  sections_.back().is_found = is_found;
  sections_.back().lines.push_back(std::move(heading));
}

void ProfileFile::AddOther(std::string_view bytes, std::string_view end) {
  std::vector<Line>& lines = sections_.back().lines;
  const LineKind kind = TrimBlanks(bytes).empty() ? LineKind::kBlank : LineKind::kOther;
  if (lines.empty() || lines.back().kind != kind) {
    lines.push_back({kind, std::string(bytes), "", "", std::string(end)});
    return;
  }
  lines.back().kept += lines.back().end;
  lines.back().kept += bytes;
  lines.back().end = end;
}

void ProfileFile::Register(std::string_view key, size_t position, Section& section) {
  section.keys.try_emplace(Fold(key), position);
  section.trimmed_keys.try_emplace(Fold(TrimBlanks(key)), position);
}

Result<ProfileFile> ProfileFile::Load(const std::filesystem::path& path) {
  std::error_code failure;
  if (std::filesystem::status(path, failure).type() == std::filesystem::file_type::not_found) {
    return ProfileFile();
  }
  const auto bytes = ReadFile(path, kLargestProfile);
  if (!bytes) return Forward(bytes);
  return Parse(*bytes);
}

std::optional<size_t> ProfileFile::FindSection(std::string_view section) const {
  const auto found = section_positions_.find(Fold(TrimBlanks(section)));
  if (found == section_positions_.end()) return std::nullopt;
  return found->second;
}

std::optional<ProfileFile::Place> ProfileFile::FindKey(std::string_view section,
                                                       std::string_view key) const {
  const auto number = FindSection(section);
  if (!number) return std::nullopt;
  const Section& found = sections_[*number];
  if (const auto line = found.keys.find(Fold(key)); line != found.keys.end()) {
    return Place{*number, line->second};
  }
  const auto line = found.trimmed_keys.find(Fold(TrimBlanks(key)));
  if (line == found.trimmed_keys.end()) return std::nullopt;
  return Place{*number, line->second};
}

std::string ProfileFile::Get(std::string_view section, std::string_view key,
                             std::string_view default_value) const {
  const auto place = FindKey(section, key);
  if (!place) return std::string(default_value);
  const std::string_view text = sections_[place->section].lines[place->line].text;
  return std::string(Unwrap(text.substr(text.find('=') + 1)));
}

bool ProfileFile::Has(std::string_view section, std::string_view key) const {
  return FindKey(section, key).has_value();
}

void ProfileFile::Set(std::string_view section, std::string_view key, std::string_view value) {
  const auto place = FindKey(section, key);
  if (!place) return AddKey(section, key, value);
  if (Get(section, key, "") == value) return;
  Line& line = sections_[place->section].lines[place->line];
  const std::string wrapped = Wrap(value);
  line.text.replace(line.text.find('=') + 1, std::string::npos, wrapped);
  // A line that was added has no bytes of its own before the "=".
  const size_t kept = line.kept.find('=');
  line.kept.resize(kept == std::string::npos ? 0 : kept + 1);
  line.added = kept == std::string::npos ? line.text : wrapped;
}

void ProfileFile::AddKey(std::string_view section, std::string_view key, std::string_view value) {
  if (!FindSection(section)) {
    EndLastLine(sections_.back(), sections_.back().lines.size());
    const std::string text = "[" + std::string(section) + "]";
    OpenSection(TrimBlanks(section), {LineKind::kHeading, "", text, text, line_end_});
  }
  Section& found = sections_[FindSection(section).value()];
  size_t position = found.lines.size();
  while (found.lines[position - 1].kind == LineKind::kBlank) --position;
  EndLastLine(found, position);
  // Only blank lines move, and nothing looks for those.
  Register(key, position, found);
  const std::string text = std::string(key) + "=" + Wrap(value);
  found.lines.insert(found.lines.begin() + static_cast<std::ptrdiff_t>(position),
                     Line{LineKind::kKey, "", text, text, line_end_});
}

/// Gives the line before the position an end where the file stopped without one.
void ProfileFile::EndLastLine(Section& section, size_t position) const {
  if (position > 0 && section.lines[position - 1].end.empty()) {
    section.lines[position - 1].end = line_end_;
  }
}

Status ProfileFile::AppendAdded(const Line& line, std::string& bytes) const {
  const std::string subject =
      "設定「" + std::string(TrimBlanks(KeyOf(line.text).value_or(line.text))) + "」の";
  if (line.added.find_first_of("\r\n") != std::string::npos) {
    return Fail(subject + "値は改行を含むため、設定ファイルに書けません。");
  }
  if (encoding_ == TextEncoding::kUtf8) {
    if (!IsValidUtf8(line.added)) {
      return Fail(subject + "値は読めない文字を含むため、設定ファイルに書けません。");
    }
    bytes += line.added;
    return {};
  }
  const auto encoded = EncodeCp932(line.added);
  if (!encoded) return Fail(subject + encoded.error().message);
  bytes += *encoded;
  return {};
}

Result<std::string> ProfileFile::Serialize() const {
  std::string bytes = byte_order_mark_;
  for (const Section& section : sections_) {
    for (const Line& line : section.lines) {
      bytes += line.kept;
      if (const Status added = AppendAdded(line, bytes); !added) return Forward(added);
      bytes += line.end;
    }
  }
  return bytes;
}

Status ProfileFile::Save(FileSystem& files, const std::filesystem::path& path) const {
  const auto bytes = Serialize();
  if (!bytes) return Forward(bytes);
  return ReplaceFile(files, path, *bytes, Readers::kOwner);
}

}  // namespace orin::base
