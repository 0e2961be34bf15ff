#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/items/item_catalogue.h"

namespace orin::analysis {

/// Arguments that an investor would begin with, as 25 for 移動平均 and 26 for 週間移動平均, the
/// offset not among them. Within the item's limits; the call has a value where there is enough
/// history.
std::array<int32_t, kMaximumItemArguments> UsualArguments(const ItemEntry& entry, SeriesForm form);

/// The latest offset at which a call with these arguments can have a value: 0, but for items that
/// look ahead from the bar named.
int32_t NewestOffset(const ItemEntry& entry, SeriesForm form,
                     const std::array<int32_t, kMaximumItemArguments>& arguments);

/// The text of a call with these arguments: "移動平均(25,0)", "Ａｂｓ()? ", "買い値(0)".
std::string CallText(const ItemEntry& entry, SeriesForm form,
                     const std::array<int32_t, kMaximumItemArguments>& arguments, int32_t offset);

/// An item that what was typed may be the beginning of.
struct ItemSuggestion {
  FoundItem item;
  std::string name;    // as shown: "株価収益率（ＰＥＲ）"
  std::string labels;  // of the arguments, parted by "、"
  std::string call;    // with the usual arguments
};

/// At most `most` items whose name, shown name or reading contains the word, whatever its width,
/// case and kind of kana and whichever part of it is kanji already; those that begin with it first,
/// then in the order of the catalogue, the daily form before the others. None for a word without
/// characters.
std::vector<ItemSuggestion> SuggestItems(std::string_view word, size_t most);

/// How many characters at the end of `before`, the text of a line before the cursor, belong to
/// the word under way: up to a blank, bracket, comma, operator or quote. 0 within a comment and
/// for what is a number or a keyword.
size_t WordUnderWay(std::string_view before);

}  // namespace orin::analysis
