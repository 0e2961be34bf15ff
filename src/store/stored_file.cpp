#include "store/stored_file.h"

namespace orin::store {

bool Exists(const std::filesystem::path& path) {
  std::error_code failure;
  return std::filesystem::status(path, failure).type() != std::filesystem::file_type::not_found;
}

bool Exists(const StoreLocation& location, const StoreFile& file) {
  return Exists(PathOf(location, file));
}

base::Result<std::string> ReadIfThere(const StoreLocation& location, const StoreFile& file) {
  const std::filesystem::path path = PathOf(location, file);
  if (!Exists(path)) return std::string();
  return base::ReadFile(path);
}

std::vector<std::filesystem::path> TakenAsidePaths(const std::filesystem::path& aside) {
  std::vector<std::filesystem::path> taken;
  std::filesystem::path path = aside;
  for (int number = 2; Exists(path); ++number) {
    taken.push_back(path);
    path = aside;
    path += std::to_string(number);
  }
  return taken;
}

std::filesystem::path FreeAsidePath(const std::filesystem::path& aside) {
  const size_t taken = TakenAsidePaths(aside).size();
  std::filesystem::path path = aside;
  if (taken > 0) path += std::to_string(taken + 1);
  return path;
}

base::Result<std::filesystem::path> KeepAside(base::FileSystem& files,
                                              const std::filesystem::path& aside,
                                              std::string_view bytes) {
  for (const std::filesystem::path& taken : TakenAsidePaths(aside)) {
    const auto kept = base::ReadFile(taken);
    if (kept && *kept == bytes) return taken;
  }
  std::filesystem::path path = FreeAsidePath(aside);
  const base::Status kept = base::ReplaceFile(files, path, bytes);
  if (!kept) return base::Forward(kept);
  return path;
}

base::Result<std::filesystem::path> KeepCopyAside(const StoreLocation& location,
                                                  const StoreFile& file, base::FileSystem& files) {
  if (!Exists(location, file)) return std::filesystem::path();
  const auto bytes = base::ReadFile(PathOf(location, file));
  if (!bytes) return base::Forward(bytes);
  return KeepAside(files, SetAsidePathOf(location, file), *bytes);
}

}  // namespace orin::store
