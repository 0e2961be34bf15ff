#include "analysis/condition.h"

#include <ctime>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>
#include <string>

#include "analysis/splitters.h"
#include "text_cases.h"

namespace orin::analysis {
namespace {

std::string TableText(const CompiledCondition& condition) {
  std::string text;
  for (const OrTerm& or_term : condition.or_terms) {
    if (&or_term != &condition.or_terms.front()) text += " | ";
    for (const AndTerm& and_term : or_term) {
      if (&and_term != &or_term.front()) text += " & ";
      for (const Piece& piece : and_term) text += "「" + piece.text + "」";
    }
  }
  return text;
}

std::string Outcome(std::string_view text) {
  const auto compiled = CompileCondition(text);
  return compiled ? "" : std::to_string(compiled.error().position) + " " + compiled.error().message;
}

TEST(CompileCondition, FillsTheTableAsWritten) {
  const auto cases = ReadTextCases("compile_cases.txt");
  ASSERT_GT(cases.size(), 80U);
  for (const TextCase& each : cases) {
    const auto compiled = CompileCondition(each.text);
    ASSERT_TRUE(compiled) << each.where;
    EXPECT_EQ(TableText(*compiled), each.expected) << each.where;
  }
}

TEST(CompileCondition, AcceptsEachLimitAndRefusesOneMore) {
  struct Limit {
    std::string text;
    std::string_view more;
    std::string_view expected;  // position and first words of the failure
  };
  const Limit limits[] = {
      {Repeated("\"", 999), "\"", "1000 注釈を囲む"},
      {Repeated("{", 9999), "{", "10000 「{」が多すぎます"},
      {Repeated("}", 9999), "}", "10000 「}」が多すぎます"},
      {"1=1" + Repeated("Or1=1", 99), "Or1=1", "499 Or でつないだ"},
      {"1=1" + Repeated("And1=1", 99), "And1=1", "598 And でつないだ"},
      {"1" + Repeated("<1", 4), "<", "10 一つの条件に書ける比較演算子"},
      {"1" + Repeated(" ", 999), " ", "1001 空白が多すぎます"},
      {"終" + Repeated("\u3000", 999), "\u3000", "1001 空白が多すぎます"},
  };
  for (const Limit& limit : limits) {
    EXPECT_EQ(Outcome(limit.text), "") << limit.expected;
    EXPECT_THAT(Outcome(limit.text + std::string(limit.more)), testing::StartsWith(limit.expected));
  }
}

TEST(CompileCondition, LimitsHoldForEachTermByItself) {
  const std::string hundred_and = "1=1" + Repeated("And1=1", 99);
  EXPECT_EQ(Outcome(hundred_and + "Or" + hundred_and), "");
  EXPECT_THAT(Outcome("1=1Or" + hundred_and + "And1=1"), testing::StartsWith("603 And"));
  const std::string blanks = "1" + Repeated(" ", 999);
  EXPECT_EQ(Outcome(blanks + "=" + blanks), "");
}

TEST(CompileCondition, PiecesKnowWhereTheirCharactersWereTyped) {
  const auto compiled = CompileCondition("\"注\"{終値(0)}  >  1 And {始値(0)}< 2");
  ASSERT_TRUE(compiled);
  ASSERT_EQ(compiled->or_terms[0].size(), 2U);
  const AndTerm& first = compiled->or_terms[0][0];
  EXPECT_THAT(first[0].positions, testing::ElementsAre(5, 6, 7, 8, 9));
  EXPECT_THAT(first[1].positions, testing::ElementsAre(13));
  EXPECT_THAT(first[2].positions, testing::ElementsAre(16));
  EXPECT_THAT(compiled->or_terms[0][1][0].positions, testing::ElementsAre(23, 24, 25, 26, 27));
}

TEST(CompileCondition, OnlyOneBareOperandIsAValue) {
  EXPECT_TRUE(CompileCondition("終値(0) * 2")->IsValue());
  EXPECT_TRUE(CompileCondition("")->IsValue());
  EXPECT_FALSE(CompileCondition("終値(0) > 2")->IsValue());
  EXPECT_FALSE(CompileCondition("終値(0) And 終値(0)")->IsValue());
  EXPECT_FALSE(CompileCondition("終値(0) Or 終値(0)")->IsValue());
}

TEST(CompileCondition, TakesLinearTime) {
  constexpr size_t kMegabyte = size_t{1} << 20;
  const std::string_view repeated[] = {"1+", "m-", "移動平均(25,-1)*", "aND", "\x80"};
  for (const std::string_view text : repeated) {
    const std::clock_t start = std::clock();
    const std::string condition = Repeated(text, kMegabyte / text.size());
    static_cast<void>(CompileCondition("{" + condition));
    const double seconds = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
    EXPECT_LT(seconds, 30.0) << text;
  }
}

TEST(CompileCondition, ReadsBytesThatAreNoTextAsReplacementCharacters) {
  const auto compiled = CompileCondition("\x8A\xE3\x81 + \xFF > 1");
  ASSERT_TRUE(compiled);
  EXPECT_EQ(TableText(*compiled), "「\uFFFD\uFFFD\uFFFD + \uFFFD」「>」「1」");
  EXPECT_THAT(compiled->or_terms[0][0][0].positions, testing::ElementsAre(1, 2, 3, 4, 5, 6, 7));
}

TEST(CompileCondition, SurvivesRandomBytes) {
  constexpr std::string_view kAlphabet =
      "{}{}\"()<>=+-*/\\^?,. \xE3\x80\x80\xE7mMoOdDaAnNrR019HJT\xFF";
  std::mt19937 random(3);
  for (int round = 0; round < 3000; ++round) {
    std::string text(random() % 60, ' ');
    for (char& c : text) c = kAlphabet[random() % kAlphabet.size()];
    const auto compiled = CompileCondition(text);
    if (!compiled) continue;
    for (const OrTerm& or_term : compiled->or_terms) {
      for (const AndTerm& and_term : or_term) {
        EXPECT_EQ(and_term.size() % 2, 1U) << text;
        for (const Piece& piece : and_term) EXPECT_LE(piece.positions.size(), piece.text.size());
      }
    }
  }
}

TEST(FindNot, FindsTheThreeFormsOnly) {
  EXPECT_EQ(FindNot("a > 1 And not b"), 10U);
  EXPECT_EQ(FindNot("Not b"), 0U);
  EXPECT_EQ(FindNot("値NOT"), 3U);
  EXPECT_EQ(FindNot("nOT noT NOt no t"), std::string_view::npos);
}

}  // namespace
}  // namespace orin::analysis
