#pragma once

#include <filesystem>
#include <string>

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

/// Copies the file as it is beside itself, under the name of SetAsidePathOf. Success where there
/// is no such file.
base::Status KeepCopyAside(const StoreLocation& location, const StoreFile& file,
                           base::FileSystem& files);

}  // namespace orin::store
