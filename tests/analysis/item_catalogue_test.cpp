#include "analysis/items/item_catalogue.h"

#include <gtest/gtest.h>
#include <set>
#include <string>

#include "indicators/indicator.h"

namespace orin::analysis {
namespace {

TEST(ItemCatalogue, EveryNameIsFoundAsItselfAndOnlyOnce) {
  std::set<std::string> names;
  for (const ItemEntry& entry : ItemCatalogue()) {
    for (const SeriesForm form : kAllForms) {
      if (!entry.HasForm(form)) continue;
      const std::string name = ItemName(entry, form);
      EXPECT_TRUE(names.insert(name).second) << name;
      const FoundItem found = FindItem(name);
      EXPECT_EQ(found.entry, &entry) << name;
      EXPECT_EQ(found.form, form) << name;
    }
  }
  EXPECT_EQ(names.size(), 39U * 4 + 3 + 2 + 11);
}

TEST(ItemCatalogue, ItemsOnIndicatorsHaveALabelForEachOfTheirParameters) {
  int resting = 0;
  for (const ItemEntry& entry : ItemCatalogue()) {
    if (entry.indicator.empty()) continue;
    const indicators::Indicator* indicator = indicators::FindIndicator(entry.indicator);
    ASSERT_NE(indicator, nullptr) << entry.name;
    EXPECT_EQ(indicator->ParameterCount(), entry.ParameterCount()) << entry.name;
    ++resting;
  }
  EXPECT_EQ(resting, 39);
}

TEST(ItemCatalogue, NamesFollowThePeriod) {
  for (const char* name : {"前週比",
                           "前月比",
                           "第二銘柄前日比",
                           "週間日付",
                           "月間日付",
                           "週間株価上昇週出来高合計",
                           "週間株価下降週出来高合計",
                           "週間株価上昇週上昇幅合計",
                           "週間株価下降週下降幅合計",
                           "週間株価上昇週数",
                           "週間株価下降週数",
                           "週間最高値経過週数",
                           "週間最安値経過週数",
                           "月間株価上昇月出来高合計",
                           "月間株価下降月下降幅合計",
                           "月間最安値経過月数",
                           "第二銘柄株価上昇日数",
                           "第二銘柄ＲＳＩ",
                           "週間ＡＤＸ",
                           "月間％Ｄ"}) {
    EXPECT_NE(FindItem(name).entry, nullptr) << name;
  }
  for (const char* name : {"週間前日比", "週間前週比", "前週日比", "週間株価上昇日数", "週週付",
                           "第二銘柄前週比", "週間さや", "第二銘柄さや", "", "週間"}) {
    EXPECT_EQ(FindItem(name).entry, nullptr) << name;
  }
}

TEST(ItemCatalogue, LabelsFollowThePeriodAndEndWithTheOffset) {
  using Labels = std::vector<std::string>;
  const auto labels = [](const char* name) {
    const FoundItem found = FindItem(name);
    return ArgumentLabels(*found.entry, found.form);
  };
  EXPECT_EQ(labels("終値"), (Labels{"何日前(前日のとき－１を指定）"}));
  EXPECT_EQ(labels("移動平均"), (Labels{"移動平均日数", "何日前(前日のとき－１を指定）"}));
  EXPECT_EQ(labels("週間移動平均"), (Labels{"移動平均週数", "何週前(前週のとき－１を指定）"}));
  EXPECT_EQ(labels("月間％Ｄ"), (Labels{"％Ｋ月数", "％Ｄ月数", "何月前(前月のとき－１を指定）"}));
  EXPECT_EQ(labels("第二銘柄ＲＳＩ"), (Labels{"ＲＳＩ日数", "何日前(前日のとき－１を指定）"}));
  EXPECT_EQ(labels("週間株価上昇週数"),
            (Labels{"株価上昇週数を求める週数", "何週前(前週のとき－１を指定）"}));
  EXPECT_TRUE(labels("Ａｂｓ").empty());
}

}  // namespace
}  // namespace orin::analysis
