#include "store/company_addresses.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/cp932.h"
#include "support/store_builder.h"

namespace orin::store {
namespace {

using support::Code;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Pair;

CompanyAddresses Parse(std::string_view text, std::vector<std::string>& problems) {
  return ParseCompanyAddresses(text, "企業url.txt", problems);
}

TEST(CompanyAddresses, FirstSeparatorPartsCodeAndAddress) {
  std::vector<std::string> problems;
  const auto addresses = Parse(
      "T：https://att.example/\r\n"
      "AAPL\thttps://apple.example/?a=1,2\n"
      " MSFT , https://microsoft.example/a：b \r\n",
      problems);
  EXPECT_THAT(addresses, ElementsAre(Pair(Code("AAPL"), "https://apple.example/?a=1,2"),
                                     Pair(Code("MSFT"), "https://microsoft.example/a：b"),
                                     Pair(Code("T"), "https://att.example/")));
  EXPECT_THAT(problems, IsEmpty());
}

TEST(CompanyAddresses, TitleLinesAndEmptyLinesAreNoEntries) {
  std::vector<std::string> problems;
  EXPECT_THAT(Parse("T:企業,ＵＲＬ\r\nD:2100/01/01\r\n銘柄コード,アドレス\r\n\r\n", problems),
              IsEmpty());
  EXPECT_THAT(problems, IsEmpty());
}

TEST(CompanyAddresses, LastLineOfACodeCounts) {
  std::vector<std::string> problems;
  EXPECT_THAT(Parse("AAPL：a\nAAPL：b\n", problems), ElementsAre(Pair(Code("AAPL"), "b")));
}

TEST(CompanyAddresses, LinesThatAreNoneAreToldWithTheirNumber) {
  std::vector<std::string> problems;
  const auto addresses = Parse("AAPL\nMSFT：\nx y：https://x.example/\nIBM：i\n", problems);
  EXPECT_THAT(addresses, ElementsAre(Pair(Code("IBM"), "i")));
  EXPECT_THAT(problems, ElementsAre(HasSubstr("「企業url.txt」の1行目"), HasSubstr("2行目"),
                                    HasSubstr("3行目")));
}

TEST(CompanyAddresses, WrittenFormIsReadBack) {
  const CompanyAddresses addresses = {{Code("AAPL"), "https://apple.example/"},
                                      {Code("T"), "https://電話.example/"}};
  const auto bytes = SerializeCompanyAddresses(addresses);
  ASSERT_TRUE(bytes);
  EXPECT_EQ(base::DecodeCp932(*bytes),
            "AAPL：https://apple.example/\r\nT：https://電話.example/\r\n");
  std::vector<std::string> problems;
  EXPECT_EQ(Parse(*bytes, problems), addresses);
}

}  // namespace
}  // namespace orin::store
