#pragma once

#include <string>
#include <string_view>

namespace orin::analysis {

/// How the name of an item is read, in hiragana, letters and digits as FoldName folds them:
/// "移動平均乖離率" gives "いどうへいきんかいりりつ", "第二銘柄ＲＳＩ" "だいにめいがらrsi" (in the
/// case FoldName gives). Put together from the readings of the words that the names consist of; a
/// character without a reading stands for itself.
std::string ReadingOfItem(std::string_view name);

}  // namespace orin::analysis
