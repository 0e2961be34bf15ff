#include "base/paths.h"

#include <string>
#include <system_error>

#include "base/text.h"

namespace orin::base {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kSeparators = "/\\";

/// Of several names that differ only in case, the first in byte order, so that every run takes
/// the same one.
std::string ExistingName(const fs::path& directory, std::string_view part) {
  std::error_code failure;
  if (fs::exists(fs::symlink_status(directory / part, failure))) return std::string(part);
  std::string found;
  fs::directory_iterator entry(directory, failure);
  while (!failure && entry != fs::directory_iterator()) {
    std::string name = entry->path().filename().string();
    if (EqualsIgnoreCase(name, part) && (found.empty() || name < found)) found = std::move(name);
    entry.increment(failure);
  }
  return found.empty() ? std::string(part) : found;
}

fs::path WithoutTrailingSeparator(const fs::path& directory) {
  return directory.has_filename() ? directory : directory.parent_path();
}

fs::path StartOf(std::string_view setting, const fs::path& base) {
  if (!setting.empty() && kSeparators.find(setting.front()) != std::string_view::npos) return "/";
  std::error_code failure;
  const fs::path absolute = fs::absolute(base.empty() ? "." : base, failure);
  return WithoutTrailingSeparator((failure ? base : absolute).lexically_normal());
}

}  // namespace

fs::path NativePath(std::string_view setting, const fs::path& base) {
  fs::path path = StartOf(setting, base);
  while (!setting.empty()) {
    const size_t end = setting.find_first_of(kSeparators);
    const std::string_view part = setting.substr(0, end);
    setting.remove_prefix(end == std::string_view::npos ? setting.size() : end + 1);
    if (part.empty() || part == ".") continue;
    path = part == ".." ? path.parent_path() : path / ExistingName(path, part);
  }
  return path;
}

}  // namespace orin::base
