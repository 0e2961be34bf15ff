#pragma once

#include <set>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "base/date.h"
#include "base/file_system.h"
#include "base/result.h"
#include "store/store_location.h"

namespace orin::support {

/// Something that reads a store as the program does. Fails with the first sentence it gets.
struct StoreReader {
  std::string_view name;
  base::Status (*read)(const store::StoreLocation& location);
};
std::span<const StoreReader> StoreReaders();

/// Something that changes a store as the program does.
struct StoreWriter {
  std::string_view name;
  base::Status (*write)(const store::StoreLocation& location, base::FileSystem& files);
  /// Whether bars of stored days go to other places in the price files.
  bool moves_bars = false;
  /// The code of the stock whose bars it changes; empty where it changes no bars.
  std::string_view changed_code = {};
};
std::span<const StoreWriter> StoreWriters();

}  // namespace orin::support
