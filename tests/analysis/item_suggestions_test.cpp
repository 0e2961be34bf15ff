#include "analysis/items/item_suggestions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "analysis/items/item_readings.h"
#include "analysis/program.h"
#include "base/utf8.h"

namespace orin::analysis {
namespace {

bool HasKanji(std::string_view text) {
  while (!text.empty()) {
    const base::CodePoint point = base::FirstCodePoint(text);
    if (point.value >= 0x4E00 && point.value <= 0x9FFF) return true;
    text.remove_prefix(point.length);
  }
  return false;
}

TEST(ItemReadings, EveryNameOfEveryFormCanBeRead) {
  for (const ItemEntry& entry : ItemCatalogue()) {
    for (const SeriesForm form : kAllForms) {
      if (!entry.HasForm(form)) continue;
      const std::string name = ItemName(entry, form);
      EXPECT_FALSE(HasKanji(ReadingOfItem(name))) << name << " " << ReadingOfItem(name);
    }
  }
  EXPECT_EQ(ReadingOfItem("移動平均乖離率"), "いどうへいきんかいりりつ");
  EXPECT_EQ(ReadingOfItem("週間株価上昇週数"), "しゅうかんかぶかじょうしょうしゅうすう");
}

TEST(ItemSuggestions, BestOneComesFirstHoweverItIsTyped) {
  const std::vector<std::pair<std::string_view, std::string_view>> cases = {
      {"移動", "移動平均"},
      {"いどう", "移動平均"},
      {"ｲﾄﾞｳ", "移動平均"},
      {"イドウ", "移動平均"},
      {"rsi", "ＲＳＩ"},
      {"ＲＳ", "ＲＳＩ"},
      {"per", "株価収益率（ＰＥＲ）"},
      {"しゅうかんいどう", "週間移動平均"},
      {"おわりね", "終値"},
      {"乖離", "移動平均乖離率"},
      {"ﾎﾞﾘ", "ボリンジャーバンド"},
      {"だいにめいがらお", "第二銘柄終値"},
      {"週間いどう", "週間移動平均"},
      {"さいこうち", "最高値"},
  };
  for (const auto& [word, name] : cases) {
    const auto found = SuggestItems(word, 40);
    ASSERT_FALSE(found.empty()) << word;
    EXPECT_EQ(found[0].name, name) << word;
  }
  EXPECT_TRUE(SuggestItems("", 40).empty());
  EXPECT_TRUE(SuggestItems("ぬぬぬ", 40).empty());
  EXPECT_EQ(SuggestItems("終値", 3).size(), 3U);
  EXPECT_EQ(SuggestItems("移動平均", 1)[0].call, "移動平均(25,0)");
  EXPECT_EQ(SuggestItems("移動平均", 1)[0].labels, "移動平均日数、何日前(前日のとき－１を指定）");
}

TEST(ItemSuggestions, EveryUsualCallCompilesWithoutANote) {
  for (const ItemEntry& entry : ItemCatalogue()) {
    for (const SeriesForm form : kAllForms) {
      if (!entry.HasForm(form)) continue;
      const auto arguments = UsualArguments(entry, form);
      std::string call = CallText(entry, form, arguments, NewestOffset(entry, form, arguments));
      if (call.ends_with("? ")) call += "2";
      const auto program = BuildProgram(call);
      ASSERT_TRUE(program) << call;
      for (const Note& note : program->Notes()) ADD_FAILURE() << call << ": " << note.message;
    }
  }
}

TEST(ItemSuggestions, WordUnderWayEndsAtTheCursor) {
  const std::vector<std::pair<std::string_view, size_t>> cases = {
      {"いどう", 3},    {"1 > 終", 1},      {"移動平均(", 0},  {"移動平均(25", 0},
      {"1And終値", 2},  {"1 And", 0},       {"{ＲＳ", 2},      {"終値 ", 0},
      {"\"注釈 終", 0}, {"\"注釈\" 終", 1}, {"第二銘柄終", 5}, {"", 0},
  };
  for (const auto& [before, count] : cases) EXPECT_EQ(WordUnderWay(before), count) << before;
}

}  // namespace
}  // namespace orin::analysis
