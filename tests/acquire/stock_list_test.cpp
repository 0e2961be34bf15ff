#include "acquire/stock_list.h"

#include <gtest/gtest.h>

namespace orin::acquire {
namespace {

constexpr const char* kListHeader = "銘柄コード,銘柄名,上場コード,種別コード,業種コード\r\n";

TEST(StockList, ReadsStocksInFileOrder) {
  const StockList list =
      ParseStockList(std::string(kListHeader) + "^DJI,NYダウ,3,9,926\r\nAAPL,アップル,2,1,800\r\n");
  ASSERT_EQ(list.stocks.size(), 2u);
  EXPECT_EQ(list.stocks[0].code.Text(), "^DJI");
  EXPECT_EQ(list.stocks[0].kind, 9);
  EXPECT_EQ(list.stocks[1].name, "アップル");
  EXPECT_EQ(list.stocks[1].listing, 2);
  EXPECT_EQ(list.stocks[1].sector, 800);
  EXPECT_TRUE(list.problems.Kept().empty());
}

TEST(StockList, WrongLineIsToldAndTheRestGoesOn) {
  const char* const kWrong[] = {"E VIL,x,1,1,1", "TOOLONGCODE,x,1,1,1", "A,x,4,1,1", "A,x,0,1,1",
                                "A,x,1,abc,1",   "A,x,1,1,99999",       "A,x,1,1",   ",x,1,1,1",
                                "B,twice,1,1,1"};
  for (const char* line : kWrong) {
    const StockList list =
        ParseStockList(std::string(kListHeader) + "B,b,1,1,100\n" + line + "\nC,c,1,1,100\n");
    EXPECT_EQ(list.stocks.size(), 2u) << line;
    ASSERT_EQ(list.problems.Kept().size(), 1u) << line;
    EXPECT_EQ(list.problems.Kept()[0].line, 3) << line;
  }
}

TEST(StockList, WrongHeaderReadsNothing) {
  const StockList list = ParseStockList("AAPL,アップル,2,1,800\n");
  EXPECT_TRUE(list.stocks.empty());
  EXPECT_EQ(list.problems.Kept().size(), 1u);
}

}  // namespace
}  // namespace orin::acquire
