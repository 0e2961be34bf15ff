#include "analysis/operators.h"

#include <array>
#include <gtest/gtest.h>
#include <limits>
#include <string>

#include "analysis/tokenizer.h"

namespace orin::analysis {
namespace {

using base::Currency;

constexpr Currency kLeast = Currency::FromRaw(-std::numeric_limits<int64_t>::max());
constexpr Currency kGreatest = Currency::FromRaw(std::numeric_limits<int64_t>::max());

TEST(ApplyOperator, EachCodeDoesWhatItsOperatorDoesAtAnyDepth) {
  struct Codes {
    std::array<std::string_view, 6> codes;
    Value nine_by_four;
  };
  const auto value = [](int32_t number) { return Value::Of(Currency::FromInt(number)); };
  const Codes table[] = {
      {{"?", "P", "Q", "R"}, Value::Of(Currency::FromRaw(-7568))},  // Sin(4)
      {{"^", "B", "C", "D"}, value(6561)},
      {{"*", "K", "L", "N"}, value(36)},
      {{"/", "W", "X", "Y"}, Value::Of(Currency::FromRaw(22500))},
      {{"\\", "E", "F", "G"}, value(2)},
      {{"mod", "MOD", "Mod", "mOD", "mOd", "moD"}, value(1)},
      {{"+", "T", "U", "V"}, value(13)},
      {{"-", "H", "I", "J"}, value(5)},
  };
  for (const Codes& row : table) {
    for (const std::string_view code : row.codes) {
      if (code.empty()) continue;
      EXPECT_EQ(ApplyOperator(Currency::FromInt(9), code, Currency::FromInt(4)), row.nine_by_four)
          << code;
    }
  }
}

TEST(ApplyOperator, UnknownCodesFailWithTheErrorValue) {
  for (const std::string_view code : {"", "M", "A", "S", "Z", "++", "MoD", "MOd", "mo", "<", "{"}) {
    const Value value = ApplyOperator(Currency::FromInt(9), code, Currency::FromInt(4));
    EXPECT_FALSE(value.ok) << code;
    EXPECT_EQ(value.value, Currency::FromInt(-999)) << code;
  }
}

TEST(ApplyOperator, EndsOfTheRangeFailInsteadOfWrapping) {
  const Currency minus_one = Currency::FromInt(-1);
  const Currency one_step = Currency::FromRaw(1);
  EXPECT_FALSE(ApplyOperator(kGreatest, "+", one_step).ok);
  EXPECT_FALSE(ApplyOperator(kLeast, "-", one_step).ok);
  EXPECT_FALSE(ApplyOperator(kLeast, "*", Currency::FromInt(2)).ok);
  EXPECT_EQ(ApplyOperator(kLeast, "*", minus_one), Value::Of(kGreatest));
  EXPECT_FALSE(ApplyOperator(kLeast, "/", minus_one).ok);
  EXPECT_FALSE(ApplyOperator(kLeast, "\\", minus_one).ok);
  EXPECT_FALSE(ApplyOperator(kLeast, "Mod", minus_one).ok);
  EXPECT_FALSE(ApplyOperator(kGreatest, "^", Currency::FromInt(2)).ok);
  EXPECT_FALSE(ApplyOperator(kLeast, "?", kLeast).ok);
  EXPECT_EQ(ApplyOperator(Currency::FromInt(1), "?", kLeast), Value::Of(kGreatest));
  EXPECT_EQ(ApplyOperator(kLeast, "*", Currency::FromInt(1)), Value::Of(kLeast));
}

TEST(CompareValues, IsExactOnTheLastDecimal) {
  struct Row {
    std::string_view relation;
    bool less, equal, greater;
  };
  constexpr Row kRows[] = {
      {"=", false, true, false},   {"<>", true, false, true}, {"<", true, false, false},
      {"<=", true, true, false},   {">", false, false, true}, {">=", false, true, true},
      {"=<", false, false, false}, {"", false, false, false},
  };
  for (const Row& row : kRows) {
    const Currency base = Currency::FromRaw((int64_t{1} << 60) + 1);
    const Currency above = Currency::FromRaw(base.Raw() + 1);
    EXPECT_EQ(CompareValues(base, row.relation, above), row.less) << row.relation;
    EXPECT_EQ(CompareValues(base, row.relation, base), row.equal) << row.relation;
    EXPECT_EQ(CompareValues(above, row.relation, base), row.greater) << row.relation;
    EXPECT_EQ(CompareValues(kLeast, row.relation, kGreatest), row.less) << row.relation;
  }
}

// Tokens joined by "|", signs marked by "s", operators by their kind and depth.
std::string TokenText(std::string_view text) {
  std::string joined;
  const auto tokens = TokenizeOperand(text);
  for (const Token& token : tokens) {
    if (&token != &tokens.front()) joined += '|';
    if (token.kind == Token::Kind::kSign) joined += 's';
    joined += token.text;
    if (token.kind != Token::Kind::kOperand) joined += std::to_string(token.code.depth);
  }
  return joined;
}

TEST(TokenizeOperand, GivesOperandsAndCodesInTextOrder) {
  constexpr std::array<std::array<std::string_view, 2>, 18> kCases = {{
      {"終値(0) * 100 / 終値(-1) - 100", "終値(0)|*0|100|/0|終値(-1)|-0|100"},
      {"1T2U3V4", "1|T1|2|U2|3|V3|4"},
      {"Ｓｑｒ()P 終値(0)", "Ｓｑｒ()|P1|終値(0)"},
      {"a mOD b mOd c moD d Mod e", "a|mOD1|b|mOd2|c|moD3|d|Mod0|e"},
      {"7mod5MOD3", "7|mod0|5|MOD0|3"},
      {"移動平均(25, H1)K2", "移動平均(25, H1)|K1|2"},
      {"f((1+2)*3)+4", "f((1+2)*3)|+0|4"},
      {"f(1+2", "f(1+2"},
      {"a)+1", "a)|+0|1"},
      {"-1", "s-0|1"},
      {"2 H J I3", "2|H1|sJ3|sI2|3"},
      {"2 + + 3", "2|+0||+0|3"},
      {"+", "|+0|"},
      {"", ""},
      {"analysisdate1-1-2", "analysisdate1-1|-0|2"},
      {"buyselltime-1Hbuyselltime -1", "buyselltime-1|H1|buyselltime|-0|1"},
      {"analysisdate8-1", "analysisdate8|-0|1"},
      {"\u3000 a\u3000b \u3000+ c ", "a\u3000b|+0|c"},
  }};
  for (const auto& [text, expected] : kCases) EXPECT_EQ(TokenText(text), expected) << text;
}

TEST(TokenizeOperand, CountsPlacesInCharacters) {
  const auto tokens = TokenizeOperand(" 終値(0) + - 始値(0) *");
  ASSERT_EQ(tokens.size(), 6U);
  constexpr size_t kPlaces[] = {2, 8, 10, 12, 18, 18};
  for (size_t i = 0; i < tokens.size(); ++i) EXPECT_EQ(tokens[i].position, kPlaces[i]) << i;
}

}  // namespace
}  // namespace orin::analysis
