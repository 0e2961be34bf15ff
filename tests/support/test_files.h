#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

namespace orin::support {

/// The bytes of a file; empty where there is none.
inline std::string Bytes(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

/// A file of tests/data, "items/names.txt" say.
std::filesystem::path TestData(std::string_view name);
/// A file of demo/, of docs/manual/.
std::filesystem::path DemoFile(std::string_view name);
std::filesystem::path ManualFile(std::string_view name);

/// Makes the file, and its directory, on the real disk.
inline void PutFile(const std::filesystem::path& path, std::string_view bytes) {
  std::filesystem::create_directories(path.parent_path());
  std::ofstream(path, std::ios::binary) << bytes;
}

/// ASCII letters alone.
std::string UpperCase(std::string name);
/// Gives every file of the directory, none below it, its name in upper case.
void RenameToUpperCase(const std::filesystem::path& directory);

}  // namespace orin::support
