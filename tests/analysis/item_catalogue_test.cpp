#include "analysis/items/item_catalogue.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

#include "analysis/items/item_call.h"
#include "base/file_system.h"
#include "base/text.h"
#include "indicators/indicator.h"
#include "support/test_files.h"

namespace orin::analysis {
namespace {

std::vector<std::string> Split(std::string_view text, std::string_view separator) {
  std::vector<std::string> pieces;
  for (size_t at = 0; at <= text.size();) {
    const size_t end = std::min(text.find(separator, at), text.size());
    const std::string_view piece = base::TrimBlanks(text.substr(at, end - at));
    if (!piece.empty()) pieces.emplace_back(piece);
    at = end + separator.size();
  }
  return pieces;
}

/// A line of names.txt.
struct ListedItem {
  std::vector<std::string> names;  // by form, "-" for none
  std::vector<std::string> daily_labels;
  std::vector<std::string> weekly_labels;
  std::string ending;
};

std::vector<ListedItem> ReadListedItems() {
  const auto text = base::ReadFile(support::TestData("items/names.txt"));
  std::vector<ListedItem> items;
  for (const std::string_view line : base::SplitLines(text.value())) {
    if (line.empty() || line.front() == '#') continue;
    ListedItem item;
    std::vector<std::string_view> fields;
    for (size_t at = 0; at <= line.size();) {
      const size_t end = std::min(line.find('|', at), line.size());
      fields.push_back(base::TrimBlanks(line.substr(at, end - at)));
      at = end + 1;
    }
    item.names.assign(fields.begin(), fields.begin() + 4);
    item.daily_labels = Split(fields.at(4), ";");
    item.weekly_labels = Split(fields.at(5), ";");
    item.ending = fields.at(6);
    items.push_back(item);
  }
  return items;
}

/// The labels of the parameters.
std::vector<std::string> ParameterLabels(const FoundItem& found) {
  auto labels = ArgumentLabels(*found.entry, found.form);
  labels.resize(found.entry->ParameterCount());
  return labels;
}

std::string EndingOf(const ItemEntry& entry) {
  const auto ending = entry.family->ending;
  if (ending == ItemFamily::Ending::kOffset) return "offset";
  return ending == ItemFamily::Ending::kNone ? "nothing" : "zero";
}

TEST(ItemCatalogue, HoldsTheListedNamesAndNoOther) {
  size_t listed = 0;
  for (const ListedItem& item : ReadListedItems()) {
    for (const SeriesForm form : kAllForms) {
      const std::string& name = item.names[static_cast<size_t>(form)];
      if (name == "-") continue;
      ++listed;
      const FoundItem found = FindItem(name);
      ASSERT_NE(found.entry, nullptr) << name;
      EXPECT_EQ(found.form, form) << name;
      EXPECT_EQ(EndingOf(*found.entry), item.ending) << name;
      if (form == SeriesForm::kMonthly) continue;
      const bool is_weekly = form == SeriesForm::kWeekly;
      EXPECT_EQ(ParameterLabels(found), is_weekly ? item.weekly_labels : item.daily_labels) << name;
    }
  }
  size_t forms = 0;
  for (const ItemEntry& entry : ItemCatalogue()) {
    forms += static_cast<size_t>(std::count_if(
        kAllForms.begin(), kAllForms.end(), [&](SeriesForm form) { return entry.HasForm(form); }));
  }
  EXPECT_EQ(listed, forms);
}

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
  EXPECT_GT(resting, 50);
}

TEST(ItemCatalogue, NamesOfFormsThatDoNotExistAreNone) {
  for (const char* name : {"週間前日比",
                           "週間前週比",
                           "前週日比",
                           "週間株価上昇日数",
                           "週週付",
                           "第二銘柄前週比",
                           "週間さや",
                           "第二銘柄さや",
                           "",
                           "週間",
                           "売り残",
                           "第二銘柄買い残",
                           "平均株価",
                           "週間平均株価",
                           "第二銘柄平均株価",
                           "月間ランキング順位",
                           "第二銘柄ランキング順位",
                           "週間買い日付",
                           "連結繰越損益",
                           "連結発行済み株式数",
                           "売上高",
                           "キーワード"}) {
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
  EXPECT_EQ(labels("週間マイナスエネルギー"),
            (Labels{"週間マイナスエネルギーを合計する日数", "何週前(前週のとき－１を指定）"}));
  EXPECT_EQ(labels("月間マイナスエネルギー"),
            (Labels{"マイナスエネルギーを合計する月数", "何月前(前月のとき－１を指定）"}));
  EXPECT_EQ(labels("週中平均株価"),
            (Labels{"移動平均週数（２～１００）", "サンプル週数（５～２００）",
                    "何週前(前週のとき－１を指定）"}));
  EXPECT_TRUE(labels("Ａｂｓ").empty());
}

TEST(ItemCatalogue, ParametersBeyondTheirLimitsAreExplained) {
  const std::pair<const char*, const char*> kCases[] = {
      {"移動平均(0,0)",
       "「移動平均」の「移動平均日数」が0なので、値がありません。1以上で指定してください。"},
      {"ボリンジャーバンド(25,4,0)",
       "「ボリンジャーバンド」の「移動平均からの偏差（－３～３を指定）」が4なので、値がありません。"
       "-3から3までの整数で指定してください。"},
      {"ランキング順位(8,0,0,0)",
       "「ランキング順位」の「ランキング項目番号（１～７）」が8なので、値がありません。"
       "1から7までの整数で指定してください。"},
      {"週間ランキング順位(1,2,0,0)",
       "「週間ランキング順位」の「検索市場（０：全市場，１：市場別）」が2なので、値がありません。"
       "0から1までの整数で指定してください。"},
      {"終値(1)",
       "「終値」の「何日前("
       "前日のとき－１を指定）」が1で、分析する日より後になるので、値がありません"
       "。0か負の数で指定してください。"},
      {"週間遅行スパン(26,-24)",
       "「週間遅行スパン」の「何週前(前週のとき－１を指定）」が-"
       "24で、分析する日より後になるので、値"
       "がありません。-25以下で指定してください。"},
  };
  for (const auto& [text, sentence] : kCases) {
    EXPECT_EQ(ItemCall::Bind(text)->WhyNever(), sentence);
  }
  for (const char* text :
       {"ボリンジャーバンド(25,-3,0)", "ランキング順位(7,1,1,0)", "遅行スパン(26,-25)"}) {
    EXPECT_EQ(ItemCall::Bind(text)->WhyNever(), std::nullopt) << text;
  }
}

}  // namespace
}  // namespace orin::analysis
