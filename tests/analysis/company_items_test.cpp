// Items of company data and of the financial statements.

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "analysis/items/item_call.h"
#include "analysis/items/item_families.h"
#include "base/coding.h"
#include "store/file_names.h"
#include "store/master_format.h"
#include "support/store_builder.h"

namespace orin::analysis {
namespace {

using base::Currency;
using base::DayIndex;
using support::Code;

constexpr int32_t kCompanyDays = 30;

/// Every field of AAA is its place in the table, of BBB that + 1000; CCC has none. The ranks are 7,
/// -2 and 0.
class CompanyItemsTest : public ::testing::Test {
 protected:
  CompanyItemsTest() {
    builder_.Days(support::Weekdays("2020/01/08", kCompanyDays));
    builder_.Stock("AAA").Stock("BBB").Stock("CCC").Build();
    SetRank(0, 7);
    SetRank(1, -2);
    store::StockStore store = builder_.Open(store::Access::kWrite);
    store::CompanyTable companies;
    for (int32_t i = 0; i < static_cast<int32_t>(store::kCompanyFields.size()); ++i) {
      const store::CompanyField& field = store::kCompanyFields[static_cast<size_t>(i)];
      companies.Set(StockOf(store, "AAA"), field, Currency::FromInt(i));
      companies.Set(StockOf(store, "BBB"), field, Currency::FromInt(1000 + i));
    }
    EXPECT_TRUE(store.SaveCompanies(companies));
  }

  static const store::StockRecord& StockOf(const store::StockStore& store, std::string_view code) {
    return store.Master().Stock(store.Master().Find(Code(code)));
  }

  /// The value on the last day, "none" where there is none.
  [[nodiscard]] std::string ValueOf(const std::string& text, std::string_view code,
                                    std::string_view second = {}) {
    const store::StockStore store = builder_.Open();
    const auto call = ItemCall::Bind(text);
    if (!call) return call.error().message;
    const auto* other = second.empty() ? nullptr : &StockOf(store, second);
    StockContext context(store, call->Needs(), DayIndex(kCompanyDays), DayIndex(kCompanyDays),
                         other, true);
    const auto beside = Companions::Load(store, call->Needs());
    context.SetBeside(&*beside);
    context.Load(StockOf(store, code));
    const Value value = ItemValue(text, context, DayIndex(kCompanyDays));
    return value.ok ? value.value.ToText() : "none";
  }

  support::StoreBuilder builder_{"company_items"};

 private:
  void SetRank(size_t stock, int16_t rank) {
    const auto path = store::PathOf(builder_.Location(), {store::FileKind::kMaster, 0});
    std::string bytes = base::ReadFile(path).value();
    const size_t record = (stock + 1) * store::kMasterRecordLength;
    base::PutInt16(bytes.data() + record + store::master_offset::kRank, rank);
    EXPECT_TRUE(base::ReplaceFile(base::NativeFileSystem(), path, bytes));
  }
};

TEST_F(CompanyItemsTest, EveryFieldIsAnItemOfTheStockAndOfTheSecondStock) {
  for (size_t i = 0; i < store::kCompanyFields.size(); ++i) {
    const std::string name(store::kCompanyFields[i].name);
    const std::string own = std::to_string(i) + ".0000";
    EXPECT_EQ(ValueOf(name, "AAA", "BBB"), own);
    EXPECT_EQ(ValueOf(name + "(0)", "AAA", "BBB"), own);
    EXPECT_EQ(ValueOf("週間" + name, "AAA", "BBB"), own);
    EXPECT_EQ(ValueOf("月間" + name + "(0)", "AAA"), own);
    EXPECT_EQ(ValueOf("第二銘柄" + name + "(0)", "AAA", "BBB"), std::to_string(1000 + i) + ".0000");
  }
}

TEST_F(CompanyItemsTest, UnknownValuesAndMissingSecondStocksFail) {
  EXPECT_EQ(ValueOf("株価収益率(0)", "CCC"), "none");
  EXPECT_EQ(ValueOf("第二銘柄株価収益率(0)", "AAA", "CCC"), "none");
  EXPECT_EQ(ValueOf("第二銘柄株価収益率(0)", "AAA"), "none");
  EXPECT_EQ(ValueOf("第二銘柄銘柄ランク(0)", "AAA"), "none");
  const base::BarColumns nothing;
  StockContext at_hand(nothing, nullptr);
  EXPECT_FALSE(ItemValue("株価収益率(0)", at_hand, DayIndex(1)).ok);
  EXPECT_FALSE(ItemValue("銘柄ランク(0)", at_hand, DayIndex(1)).ok);
}

TEST_F(CompanyItemsTest, RankIsTheMastersAndNeedsNoTable) {
  EXPECT_EQ(ValueOf("銘柄ランク(0)", "AAA", "BBB"), "7.0000");
  EXPECT_EQ(ValueOf("週間銘柄ランク", "BBB"), "-2.0000");
  EXPECT_EQ(ValueOf("第二銘柄銘柄ランク(0)", "AAA", "BBB"), "-2.0000");
  EXPECT_EQ(ValueOf("銘柄ランク(0)", "CCC"), "0.0000");
  EXPECT_FALSE(ItemCall::Bind("銘柄ランク(0)")->Needs().companies);
  EXPECT_TRUE(ItemCall::Bind("第二銘柄決算月")->Needs().companies);
}

TEST_F(CompanyItemsTest, ValueIsTheSameOnEveryDayOfTheCalendar) {
  const store::StockStore store = builder_.Open();
  const ItemCall call = *ItemCall::Bind("連結総資産(0)");
  StockContext context(store, call.Needs(), DayIndex(5), DayIndex(kCompanyDays), nullptr, true);
  const auto beside = Companions::Load(store, call.Needs());
  context.SetBeside(&*beside);
  context.Load(StockOf(store, "AAA"));
  base::ValueColumn column;
  call.Evaluate(context, DayIndex(-1), DayIndex(kCompanyDays + 2), column);
  ASSERT_EQ(column.Size(), size_t{kCompanyDays} + 4);
  for (size_t place = 0; place < column.Size(); ++place) {
    EXPECT_EQ(column.Has(place), place >= 2 && place < size_t{kCompanyDays} + 2) << place;
  }
}

TEST_F(CompanyItemsTest, NamesShownWithAnAbbreviationAreSuggestedOnly) {
  struct Case {
    const char* written;
    const char* meant;
  };
  for (const Case& c : {Case{"株価収益率（ＰＥＲ）", "株価収益率"},
                        {"ＰＥＲ", "株価収益率"},
                        {"roe", "株主資本利益率"},
                        {"第二銘柄ＰＢＲ", "第二銘柄純資産倍率"},
                        {"週間一株利益（EPS）", "週間一株利益"},
                        {"単独１株当たり利益", "単独1株当たり利益"}}) {
    EXPECT_EQ(ValueOf(std::string(c.written) + "(0)", "AAA", "BBB"),
              "分析項目「" + std::string(c.written) + "」はありません（「" + c.meant +
                  "」ではありませんか）。");
  }
  const FoundItem found = FindItem("週間一株株主資本");
  ASSERT_NE(found.entry, nullptr);
  EXPECT_EQ(ShownName(*found.entry, found.form), "週間一株株主資本（ＢＰＳ）");
}

TEST_F(CompanyItemsTest, OnlyTheStatementsThatHaveAFieldHaveItsItem) {
  EXPECT_EQ(CompanyItems().size(), 14U);
  EXPECT_EQ(FinancialItems().size(), 28U);
  for (const char* name : {"単独発行済み株式数", "単独繰越損益", "週間連結含み損益", "決算月",
                           "月間単独総資産経常利益率"}) {
    EXPECT_NE(FindItem(name).entry, nullptr) << name;
  }
  for (const char* name : {"連結発行済み株式数", "連結繰越損益", "売上高", "総資産",
                           "単独週間売上高", "週間単独1週当たり利益"}) {
    EXPECT_EQ(FindItem(name).entry, nullptr) << name;
  }
  EXPECT_FALSE(ItemCall::Bind("株価収益率(-1)"));
}

}  // namespace
}  // namespace orin::analysis
