#include "base/profile_file.h"

#include <algorithm>
#include <system_error>

#include "base/text.h"

namespace orin::base {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

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
  if (bytes.starts_with(kByteOrderMark)) {
    profile.byte_order_mark_ = kByteOrderMark;
    bytes.remove_prefix(kByteOrderMark.size());
  }
  bool first = true;
  while (!bytes.empty()) {
    const size_t line_feed = bytes.find('\n');
    const bool ended = line_feed != std::string_view::npos;
    const size_t size = ended ? line_feed + 1 : bytes.size();
    size_t end = ended ? line_feed : size;
    while (ended && end > 0 && bytes[end - 1] == '\r') --end;
    profile.lines_.push_back(profile.ReadLine(bytes.substr(0, end), bytes.substr(end, size - end)));
    if (first && ended) profile.line_end_ = end < line_feed ? "\r\n" : "\n";
    first = false;
    bytes.remove_prefix(size);
  }
  return profile;
}

ProfileFile::Line ProfileFile::ReadLine(std::string_view bytes, std::string_view end) const {
  std::string text = encoding_ == TextEncoding::kCp932 ? DecodeCp932(bytes) : std::string(bytes);
  return Line{std::string(bytes), "", std::move(text), std::string(end)};
}

Result<ProfileFile> ProfileFile::Load(const std::filesystem::path& path) {
  std::error_code failure;
  if (std::filesystem::status(path, failure).type() == std::filesystem::file_type::not_found) {
    return ProfileFile();
  }
  const auto bytes = ReadFile(path);
  if (!bytes) return Forward(bytes);
  return Parse(*bytes);
}

std::optional<ProfileFile::Range> ProfileFile::FindSection(std::string_view section) const {
  const auto heads = [&](const Line& line) {
    const auto name = SectionName(line.text);
    return name && EqualsIgnoreCase(*name, TrimBlanks(section));
  };
  const auto heading = std::ranges::find_if(lines_, heads);
  if (heading == lines_.end()) return std::nullopt;
  const auto next = std::find_if(heading + 1, lines_.end(), [](const Line& line) {
    return SectionName(line.text).has_value();
  });
  return Range{static_cast<size_t>(heading - lines_.begin()) + 1,
               static_cast<size_t>(next - lines_.begin())};
}

const ProfileFile::Line* ProfileFile::FindKey(std::string_view section,
                                              std::string_view key) const {
  const auto range = FindSection(section);
  if (!range) return nullptr;
  const Line* without_blanks = nullptr;
  for (size_t i = range->first; i < range->last; ++i) {
    const auto found = KeyOf(lines_[i].text);
    if (!found) continue;
    if (EqualsIgnoreCase(*found, key)) return &lines_[i];
    if (without_blanks == nullptr && EqualsIgnoreCase(TrimBlanks(*found), TrimBlanks(key))) {
      without_blanks = &lines_[i];
    }
  }
  return without_blanks;
}

std::string ProfileFile::Get(std::string_view section, std::string_view key,
                             std::string_view default_value) const {
  const Line* line = FindKey(section, key);
  if (line == nullptr) return std::string(default_value);
  return std::string(Unwrap(std::string_view(line->text).substr(line->text.find('=') + 1)));
}

bool ProfileFile::Has(std::string_view section, std::string_view key) const {
  return FindKey(section, key) != nullptr;
}

void ProfileFile::Set(std::string_view section, std::string_view key, std::string_view value) {
  if (const Line* found = FindKey(section, key)) {
    if (Get(section, key, "") == value) return;
    Line& line = lines_[static_cast<size_t>(found - lines_.data())];
    const std::string wrapped = Wrap(value);
    line.text.replace(line.text.find('=') + 1, std::string::npos, wrapped);
    // A line that was added has no bytes of its own before the "=".
    const size_t kept = line.kept.find('=');
    line.kept.resize(kept == std::string::npos ? 0 : kept + 1);
    line.added = kept == std::string::npos ? line.text : wrapped;
    return;
  }
  auto range = FindSection(section);
  if (!range) {
    InsertLine(lines_.size(), "[" + std::string(section) + "]");
    range = Range{lines_.size(), lines_.size()};
  }
  size_t position = range->last;
  while (position > range->first && TrimBlanks(lines_[position - 1].text).empty()) --position;
  InsertLine(position, std::string(key) + "=" + Wrap(value));
}

void ProfileFile::InsertLine(size_t position, const std::string& text) {
  if (position > 0 && lines_[position - 1].end.empty()) lines_[position - 1].end = line_end_;
  lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(position),
                Line{"", text, text, line_end_});
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
  for (const Line& line : lines_) {
    bytes += line.kept;
    if (const Status added = AppendAdded(line, bytes); !added) return Forward(added);
    bytes += line.end;
  }
  return bytes;
}

Status ProfileFile::Save(FileSystem& files, const std::filesystem::path& path) const {
  const auto bytes = Serialize();
  if (!bytes) return Forward(bytes);
  return ReplaceFile(files, path, *bytes);
}

}  // namespace orin::base
