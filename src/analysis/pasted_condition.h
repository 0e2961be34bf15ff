#pragma once

#include <string>
#include <string_view>

namespace orin::analysis {

/// A condition text from elsewhere as the language wants it: tabs become blanks, every kind of
/// line break "\n", other control characters vanish; outside of comments and item names
/// full-width brackets, commas, operators and the digits and signs of arguments become half-width
/// ones ("（２５，－１）", "≧" and "＞＝" as ">="), a name with its abbreviation
/// ("株価収益率（ＰＥＲ）") becomes the name, and a name in another width or case the catalogue's.
/// Full-width "And" and "Or" in the three forms become the keywords. A text that needs none of it
/// comes back unchanged.
std::string PastedCondition(std::string_view utf8);

}  // namespace orin::analysis
