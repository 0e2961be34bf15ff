#pragma once

#include <filesystem>

namespace orin::store {

/// Where the store's files are. Both may be the same directory.
struct StoreLocation {
  std::filesystem::path system_directory;  // orin.sys and its companions, 株式分割.txt
  std::filesystem::path data_directory;    // price files
};

}  // namespace orin::store
