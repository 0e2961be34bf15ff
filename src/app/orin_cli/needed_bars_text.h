#pragma once

#include <cstddef>
#include <string>

#include "analysis/items/item_catalogue.h"

namespace orin::app {

/// The item of a form with every argument at its least value.
analysis::BoundItem BoundItemOf(const analysis::ItemEntry& entry, analysis::SeriesForm form);

/// The name of a parameter in formulas: that of the table of indicators; "n" for the only parameter
/// of other items, none where they have several.
std::string LetterOf(const analysis::BoundItem& item, size_t parameter);

/// How many bars the item needs, as a formula of its parameters ("k + d"), found by asking it
/// with many arguments; "すべて", "引数による" where no such sum fits, or empty where it needs
/// none.
std::string NeededBarsText(const analysis::ItemEntry& entry);

}  // namespace orin::app
