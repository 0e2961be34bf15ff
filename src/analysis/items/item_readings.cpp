#include "analysis/items/item_readings.h"

#include <array>

#include "analysis/items/name_folding.h"
#include "base/utf8.h"

namespace orin::analysis {

namespace {

struct Reading {
  std::string_view word;
  std::string_view reading;
};

/// The words of the names; a longer one is taken before a shorter one.
constexpr std::array kReadings = std::to_array<Reading>({
    {"週間", "しゅうかん"},
    {"月間", "げっかん"},
    {"週中", "しゅうちゅう"},
    {"月中", "げっちゅう"},
    {"第二銘柄", "だいにめいがら"},
    {"始値", "はじめね"},
    {"高値", "たかね"},
    {"安値", "やすね"},
    {"終値", "おわりね"},
    {"最高値", "さいたかね"},
    {"最安値", "さいやすね"},
    {"最大値", "さいだいち"},
    {"最小値", "さいしょうち"},
    {"出来高", "できだか"},
    {"前日比", "ぜんじつひ"},
    {"前週比", "ぜんしゅうひ"},
    {"前月比", "ぜんげつひ"},
    {"比率", "ひりつ"},
    {"合計", "ごうけい"},
    {"移動平均", "いどうへいきん"},
    {"平均株価", "へいきんかぶか"},
    {"乖離率", "かいりりつ"},
    {"かぎ足値", "かぎあしち"},
    {"かぎ足", "かぎあし"},
    {"転換数", "てんかんすう"},
    {"基準値", "きじゅんち"},
    {"転換値", "てんかんち"},
    {"先行", "せんこう"},
    {"遅行", "ちこう"},
    {"株価", "かぶか"},
    {"上昇日", "じょうしょうび"},
    {"下降日", "かこうび"},
    {"上昇週", "じょうしょうしゅう"},
    {"下降週", "かこうしゅう"},
    {"上昇月", "じょうしょうつき"},
    {"下降月", "かこうつき"},
    {"上昇日数", "じょうしょうにっすう"},
    {"下降日数", "かこうにっすう"},
    {"上昇週数", "じょうしょうしゅうすう"},
    {"下降週数", "かこうしゅうすう"},
    {"上昇月数", "じょうしょうつきすう"},
    {"下降月数", "かこうつきすう"},
    {"上昇幅", "じょうしょうはば"},
    {"下降幅", "かこうはば"},
    {"経過日数", "けいかにっすう"},
    {"経過週数", "けいかしゅうすう"},
    {"経過月数", "けいかつきすう"},
    {"強", "きょう"},
    {"弱", "じゃく"},
    {"人気", "にんき"},
    {"売り残", "うりざん"},
    {"買い残", "かいざん"},
    {"買い値", "かいね"},
    {"売り値", "うりね"},
    {"買い", "かい"},
    {"売り", "うり"},
    {"日付", "ひづけ"},
    {"銘柄", "めいがら"},
    {"時価総額", "じかそうがく"},
    {"発行済み株式数", "はっこうずみかぶしきすう"},
    {"発行済株式数", "はっこうずみかぶしきすう"},
    {"配当利回り", "はいとうりまわり"},
    {"一株", "ひとかぶ"},
    {"配当", "はいとう"},
    {"収益率", "しゅうえきりつ"},
    {"利益率", "りえきりつ"},
    {"利益", "りえき"},
    {"純資産倍率", "じゅんしさんばいりつ"},
    {"株主資本", "かぶぬししほん"},
    {"総資産", "そうしさん"},
    {"決算月", "けっさんづき"},
    {"売買単位", "ばいばいたんい"},
    {"単独", "たんどく"},
    {"連結", "れんけつ"},
    {"売上高", "うりあげだか"},
    {"営業", "えいぎょう"},
    {"経常", "けいじょう"},
    {"当期", "とうき"},
    {"1株当たり", "1かぶあたり"},
    {"資本金", "しほんきん"},
    {"有利子負債", "ゆうりしふさい"},
    {"繰越損益", "くりこしそんえき"},
    {"含み損益", "ふくみそんえき"},
    {"順位", "じゅんい"},
});

const Reading* LongestAt(std::string_view text) {
  const Reading* longest = nullptr;
  for (const Reading& reading : kReadings) {
    const bool is_longer = longest == nullptr || reading.word.size() > longest->word.size();
    if (is_longer && text.starts_with(reading.word)) longest = &reading;
  }
  return longest;
}

}  // namespace

std::string ReadingOfItem(std::string_view name) {
  std::string text;
  while (!name.empty()) {
    const Reading* reading = LongestAt(name);
    const size_t length =
        reading != nullptr ? reading->word.size() : base::FirstCodePoint(name).length;
    text += reading != nullptr ? reading->reading : name.substr(0, length);
    name.remove_prefix(length);
  }
  return FoldName(text);
}

}  // namespace orin::analysis
