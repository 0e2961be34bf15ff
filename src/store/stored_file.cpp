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

base::Status KeepCopyAside(const StoreLocation& location, const StoreFile& file,
                           base::FileSystem& files) {
  if (!Exists(location, file)) return {};
  const auto bytes = base::ReadFile(PathOf(location, file));
  if (!bytes) return base::Forward(bytes);
  // Without a staged file: a copy cut short by a crash is made again, as the original is still
  // there.
  const auto copy = files.Create(SetAsidePathOf(location, file));
  if (!copy) return base::Forward(copy);
  if (const base::Status written = (*copy)->WriteAt(0, *bytes); !written) return written;
  if (const base::Status synced = (*copy)->Sync(); !synced) return synced;
  return files.SyncDirectory(DirectoryOf(location, file));
}

}  // namespace orin::store
