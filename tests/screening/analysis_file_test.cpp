#include "screening/analysis_file.h"

#include <gtest/gtest.h>

namespace orin::screening {
namespace {

AnalysisFile Parse(const std::string& text) {
  const auto analysis = ParseAnalysisFile(text, "分析.txt");
  EXPECT_TRUE(analysis.has_value()) << (analysis ? "" : analysis.error().message);
  return analysis.value_or(AnalysisFile());
}

TEST(AnalysisFile, ReadsEveryKey) {
  const AnalysisFile analysis = Parse(
      "タイトル：ゴールデンクロス\r\n分析結果格納場所：c:\\結果\\\r\n分析日付：2020/01/10\r\n"
      "分析上場市場：ＮＡ市場銘柄\r\n分析項目：終値(0) > 1\r\n第二銘柄コード：^GSPC\r\n");
  EXPECT_EQ(analysis.title, "ゴールデンクロス");
  EXPECT_EQ(analysis.result_directory, "c:\\結果\\");
  EXPECT_EQ(analysis.date, base::Date::FromYmd(2020, 1, 10));
  EXPECT_EQ(analysis.market, MarketChoice::kNasdaq);
  EXPECT_EQ(analysis.condition, "終値(0) > 1");
  EXPECT_EQ(analysis.second_stock->Text(), "^GSPC");
}

TEST(AnalysisFile, ConditionContinuesOverLinesWithoutKey) {
  EXPECT_EQ(
      Parse("分析項目：移動平\n均(25,0) > 1 And\n\n終値(0) > 2\nメモ：x\n終値(0) > 3\n").condition,
      "移動平均(25,0) > 1 And終値(0) > 2");
  EXPECT_EQ(Parse("分析項目：\n終値(0) > 1").condition, "終値(0) > 1");
}

TEST(AnalysisFile, UnknownAndMalformedLinesAreIgnored) {
  const AnalysisFile analysis =
      Parse("なにか\n備考：無視\nタイトル：甲：乙\nタイトル：丙\n：\n分析日付：\n分析上場市場：\n");
  EXPECT_EQ(analysis.title, "丙");
  EXPECT_FALSE(analysis.date.has_value());
  EXPECT_EQ(analysis.market, MarketChoice::kAll);
  EXPECT_EQ(analysis.condition, "");
}

TEST(AnalysisFile, WrongValueIsRefusedWithFileAndValue) {
  for (const char* line : {"分析日付：2020/13/01", "分析上場市場：東京市場"}) {
    const auto analysis = ParseAnalysisFile(line, "分析.txt");
    ASSERT_FALSE(analysis.has_value()) << line;
    const std::string value = std::string(line).substr(std::string(line).find("：") + 3);
    EXPECT_TRUE(analysis.error().message.starts_with("分析.txt")) << analysis.error().message;
    EXPECT_NE(analysis.error().message.find(value), std::string::npos) << analysis.error().message;
  }
}

store::StockRecord Stock(int16_t listing, int16_t kind) {
  store::StockRecord stock;
  stock.listing = listing;
  stock.kind = kind;
  return stock;
}

TEST(MarketChoice, MapsOntoListingAndKindCodes) {
  struct Case {
    const char* name;
    const char* matched;  // of the stocks below, one character each
  };
  const store::StockRecord stocks[] = {Stock(1, 1), Stock(2, 1), Stock(2, 2),
                                       Stock(3, 1), Stock(3, 9), Stock(1, 9)};
  const Case kCases[] = {
      {"全銘柄", "yyyyyy"},       {"ＮＹ市場銘柄", "ynnnny"},
      {"ＮＡ市場銘柄", "nyynnn"}, {"他市場銘柄", "nnnyyn"},
      {"ＮＹＳＥ銘柄", "ynnnnn"}, {"ＮａｓｄａｑＮＭ銘柄", "nynnnn"},
      {"他取引所銘柄", "nnnynn"}, {"ＮａｓｄａｑＳＣ銘柄", "nnynnn"},
  };
  for (const Case& c : kCases) {
    const auto choice = ParseMarketChoice(c.name);
    ASSERT_TRUE(choice.has_value()) << c.name;
    std::string matched;
    for (const auto& stock : stocks) matched += Matches(*choice, stock) ? 'y' : 'n';
    EXPECT_EQ(matched, c.matched) << c.name;
  }
  EXPECT_FALSE(ParseMarketChoice("NY市場銘柄").has_value());
}

}  // namespace
}  // namespace orin::screening
