#include "support/test_files.h"

#include <vector>

namespace orin::support {

// The source tree's place is compiled into this file alone, so that a compiler cache serves every
// other object file of a clone that lies elsewhere.

std::filesystem::path TestData(std::string_view name) {
  return std::filesystem::path(ORIN_SOURCE_TREE) / "tests/data" / name;
}

std::filesystem::path DemoFile(std::string_view name) {
  return std::filesystem::path(ORIN_SOURCE_TREE) / "demo" / name;
}

std::filesystem::path ManualFile(std::string_view name) {
  return std::filesystem::path(ORIN_SOURCE_TREE) / "docs/manual" / name;
}

std::string UpperCase(std::string name) {
  for (char& c : name) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  }
  return name;
}

void RenameToUpperCase(const std::filesystem::path& directory) {
  std::vector<std::filesystem::path> paths;
  for (const auto& entry : std::filesystem::directory_iterator(directory)) {
    if (entry.is_regular_file()) paths.push_back(entry.path());
  }
  for (const auto& path : paths) {
    std::filesystem::rename(path, directory / UpperCase(path.filename().string()));
  }
}

}  // namespace orin::support
