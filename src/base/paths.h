#pragma once

#include <filesystem>
#include <string_view>

namespace orin::base {

/// The native path of a path written in a setting: "\" and "/" both part directories, a relative
/// path starts at `base`, and each part that exists only with other upper and lower case is
/// taken as it exists. The rest of a path that does not exist is kept as written.
std::filesystem::path NativePath(std::string_view setting, const std::filesystem::path& base);

}  // namespace orin::base
