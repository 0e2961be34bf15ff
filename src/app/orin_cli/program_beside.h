#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"

namespace orin::app {

/// Runs the program `name` that lies in the directory of this one, with `input` as its standard
/// input, until it ends. What it tells when it ends with the status of a failed job is the sentence
/// of the failure. Where it is missing, cannot start, or ends otherwise than with 0 or that status,
/// the sentence begins with `what` it is.
base::Status RunProgramBeside(const std::string& what, const std::string& name,
                              std::vector<std::string> arguments, std::string_view input);

}  // namespace orin::app
