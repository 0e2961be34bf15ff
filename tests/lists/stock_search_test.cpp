#include "lists/stock_search.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>

#include "support/store_builder.h"

namespace orin::lists {
namespace {

using base::MasterRecord;
using Strings = std::vector<std::string>;

struct Row {
  const char* code;
  const char* name;
  const char* company;
  const char* reading;
};

class StockSearchTest : public testing::Test {
 protected:
  void Make(const std::vector<Row>& rows) {
    std::vector<store::StockRecord> stocks;
    for (const Row& row : rows) {
      store::StockRecord stock;
      if (*row.code != '\0') stock.code = support::Code(row.code);
      stock.name = row.name;
      stocks.push_back(stock);
      const auto record = static_cast<int32_t>(stocks.size()) + 1;
      index_.push_back({row.company, row.reading, stock.code, MasterRecord(record)});
    }
    // The index is in the order of its readings, not in that of the master.
    std::ranges::reverse(index_);
    master_ = store::StockMaster(store::MasterHeader(), std::move(stocks));
    search_ = StockSearch(master_, index_);
  }

  [[nodiscard]] Strings Find(std::string_view typed, size_t most = 100) const {
    Strings codes;
    for (const MasterRecord record : search_.Find(typed, most)) {
      codes.emplace_back(master_.Stock(record).code.Text());
    }
    return codes;
  }

  store::StockMaster master_;
  std::vector<store::IndexEntry> index_;
  StockSearch search_;
};

TEST_F(StockSearchTest, BetterMatchesComeFirst) {
  Make({{"ZFB", "X", "", ""},           // the code contains it
        {"QQ", "AFB", "", ""},          // the name contains it
        {"WW", "SOME FBI", "", ""},     // a word of the name begins with it
        {"RR", "X", "FB HOLDING", ""},  // the company begins with it
        {"FBK", "X", "", ""},           // the code begins with it
        {"FB", "FACEBOOK", "", ""},     // the code itself
        {"NONE", "X", "Y", "Z"}});
  EXPECT_EQ(Find("fb"), (Strings{"FB", "FBK", "RR", "WW", "ZFB", "QQ"}));
  EXPECT_EQ(Find("fb", 2), (Strings{"FB", "FBK"}));
  EXPECT_EQ(Find("fb", 0), Strings());
}

TEST_F(StockSearchTest, WidthCaseAndKindOfKanaDoNotCount) {
  Make({{"SNE", "ソニー", "SONY CORP", "ｿﾆｰ"},
        {"^IXIC", "ナスダック総合", "", "ﾅｽﾀﾞｯｸｿｳｺﾞｳ"},
        {"GS", "GOLDMAN SACHS GR", "", "ｺﾞｰﾙﾄﾞﾏﾝｻｯｸｽ"}});
  for (const char* typed : {"sne", "SNE", "ＳＮＥ", "ｓｎｅ", "そにー", "ソニー", "ｿﾆｰ", "そに",
                            "sony", "Ｓｏｎｙ　ｃｏｒｐ"}) {
    EXPECT_EQ(Find(typed), Strings{"SNE"}) << typed;
  }
  for (const char* typed : {"なすだっく", "ナスダック", "ﾅｽﾀﾞｯｸ", "総合", "ixic", "^ixic"}) {
    EXPECT_EQ(Find(typed), Strings{"^IXIC"}) << typed;
  }
  EXPECT_EQ(Find("さっくす"), Strings{"GS"});
}

TEST_F(StockSearchTest, EveryWordMustMatchSomewhere) {
  Make({{"BAC", "BANK OF AMERICA", "", "ﾊﾞﾝｸ"},
        {"BK", "BANK OF NY", "", "ﾊﾞﾝｸ"},
        {"AAL", "AMERICAN AIR", "", ""}});
  EXPECT_EQ(Find("bank america"), Strings{"BAC"});
  EXPECT_EQ(Find("　america   ばんく "), Strings{"BAC"});
  EXPECT_EQ(Find("america"), (Strings{"AAL", "BAC"}));
  EXPECT_EQ(Find("bank of tokyo"), Strings());
}

TEST_F(StockSearchTest, TextWithoutLettersFindsNothing) {
  Make({{"AAPL", "APPLE", "", ""}});
  for (const char* typed : {"", " ", "　\t ", "ー", "\xff\xfe\x80"}) {
    EXPECT_EQ(Find(typed), Strings()) << typed;
  }
  EXPECT_EQ(StockSearch().Find("A", 10), std::vector<MasterRecord>());
}

TEST_F(StockSearchTest, EmptiedRecordAndEntriesOfOtherStocksAreNotFound) {
  Make({{"", "GHOST", "GHOST", "ﾕｳﾚｲ"}, {"AAPL", "APPLE", "", ""}});
  index_ = {{"PEAR", "ﾅｼ", support::Code("PEAR"), MasterRecord(3)},
            {"PEAR", "ﾅｼ", support::Code("AAPL"), MasterRecord(9)},
            {"PEAR", "ﾅｼ", support::Code("AAPL"), MasterRecord()}};
  search_ = StockSearch(master_, index_);
  EXPECT_EQ(Find("ghost"), Strings());
  EXPECT_EQ(Find("pear"), Strings());
  EXPECT_EQ(Find("apple"), Strings{"AAPL"});
}

TEST_F(StockSearchTest, AnyBytesAreSearchedWithoutHarm) {
  Make({{"AAPL", "APPLE", "アップル", "ｱｯﾌﾟﾙ"}, {"KO", "COCA-COLA", "", "ｺｶｺｰﾗ"}});
  std::mt19937 random(7);
  for (int round = 0; round < 2000; ++round) {
    std::string typed;
    for (size_t length = random() % 400; length > 0; --length) {
      typed += static_cast<char>(random() % 256);
    }
    EXPECT_LE(Find(typed).size(), 2U);
  }
  EXPECT_EQ(Find(std::string(100'000, 'A')), Strings());
}

}  // namespace
}  // namespace orin::lists
