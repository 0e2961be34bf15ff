#pragma once

#include <filesystem>
#include <map>
#include <random>
#include <string>
#include <string_view>

#include "store/store_location.h"

namespace orin::support {

/// The files of a store by their paths below its root directory: "system/orin.sys".
using StoreImage = std::map<std::string, std::string>;

/// Where a store below `root` has its directories.
store::StoreLocation LocationBelow(const std::filesystem::path& root);
StoreImage ReadImage(const std::filesystem::path& root);
/// Leaves the image's files below `root` and no others.
void WriteImage(const StoreImage& image, const std::filesystem::path& root);

/// How far the newest price file is filled: an append goes into it, or begins the next one.
enum class CurrentFile { kHasRoom, kIsFull };

/// A sound store with a file of every family: "^DJI", "AAPL" (with a split), "BRK.B" and "KO" over
/// two price files. A failure throws.
StoreImage MakeSoundImage(CurrentFile current_file);

using Random = std::mt19937_64;

/// A number from 0 to limit - 1; 0 where the limit is 0.
size_t Below(size_t limit, Random& random);

/// Damages one file of the image as disks, crashes, copying and other programs do, and tells how:
/// "system/orin.sys: offset 12 set to 0".
std::string Damage(StoreImage& image, Random& random);

}  // namespace orin::support
