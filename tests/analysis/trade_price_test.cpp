#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <utility>

#include "analysis/evaluator.h"
#include "analysis/items/item_call.h"

namespace orin::analysis {
namespace {

using base::Currency;
using base::DayIndex;

constexpr DayIndex kDay(2);

// Two bars that close at 10 and 20, and a trade bought at 100.5.
class TradePriceTest : public testing::Test {
 protected:
  TradePriceTest() : bars_(TwoBars()), context_(bars_, nullptr) { context_.Trade().buy = 100.5F; }

  bool Holds(std::string_view text) {
    const auto program = BuildProgram(text);
    EXPECT_TRUE(program->Notes().empty()) << text;
    return Evaluator(*program).EvaluateCondition(context_, kDay);
  }

  TradePrices& Trade() { return context_.Trade(); }

  StockContext& Context() { return context_; }

 private:
  static base::BarColumns TwoBars() {
    base::BarColumns bars;
    for (int32_t day = 1; day <= 2; ++day) {
      base::Bar bar;
      bar.date = base::Date::FromSerial(43000 + day);
      bar.open = bar.high = bar.low = bar.close = Currency::FromInt(10 * day);
      bar.volume = Currency::FromInt(1);
      bars.Append(bar);
    }
    return bars;
  }

  base::BarColumns bars_;
  StockContext context_;
};

TEST_F(TradePriceTest, ItemsReadThePricesOfTheTradeWithAndWithoutZero) {
  for (const char* text : {"買い値", "買い値(0)", "買い値( 0 )"}) {
    EXPECT_EQ(ItemValue(text, Context(), kDay), Value::Of(*Currency::Parse("100.5"))) << text;
    EXPECT_EQ(*ItemCall::Bind(text), *ItemCall::Bind("買い値")) << text;
  }
  EXPECT_EQ(ItemValue("売り値", Context(), kDay), Value::Failed());
  Trade().sell = 7.25F;
  EXPECT_EQ(ItemValue("売り値(0)", Context(), kDay), Value::Of(*Currency::Parse("7.25")));
}

TEST_F(TradePriceTest, DatesAreSerialNumbersAndAreNotStored) {
  EXPECT_EQ(ItemValue("買い日付", Context(), kDay), Value::Failed());
  Trade().buy_date = base::Date::FromSerial(43001);
  Trade().sell_date = base::Date::FromSerial(43002);
  for (const char* text : {"買い日付", "買い日付(0)"}) {
    EXPECT_EQ(ItemValue(text, Context(), kDay), Value::Of(Currency::FromInt(43001))) << text;
  }
  EXPECT_EQ(ItemValue("売り日付(0)", Context(), kDay), Value::Of(Currency::FromInt(43002)));
  EXPECT_TRUE(Holds("買い日付 + 1 = 売り日付 And 日付(0) - 買い日付 = 1"));
  EXPECT_EQ(Trade().buy, 100.5F);
}

TEST_F(TradePriceTest, WithoutAPriceTheRelationIsFalseAndStoresNothing) {
  EXPECT_FALSE(Holds("売り値 > 0"));
  EXPECT_FALSE(Holds("売り値 <= 0"));
  EXPECT_FALSE(Holds("売り値 + 買い値 > 0"));
  EXPECT_FALSE(Trade().sell);
  EXPECT_EQ(Trade().buy, 100.5F);
}

TEST_F(TradePriceTest, TrueRelationsStoreTheirFirstOperand) {
  EXPECT_TRUE(Holds("買い値 * 2 > 終値(0)"));
  EXPECT_EQ(Trade().buy, 201.0F);
  EXPECT_TRUE(Holds("{買い値(0) - 1} * 2 > 終値(0)"));
  EXPECT_EQ(Trade().buy, 400.0F);
  EXPECT_FALSE(Trade().sell);
}

TEST_F(TradePriceTest, FalseRelationsStoreNothing) {
  EXPECT_FALSE(Holds("買い値 * 2 < 終値(0)"));
  EXPECT_EQ(Trade().buy, 100.5F);
  EXPECT_TRUE(Holds("買い値 * 2 < 終値(0) Or 1 > 0"));
  EXPECT_EQ(Trade().buy, 100.5F);
}

TEST_F(TradePriceTest, OnlyTheFirstOperandOfARelationCounts) {
  EXPECT_TRUE(Holds("終値(0) < 買い値 * 2"));
  EXPECT_EQ(Trade().buy, 100.5F);
  // The middle of a chain is the first operand of the second relation.
  EXPECT_TRUE(Holds("終値(0) < 買い値 * 2 < 1000"));
  EXPECT_EQ(Trade().buy, 201.0F);
}

TEST_F(TradePriceTest, AllRelationsOfAnEvaluationReadThePricesFromBefore) {
  EXPECT_TRUE(Holds("買い値 + 1 > 0 And 100.5 = 買い値 And 買い値 + 2 = 102.5"));
  EXPECT_EQ(Trade().buy, 102.5F);
  EXPECT_FALSE(Holds("買い値 + 1 > 0 And 103.5 = 買い値"));
  EXPECT_EQ(Trade().buy, 103.5F);
  EXPECT_TRUE(Holds("買い値 = 103.5"));
}

TEST_F(TradePriceTest, RelationsBehindADecidedTermStore) {
  for (const char* text :
       {"終値(0) < 0 And 買い値 + 1 > 0", "終値(0) > 0 Or 買い値 + 1 > 0",
        "終値(0) < 0 And 1 > 0 And 買い値 + 1 > 0 And 2 > 1", "終値(0) > 買い値 + 1 < 1000"}) {
    Trade().buy = 100.5F;
    Holds(text);
    EXPECT_EQ(Trade().buy, 101.5F) << text;
  }
}

TEST_F(TradePriceTest, TheLastTrueRelationOfTheTextStores) {
  EXPECT_TRUE(Holds("買い値 + 1 > 0 Or 買い値 + 2 > 0 And 買い値 + 3 < 0 And 売り値 + 買い値 > 0"));
  EXPECT_EQ(Trade().buy, 102.5F);
  EXPECT_FALSE(Trade().sell);
}

TEST_F(TradePriceTest, TheOrderOfTermsChangesNothing) {
  std::array<std::string, 3> terms = {"買い値 * 2 > 終値(0)", "150 > 買い値", "終値(0) > 100"};
  std::sort(terms.begin(), terms.end());
  do {
    for (const auto& [word, truth] : {std::pair(" And ", false), std::pair(" Or ", true)}) {
      Trade().buy = 100.5F;
      const std::string text = terms[0] + word + terms[1] + word + terms[2];
      EXPECT_EQ(Holds(text), truth) << text;
      EXPECT_EQ(Trade().buy, 201.0F) << text;
    }
  } while (std::next_permutation(terms.begin(), terms.end()));
}

TEST_F(TradePriceTest, AnOperandWithBothItemsStoresBoth) {
  Trade().sell = 1.5F;
  EXPECT_TRUE(Holds("買い値 + 売り値 > 0"));
  EXPECT_EQ(Trade().buy, 102.0F);
  EXPECT_EQ(Trade().sell, 102.0F);
}

TEST_F(TradePriceTest, StoredPricesHaveSinglePrecision) {
  EXPECT_TRUE(Holds("買い値 * 0 + 16777217 > 0"));
  EXPECT_EQ(Trade().buy, 16777216.0F);
  EXPECT_TRUE(Holds("買い値 = 16777216"));
  EXPECT_TRUE(Holds("買い値 * 0 + 0.1 > 0"));
  EXPECT_EQ(Trade().buy, 0.1F);
  EXPECT_TRUE(Holds("買い値 = 0.1"));
}

TEST_F(TradePriceTest, RangesReadPricesButStoreNone) {
  const auto program = BuildProgram("買い値 * 2 > 終値(0)");
  std::vector<uint8_t> truths;
  Evaluator evaluator(*program);
  evaluator.EvaluateConditionRange(Context(), kDay, kDay, truths);
  EXPECT_EQ(truths, std::vector<uint8_t>{1});
  EXPECT_EQ(Trade().buy, 100.5F);
}

}  // namespace
}  // namespace orin::analysis
