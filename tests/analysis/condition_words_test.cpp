#include "analysis/condition_words.h"

#include <chrono>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "analysis/pasted_condition.h"
#include "analysis/program.h"

namespace orin::analysis {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Kinds = std::vector<WordKind>;

Kinds KindsOf(std::string_view line, LineEnd state = {}) {
  Kinds kinds;
  for (const MarkedWord& word : MarkWords(line, state)) kinds.push_back(word.kind);
  return kinds;
}

TEST(ConditionWords, EachPartOfALineHasItsKind) {
  using enum WordKind;
  const std::vector<std::pair<std::string_view, Kinds>> cases = {
      {"移動平均(25,-1) >= 10.5",
       {kItem, kParenthesis, kNumber, kParenthesis, kNumber, kParenthesis, kRelation, kNumber}},
      {"いどう(1) aND 終値",
       {kUnknownItem, kParenthesis, kNumber, kParenthesis, kUnknownItem, kUnknownItem}},
      {"1And終値(0)Or2",
       {kNumber, kLogic, kItem, kParenthesis, kNumber, kParenthesis, kLogic, kNumber}},
      {"買い値 * analysisdate1 Mod 2",
       {kDayKeyword, kArithmetic, kDayKeyword, kArithmetic, kNumber}},
      {"Ａｂｓ()? 1　<> 2",
       {kItem, kParenthesis, kParenthesis, kArithmetic, kNumber, kRelation, kNumber}},
      {"1 \"2 And 3\" = 4", {kNumber, kComment, kRelation, kNumber}},
      // A blank before the parenthesis makes another name of it, a comment does not.
      {"終値 (0", {kUnknownItem, kParenthesis, kNumber}},
      {"終値\"注釈\"\"\"(0", {kItem, kComment, kComment, kParenthesis, kNumber}},
  };
  for (const auto& [line, kinds] : cases) EXPECT_EQ(KindsOf(line), kinds) << line;
}

TEST(ConditionWords, PlacesAreCharactersAndDepthsAreThoseOfTheCodes) {
  LineEnd state;
  EXPECT_THAT(
      MarkWords("終値(0) * {1", state),
      ElementsAre(MarkedWord{0, 2, WordKind::kItem, 0}, MarkedWord{2, 1, WordKind::kParenthesis, 0},
                  MarkedWord{3, 1, WordKind::kNumber, 0},
                  MarkedWord{4, 1, WordKind::kParenthesis, 0},
                  MarkedWord{6, 1, WordKind::kArithmetic, 0}, MarkedWord{8, 1, WordKind::kBrace, 1},
                  MarkedWord{9, 1, WordKind::kNumber, 0}));
  EXPECT_EQ(state, (LineEnd{1, false}));
  // The next line goes on inside the brace; the fourth depth has no codes.
  const auto words = MarkWords("+ {{{ 2 - 3 }}}} + 4", state);
  EXPECT_EQ(words[0].depth, 1);
  LineEnd within{1, false};
  EXPECT_EQ(MarkWords("analysisdate1-2", within)[1].depth, 0) << "no code after a keyword";
  EXPECT_EQ(words[5], (MarkedWord{8, 1, WordKind::kArithmetic, 0}));
  EXPECT_EQ(words[11], (MarkedWord{17, 1, WordKind::kArithmetic, 0}));
  EXPECT_EQ(state, (LineEnd{0, false}));
  MarkWords("}}", state);
  EXPECT_EQ(state.depth, 0);
}

TEST(ConditionWords, CommentGoesOnInTheNextLine) {
  LineEnd state;
  EXPECT_EQ(MarkWords("1 \"ここから", state).size(), 2U);
  EXPECT_TRUE(state.in_comment);
  EXPECT_THAT(MarkWords("終値(0)", state), ElementsAre(MarkedWord{0, 5, WordKind::kComment, 0}));
  EXPECT_EQ(MarkWords("まで\" = 1", state).size(), 3U);
  EXPECT_FALSE(state.in_comment);
}

TEST(PastedCondition, TextFromElsewhereBecomesWhatTheLanguageWants) {
  const std::vector<std::pair<std::string_view, std::string_view>> cases = {
      {"移動平均（２５，－１）≧移動平均（７５，－１）", "移動平均(25,-1)>=移動平均(75,-1)"},
      {"｛終値(0)＋１｝＊２＞＝３", "{終値(0)+1}*2>=3"},
      {"株価収益率（ＰＥＲ）(0) < 10", "株価収益率(0) < 10"},
      {"rsi(14,0) < 30 Ａｎｄ ｶﾞｹ(0)", "ＲＳＩ(14,0) < 30 And ｶﾞｹ(0)"},
      {"７＼２ = 3 And 7￥2 = 3", "7\\2 = 3 And 7\\2 = 3"},
      {"先行スパン２(26,52,0) > 1", "先行スパン２(26,52,0) > 1"},
      {"終値(0)\t>\u00A01\r\nAnd\u2028終値(0)\x01 < 2", "終値(0) > 1\nAnd\n終値(0) < 2"},
      {"終値(0) \"（注釈）＞\" > 1", "終値(0) \"（注釈）＞\" > 1"},
      {"", ""},
  };
  for (const auto& [pasted, mended] : cases) {
    EXPECT_EQ(PastedCondition(pasted), mended);
    EXPECT_EQ(PastedCondition(mended), mended) << "what is right stays";
  }
  EXPECT_THAT(BuildProgram(PastedCondition("終値（０）＞移動平均（２５，０）"))->Notes(),
              IsEmpty());
}

TEST(PastedCondition, RubbishAndLongTextsAreTakenAsTheyAre) {
  EXPECT_EQ(PastedCondition("\xFF\xFE(((").substr(2), "(((");
  std::string text;
  while (text.size() < 300'000) text += "移動平均（２５，０） > いろは（１） ";
  for (int i = 0; i < 100'000; ++i) text += "（";
  const auto begin = std::chrono::steady_clock::now();
  const std::string mended = PastedCondition(text);
  EXPECT_EQ(mended.find("（"), std::string::npos);
  LineEnd state;
  EXPECT_GT(MarkWords(mended, state).size(), 50'000U);
  // A tenth of a second, but a minute where any step looks through the rest of the text.
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(5));
}

}  // namespace
}  // namespace orin::analysis
