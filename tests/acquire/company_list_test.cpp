#include "acquire/company_list.h"

#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/cp932.h"
#include "store/file_names.h"
#include "support/scratch_directory.h"
#include "support/store_builder.h"

namespace orin::acquire {
namespace {

using support::Code;
using support::StoreBuilder;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

store::StockMaster Market() {
  std::vector<store::StockRecord> stocks(3);
  const char* const codes[] = {"AAPL", "MSFT", "^DJI"};
  for (int32_t i = 0; i < 3; ++i) {
    stocks[static_cast<size_t>(i)].code = Code(codes[i]);
    stocks[static_cast<size_t>(i)].slot = base::SlotRecord(i + 2);
  }
  return store::StockMaster({}, stocks);
}

/// "AAPL 株価収益率 12.5000", "AAPL 決算月 -".
std::vector<std::string> Texts(const CompanyList& list) {
  std::vector<std::string> texts;
  for (const CompanyValue& given : list.values) {
    texts.push_back(std::string(given.stock->code.Text()) + " " + std::string(given.field->name) +
                    " " + (given.value ? given.value->ToText() : "-"));
  }
  return texts;
}

std::vector<std::string> Problems(const CompanyList& list) {
  std::vector<std::string> texts;
  for (const LineProblem& problem : list.problems.Kept()) {
    texts.push_back(std::to_string(problem.line) + " " + problem.message);
  }
  return texts;
}

TEST(CompanyList, ColumnsAreReadInAnyOrder) {
  const store::StockMaster master = Market();
  const CompanyList list = ParseCompanyList(
      "連結1株当たり利益, 銘柄コード ,株価収益率,単独売上高\r\n"
      "3.5,AAPL,12.5,-100\r\n\r\n,MSFT,,-\r\n",
      master);
  EXPECT_THAT(Texts(list), ElementsAre("AAPL 連結1株当たり利益 3.5000", "AAPL 株価収益率 12.5000",
                                       "AAPL 単独売上高 -100.0000", "MSFT 単独売上高 -"));
  EXPECT_EQ(list.rows, 2);
  EXPECT_EQ(list.stocks, 2);
  EXPECT_THAT(Problems(list), IsEmpty());
}

TEST(CompanyList, NumbersAreExactAndMayHaveGroupsWithinQuotes) {
  const store::StockMaster master = Market();
  const auto read = [&master](const std::string& field) {
    const CompanyList list = ParseCompanyList("銘柄コード,時価総額\nAAPL," + field + "\n", master);
    return list.values.size() == 1 && list.problems.Kept().empty() && list.values[0].value
               ? list.values[0].value->ToText()
               : "none";
  };
  EXPECT_EQ(read("\"1,234,567.89\""), "1234567.8900");
  EXPECT_EQ(read("\"-12,345\""), "-12345.0000");
  EXPECT_EQ(read(" \" 5 \" "), "5.0000");
  EXPECT_EQ(read("0"), "0.0000");
  EXPECT_EQ(read("0.00005"), "0.0000");
  EXPECT_EQ(read("922337203685477.5807"), "922337203685477.5807");
  for (const char* wrong :
       {"922337203685477.5808", "\"1,23\"", "\"1234,567\"", "\",123\"", "\"1,234,\"", "\"1.5,000\"",
        "1e5", "12%", "１２", "abc", "--1", "1 2", "\"1\"2", "\"1", "1,234", "nan", "N/A"}) {
    EXPECT_EQ(read(wrong), "none") << wrong;
  }
}

TEST(CompanyList, WrongLinesAndValuesAreToldAndTheRestGoesOn) {
  const store::StockMaster master = Market();
  const CompanyList list = ParseCompanyList(
      "銘柄コード,銘柄名,決算月,株価収益率,決算月\n"
      "XXXX,x,1,2,\n"
      "AAPL,\"アップル, Inc. \"\"A\"\"\",abc,2,9\n"
      "AAPL,a,1,2,\n"
      "E E,a,1,2,\n"
      "MSFT,m,1,2\n"
      "MSFT,m,1,2,,\n"
      "^DJI,\"d,1,2,\n",
      master);
  EXPECT_THAT(Texts(list), ElementsAre("AAPL 株価収益率 2.0000", "MSFT 決算月 1.0000",
                                       "MSFT 株価収益率 2.0000"));
  EXPECT_THAT(
      Problems(list),
      ElementsAre("1 見出しの「銘柄名」は会社情報の項目ではありません",
                  "1 見出しの「決算月」が前にもあります", "2 銘柄コード「XXXX」が見つかりません",
                  "3 決算月「abc」が数値ではないか、大きすぎます",
                  "4 銘柄コード「AAPL」の行が前にもあります", "5 銘柄コード「E E」は使えません",
                  "6 項目の数が4です（見出しは5です）", "8 項目を囲む「\"」が閉じていません"));
  EXPECT_EQ(list.rows, 7);
  EXPECT_EQ(list.stocks, 2);
}

TEST(CompanyList, HeadingNeedsTheCodeAndAField) {
  for (const char* text :
       {"", "\n", "時価総額\n1\n", "銘柄コード\nAAPL\n", "銘柄コード,名\nAAPL,1\n", "AAPL,1\n",
        "\"銘柄コード,時価総額\nAAPL,1\n"}) {
    const CompanyList list = ParseCompanyList(text, Market());
    EXPECT_FALSE(list.has_heading) << text;
    EXPECT_TRUE(list.values.empty()) << text;
    EXPECT_FALSE(list.problems.Kept().empty()) << text;
  }
}

/// A store of two stocks and list files.
class CompanyImport : public ::testing::Test {
 protected:
  CompanyImport() { builder_.Stock("AAPL").Stock("MSFT").Build(); }

  base::Result<CompanySummary> Import(const std::string& text) {
    std::ofstream(scratch_ / "list.csv", std::ios::binary) << text;
    store::StockStore store = builder_.Open(store::Access::kWrite);
    return ImportCompanies(store, scratch_ / "list.csv");
  }
  [[nodiscard]] std::string List() {
    const store::StockStore store = builder_.Open();
    return FormatCompanyList(store.Master(), store::CompanyTable::Load(store.Location()).value());
  }
  [[nodiscard]] std::string Value(const char* code, const char* field) {
    const store::StockStore store = builder_.Open();
    const auto value = store::CompanyTable::Load(store.Location())
                           ->Value(store.Master().Stock(store.Master().Find(Code(code))),
                                   *store::FindCompanyField(field));
    return value ? value->ToText() : "none";
  }

  support::ScratchDirectory scratch_;
  StoreBuilder builder_{"company_import"};
};

TEST_F(CompanyImport, KeepsWhatTheFileDoesNotGive) {
  const auto first = Import("銘柄コード,決算月,時価総額\nAAPL,9,100\nMSFT,6,200\n").value();
  EXPECT_EQ(first.values, 4);
  const auto second =
      Import(base::EncodeCp932("銘柄コード,時価総額,決算月\r\nAAPL,,-\r\n").value()).value();
  EXPECT_EQ(second.rows, 1);
  EXPECT_EQ(second.stocks, 1);
  EXPECT_EQ(second.values, 1);
  EXPECT_EQ(Value("AAPL", "時価総額"), "100.0000");
  EXPECT_EQ(Value("AAPL", "決算月"), "none");
  EXPECT_EQ(Value("MSFT", "決算月"), "6.0000");
}

TEST_F(CompanyImport, ListReadBackGivesTheSameTable) {
  std::string heading = "銘柄コード";
  std::string line = "MSFT";
  int number = 0;
  for (const store::CompanyField& field : store::kCompanyFields) {
    heading += "," + std::string(field.name);
    line += number % 3 == 0 ? "," : "," + std::to_string(number) + ".0625";
    ++number;
  }
  ASSERT_EQ(Import(heading + "\n" + line + "\n")->values, 27);
  const std::string list = List();
  EXPECT_THAT(list, HasSubstr("\nMSFT,-,1.0625,2.0625,-,"));
  EXPECT_EQ(list.find("AAPL"), std::string::npos);
  EXPECT_EQ(Import(list)->values, 0);
  ASSERT_EQ(Import("銘柄コード,決算月,単独売上高\nMSFT,-,1\n")->values, 2);
  ASSERT_NE(List(), list);
  EXPECT_EQ(Import(list)->values, 2);
  EXPECT_EQ(List(), list);
}

TEST_F(CompanyImport, FailureChangesNothingAndNamesTheFile) {
  ASSERT_TRUE(Import("銘柄コード,決算月\nAAPL,9\n"));
  const std::string before = List();
  const auto refused = Import("コード,決算月\nAAPL,3\n");
  ASSERT_FALSE(refused);
  EXPECT_THAT(refused.error().message, HasSubstr("list.csv 1行目：見出しに「銘柄コード」"));
  const auto path = store::PathOf(builder_.Location(), {store::FileKind::kStatements, 0});
  std::ofstream(path, std::ios::binary) << "garbage";
  const auto damaged = Import("銘柄コード,決算月\nAAPL,3\n");
  ASSERT_FALSE(damaged);
  EXPECT_THAT(damaged.error().message, HasSubstr("orin.acc"));
  std::filesystem::remove(path);
  EXPECT_EQ(List(), before);
}

TEST_F(CompanyImport, RubbishIsToldWithinBounds) {
  std::string text = "銘柄コード,決算月\n";
  for (int i = 0; i < 1000; ++i) text += "X" + std::to_string(i) + ",1\n";
  const auto summary = Import(text).value();
  EXPECT_EQ(summary.rows, 1000);
  ASSERT_EQ(summary.problems.size(), 101U);
  EXPECT_THAT(summary.problems[0], HasSubstr("list.csv 2行目：銘柄コード「X0」が見つかりません。"));
  EXPECT_THAT(summary.problems[100], HasSubstr("900件"));
}

}  // namespace
}  // namespace orin::acquire
