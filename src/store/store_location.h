#pragma once

#include <filesystem>
#include <map>
#include <string>

namespace orin::store {

/// Where the store's files are. Both directories may be the same.
struct StoreLocation {
  std::filesystem::path system_directory;  // orin.sys and its companions, 株式分割.txt
  std::filesystem::path data_directory;    // price files
  /// The names of files that lie there with other upper and lower case, by their usual names:
  /// "orin.sys" -> "ORIN.SYS". Filled by WithFoundNames; empty in most stores.
  std::map<std::string, std::string> found_names = {};
};

}  // namespace orin::store
