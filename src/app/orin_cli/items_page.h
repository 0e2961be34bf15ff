#pragma once

#include <string>
#include <string_view>

namespace orin::app {

/// Every form of the items whose name contains the word, with its argument labels; empty where
/// there is none. An empty word lists all items.
std::string ItemsText(std::string_view word);

/// How many items there are of each heading and form, as lines of CSV with a heading.
std::string ItemCounts();

/// The page docs/items.md: names, labels, limits and needed bars of all items.
std::string ItemsPage();

}  // namespace orin::app
