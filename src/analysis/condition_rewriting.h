#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/result.h"

namespace orin::analysis {

/// The condition or operand as it was `days` days ago: every item call that takes an offset has
/// it moved back, weeks and months by as many weeks and months; items without an offset, comments
/// and all else stay. Fails with a sentence for a call whose offset is no number (a keyword) and
/// for a word that means nothing.
base::Result<std::string> ShiftedBack(std::string_view text, int32_t days);

/// A condition that is true where both are. And binds more closely than Or, so that each Or-term
/// of one is joined with each of the other; "A Or B" and "C" give "A And C Or B And C". Braces
/// that an Or parts are closed before it and opened again. An empty one leaves the other. Comments
/// are left out unless one is empty. Fails where the terms would be more than the compiler takes,
/// or one cannot be compiled.
base::Result<std::string> JoinedWithAnd(std::string_view a, std::string_view b);

/// A condition that is true where one of them is; likewise.
base::Result<std::string> JoinedWithOr(std::string_view a, std::string_view b);

}  // namespace orin::analysis
