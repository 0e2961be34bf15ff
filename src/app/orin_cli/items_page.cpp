#include "app/orin_cli/items_page.h"

#include <algorithm>
#include <array>
#include <limits>
#include <string>
#include <vector>

#include "analysis/items/item_catalogue.h"
#include "app/orin_cli/needed_bars_text.h"
#include "base/text.h"

namespace orin::app {

using analysis::ItemEntry;
using analysis::ItemFamily;
using analysis::ItemGroup;
using analysis::kAllForms;
using analysis::SeriesForm;

namespace {

constexpr std::array<std::string_view, kAllForms.size()> kFormNames = {"日足", "週間", "月間",
                                                                       "第二銘柄"};

std::string_view NameOf(SeriesForm form) { return kFormNames[static_cast<size_t>(form)]; }

/// The groups of one heading as one.
struct Section {
  std::string_view title;
  std::vector<const ItemEntry*> entries;
};

std::vector<Section> Sections() {
  std::vector<Section> sections;
  for (const ItemGroup& group : analysis::ItemGroups()) {
    if (group.rows.empty()) continue;
    if (sections.empty() || sections.back().title != group.title) {
      sections.push_back({group.title, {}});
    }
    for (const ItemEntry& entry : group.rows) sections.back().entries.push_back(&entry);
  }
  return sections;
}

std::string Joined(const std::vector<std::string>& texts, std::string_view between) {
  std::string joined;
  for (size_t i = 0; i < texts.size(); ++i) {
    if (i > 0) joined += between;
    joined += texts[i];
  }
  return joined;
}

std::string CallText(const ItemEntry& entry, SeriesForm form) {
  return analysis::ItemName(entry, form) + "(" +
         Joined(analysis::ArgumentLabels(entry, form), ",") + ")";
}

SeriesForm FirstForm(const ItemEntry& entry) {
  const auto found = std::find_if(kAllForms.begin(), kAllForms.end(),
                                  [&entry](SeriesForm form) { return entry.HasForm(form); });
  return *found;
}

size_t CountForm(const Section& section, SeriesForm form) {
  return static_cast<size_t>(
      std::count_if(section.entries.begin(), section.entries.end(),
                    [form](const ItemEntry* entry) { return entry->HasForm(form); }));
}

/// Heading, numbers of the forms and their sum, for each section and for all.
std::vector<std::vector<std::string>> CountRows() {
  std::vector<std::vector<std::string>> rows;
  std::array<size_t, kAllForms.size() + 1> sums{};
  for (const Section& section : Sections()) {
    rows.push_back({std::string(section.title)});
    size_t sum = 0;
    for (const SeriesForm form : kAllForms) {
      const size_t count = CountForm(section, form);
      sum += count;
      sums[static_cast<size_t>(form)] += count;
      rows.back().push_back(std::to_string(count));
    }
    sums.back() += sum;
    rows.back().push_back(std::to_string(sum));
  }
  rows.push_back({"合計"});
  for (const size_t sum : sums) rows.back().push_back(std::to_string(sum));
  return rows;
}

constexpr std::string_view kCountHeading = "種類,日足,週間,月間,第二銘柄,計";

std::string TableRow(const std::vector<std::string>& cells) {
  return "| " + Joined(cells, " | ") + " |\n";
}

std::string TableHeading(const std::vector<std::string>& cells) {
  std::string text = TableRow(cells) + "|";
  for (size_t i = 0; i < cells.size(); ++i) text += "---|";
  return text + "\n";
}

/// "（2以上）", "（1～100）"; empty where there is nothing to say beyond the rule that a period is
/// 1 or more, and where the label says it.
std::string LimitsText(std::string_view label, const analysis::ArgumentLimits& limits) {
  for (const std::string_view sign : {"～", "："}) {
    if (label.find(sign) != std::string_view::npos) return "";
  }
  const bool is_open = limits.maximum == std::numeric_limits<int32_t>::max();
  if (is_open && limits.minimum == 1) return "";
  const std::string minimum = std::to_string(limits.minimum);
  if (is_open) return "（" + minimum + "以上）";
  return "（" + minimum + "～" + std::to_string(limits.maximum) + "）";
}

/// The parameters with their letters and limits, then what follows them where it is no offset.
std::string ArgumentsCell(const ItemEntry& entry) {
  const SeriesForm form = FirstForm(entry);
  const analysis::BoundItem item = BoundItemOf(entry, form);
  const std::vector<std::string> labels = analysis::ArgumentLabels(entry, form);
  std::vector<std::string> texts;
  for (size_t i = 0; i < entry.ParameterCount(); ++i) {
    const std::string letter = LetterOf(item, i);
    texts.push_back(labels[i] + (letter.empty() ? "" : " " + letter) +
                    LimitsText(labels[i], item.LimitsOf(i)));
  }
  if (entry.family->ending == ItemFamily::Ending::kOptionalZero) texts.push_back(labels.back());
  return texts.empty() ? "なし" : Joined(texts, ", ");
}

std::string EntryRow(const ItemEntry& entry) {
  std::vector<std::string> cells;
  cells.reserve(kAllForms.size() + 2);
  for (const SeriesForm form : kAllForms) {
    cells.push_back(entry.HasForm(form) ? analysis::ShownName(entry, form) : "");
  }
  cells.push_back(ArgumentsCell(entry));
  cells.push_back(NeededBarsText(entry));
  return TableRow(cells);
}

constexpr std::string_view kItemsIntroduction =
    R"(# 分析項目の一覧

<!-- orin-cli items --markdown がプログラムの表から作るページです。手で直さず、作り直してください。 -->

式の中で使える分析項目のすべての名前と引数です。値の求め方と、計算できない場合は [formulas.md](formulas.md)、式の書き方は
[条件と分析項目](manual/items.md) にあります。

- 名前は、全角の文字と数字を含めて書いてあるとおりに書きます。`orin-cli items 移動` のように名前の一部で探せます。
- 「引数」は最後の引数より前に書くものです。「（）」の中は指定できる範囲で、書いていない期間は 1 以上です。
- 「要る足」は、調べる足を含めて何本の足が必要かです。「すべて」の項目は最初の足から計算します。週間と月間の形では週と月を数えます。
)";

std::string LastArguments() {
  std::string text = "- 最後の引数：";
  const ItemEntry& entry = analysis::ItemCatalogue().front();
  std::vector<std::string> forms;
  forms.reserve(kAllForms.size());
  for (const SeriesForm form : kAllForms) {
    forms.push_back(std::string(NameOf(form)) + "は「" +
                    analysis::ArgumentLabels(entry, form).back() + "」");
  }
  return text + Joined(forms, "、") +
         "。会社情報などの「0（省略可）」と、引数のない数値関数は除きます。\n";
}

}  // namespace

std::string ItemsText(std::string_view word) {
  const std::vector<analysis::FoundItem> found = analysis::FindItemsWith(word);
  std::string text;
  for (const Section& section : Sections()) {
    std::string lines;
    for (const ItemEntry* entry : section.entries) {
      for (const analysis::FoundItem& item : found) {
        if (item.entry->name != entry->name) continue;
        lines += "  " + base::PadRight(NameOf(item.form), 10) + CallText(*entry, item.form) +
                 (entry->abbreviation.empty() ? "" : "  " + std::string(entry->abbreviation)) +
                 "\n";
      }
    }
    if (!lines.empty()) text += "■ " + std::string(section.title) + "\n" + lines;
  }
  return text;
}

std::string ItemCounts() {
  std::string text = std::string(kCountHeading) + "\n";
  for (const auto& row : CountRows()) text += Joined(row, ",") + "\n";
  return text;
}

std::string ItemsPage() {
  std::string text = std::string(kItemsIntroduction) + LastArguments();
  for (const Section& section : Sections()) {
    text += "\n## " + std::string(section.title) + "\n\n";
    std::vector<std::string> heading(kFormNames.begin(), kFormNames.end());
    heading.insert(heading.end(), {"引数", "要る足"});
    text += TableHeading(heading);
    for (const ItemEntry* entry : section.entries) text += EntryRow(*entry);
  }
  text += "\n## 項目の数\n\n";
  text += TableHeading({"種類", "日足", "週間", "月間", "第二銘柄", "計"});
  for (const auto& row : CountRows()) text += TableRow(row);
  return text;
}

}  // namespace orin::app
