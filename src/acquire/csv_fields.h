#pragma once

#include <cstddef>
#include <span>
#include <string_view>

namespace orin::acquire {

/// The fields of a CSV line, without blanks and then one pair of double quotes around them, into
/// `fields`. Gives the number of fields, those beyond `fields` counted but not kept. Empty fields
/// at the end beyond the last of `fields` do not count.
size_t SplitFields(std::string_view line, std::span<std::string_view> fields);

/// Whether `line` is the heading whose columns `names` are, quoted or not.
bool IsHeading(std::string_view line, std::span<const std::string_view> names);

}  // namespace orin::acquire
