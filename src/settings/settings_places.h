#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "base/file_system.h"
#include "base/result.h"

namespace orin::settings {

/// What the defaults of path settings begin at: the program directory, and the directory of the
/// settings file.
struct SettingsPlaces {
  std::filesystem::path program_directory;
  std::filesystem::path settings_file;  // orin.ini, whether it exists or not
};

/// orinsim.ini in the program directory, where it is written.
std::filesystem::path SimulationFile(const SettingsPlaces& places);
/// Where it is read: while the program directory lacks the file, one beside an orin.ini elsewhere
/// counts.
std::filesystem::path SimulationFileInUse(const SettingsPlaces& places);
/// Copies such a file to the program directory and leaves it where it is. Gives a sentence about it
/// for the user, or nullopt where there is nothing to copy. Fails where the copy cannot be made.
base::Result<std::optional<std::string>> AdoptSimulationFile(base::FileSystem& files,
                                                             const SettingsPlaces& places);

/// What a default text is relative to. kNone: nothing, it stands as it is.
enum class DefaultBase { kNone, kProgram, kSettings };

/// The text of a default: the directory, a "\" and `relative`, as it would stand in the file.
std::string DefaultText(const SettingsPlaces& places, DefaultBase base, std::string_view relative);

/// The native path of a path setting; a relative one starts at the program directory.
std::filesystem::path NativeSetting(const SettingsPlaces& places, std::string_view setting);

}  // namespace orin::settings
