#pragma once

#include <filesystem>
#include <string_view>

#include "base/result.h"

namespace orin::base {

/// The failure of a system call on `path`: "「<path>」<what>（<reason>）。", where `what` is the
/// predicate of the sentence, such as "を開けません", and the reason is that of `number`, an errno
/// value, in Japanese.
tl::unexpected<Error> FailSystemCall(const std::filesystem::path& path, std::string_view what,
                                     int number);

}  // namespace orin::base
