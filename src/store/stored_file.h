#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "base/file_system.h"
#include "base/result.h"
#include "store/file_names.h"

namespace orin::store {

/// False only where there surely is no such file: one that cannot be looked at is taken for
/// present, so that reading it tells the reason and nothing is written in its place.
bool Exists(const std::filesystem::path& path);
bool Exists(const StoreLocation& location, const StoreFile& file);

/// The bytes of a file; empty where there is no such file.
base::Result<std::string> ReadIfThere(const StoreLocation& location, const StoreFile& file);

// Damaged content is kept for the user under a name that ends with ".bad". Where that name holds
// other content already, the name gets a number: ".bad2", ".bad3", ...

/// `aside` or, where there is such a file, the first free name with a number behind it.
std::filesystem::path FreeAsidePath(const std::filesystem::path& aside);
/// The files that FreeAsidePath has passed over.
std::vector<std::filesystem::path> TakenAsidePaths(const std::filesystem::path& aside);
/// Keeps `bytes` under a name of `aside` and returns it; a file that holds them already will do.
base::Result<std::filesystem::path> KeepAside(base::FileSystem& files,
                                              const std::filesystem::path& aside,
                                              std::string_view bytes);
/// Copies the file as it is beside itself and returns the name of the copy, which begins as
/// SetAsidePathOf. Where there is no such file, the name is empty.
base::Result<std::filesystem::path> KeepCopyAside(const StoreLocation& location,
                                                  const StoreFile& file, base::FileSystem& files);

}  // namespace orin::store
