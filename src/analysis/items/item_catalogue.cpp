#include "analysis/items/item_catalogue.h"

#include <array>
#include <unordered_map>

#include "analysis/condition_text.h"
#include "analysis/items/item_families.h"
#include "analysis/items/name_folding.h"
#include "indicators/indicator.h"

namespace orin::analysis {

namespace {

struct FormWords {
  std::string_view prefix;
  std::string_view within;  // the prefix of NameRule::kWithinPeriods
  std::string_view unit;    // what 日 becomes
  std::string_view offset_label;
};

constexpr std::string_view kDay = "日";
constexpr FormWords kFormWords[] = {
    {"", "", kDay, "何日前(前日のとき－１を指定）"},
    {"週間", "週中", "週", "何週前(前週のとき－１を指定）"},
    {"月間", "月中", "月", "何月前(前月のとき－１を指定）"},
    {"第二銘柄", "", kDay, "何日前(前日のとき－１を指定）"},
};

const FormWords& WordsOf(SeriesForm form) { return kFormWords[static_cast<size_t>(form)]; }

std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to) {
  std::string result;
  size_t start = 0;
  for (size_t at = text.find(from); at != std::string_view::npos; at = text.find(from, start)) {
    result += text.substr(start, at - start);
    result += to;
    start = at + from.size();
  }
  return result += text.substr(start);
}

/// A text as it is compared when only similarity counts.
std::string Folded(std::string_view text) {
  std::string folded = FoldName(text);
  for (const std::string_view word : {"週", "月"}) folded = ReplaceAll(folded, word, kDay);
  return folded;
}

/// What the editor puts behind the name.
std::string InParentheses(std::string_view abbreviation) {
  return abbreviation.empty() ? "" : "（" + std::string(abbreviation) + "）";
}

/// The items that have one form, by their folded names: the daily name, the abbreviation and both
/// as the editor shows them.
using SimilarItems = std::unordered_map<std::string, const ItemEntry*>;

SimilarItems MakeSimilarItems(SeriesForm form) {
  SimilarItems items;
  for (const ItemEntry& entry : ItemCatalogue()) {
    if (!entry.HasForm(form)) continue;
    const std::string name(entry.name);
    items.try_emplace(Folded(name), &entry);
    if (entry.abbreviation.empty()) continue;
    items.try_emplace(Folded(entry.abbreviation), &entry);
    items.try_emplace(Folded(name + InParentheses(entry.abbreviation)), &entry);
  }
  return items;
}

using NameIndex = std::unordered_map<std::string, FoundItem>;

NameIndex MakeNameIndex() {
  NameIndex index;
  for (const ItemEntry& entry : ItemCatalogue()) {
    for (const SeriesForm form : kAllForms) {
      if (entry.HasForm(form)) index.try_emplace(ItemName(entry, form), FoundItem{&entry, form});
    }
  }
  return index;
}

}  // namespace

ArgumentLimits BoundItem::LimitsOf(size_t parameter) const {
  if (indicator == nullptr) return entry->limits[parameter];
  const indicators::Parameter& limited = indicator->parameters[parameter];
  return {limited.minimum, limited.maximum};
}

bool BoundItem::IsWithinLimits(size_t parameter) const {
  const ArgumentLimits limits = LimitsOf(parameter);
  return arguments[parameter] >= limits.minimum && arguments[parameter] <= limits.maximum;
}

bool BoundItem::IsWithinLimits() const {
  for (size_t i = 0; i < entry->ParameterCount(); ++i) {
    if (!IsWithinLimits(i)) return false;
  }
  return true;
}

int32_t BoundItem::Lead() const {
  return entry->family->lead == nullptr ? 0 : entry->family->lead(*this);
}

size_t ItemEntry::ParameterCount() const {
  size_t count = 0;
  while (count < labels.size() && !labels[count].empty()) ++count;
  return count;
}

bool ItemEntry::HasForm(SeriesForm form) const {
  switch (rule) {
    case NameRule::kPeriodsOnly:
    case NameRule::kWithinPeriods:
      return form == SeriesForm::kWeekly || form == SeriesForm::kMonthly;
    case NameRule::kDailyAndWeekly:
      return form == SeriesForm::kDaily || form == SeriesForm::kWeekly;
    case NameRule::kDailyOnly:
      return form == SeriesForm::kDaily;
    default:
      return true;
  }
}

std::string ItemName(const ItemEntry& entry, SeriesForm form) {
  const FormWords& words = WordsOf(form);
  const bool is_bare = entry.rule == NameRule::kBare && form != SeriesForm::kSecond;
  const bool is_within = entry.rule == NameRule::kWithinPeriods;
  const std::string prefix(is_bare ? "" : is_within ? words.within : words.prefix);
  if (entry.rule == NameRule::kPrefixOnly) return prefix + std::string(entry.name);
  return prefix + ReplaceAll(entry.name, kDay, words.unit);
}

std::string ShownName(const ItemEntry& entry, SeriesForm form) {
  return ItemName(entry, form) + InParentheses(entry.abbreviation);
}

std::vector<std::string> ArgumentLabels(const ItemEntry& entry, SeriesForm form) {
  const FormWords& words = WordsOf(form);
  std::vector<std::string> labels;
  for (size_t i = 0; i < entry.ParameterCount(); ++i) {
    labels.push_back(ReplaceAll(entry.labels[i], kDay, words.unit));
  }
  if (form == SeriesForm::kWeekly && !entry.weekly_label.empty()) labels[0] = entry.weekly_label;
  const auto ending = entry.family->ending;
  if (ending == ItemFamily::Ending::kOffset) labels.emplace_back(words.offset_label);
  if (ending == ItemFamily::Ending::kOptionalZero) labels.emplace_back("0（省略可）");
  return labels;
}

FoundItem FindItem(std::string_view name) {
  // A text may hold a hundred thousand names, each of which a search would compare with names that
  // have to be put together first.
  static const NameIndex index = MakeNameIndex();
  const auto found = index.find(std::string(name));
  return found == index.end() ? FoundItem{} : found->second;
}

FoundItem FindSimilarItem(std::string_view name) {
  // Folded once: a text that is pasted may hold very many names that no item has.
  static const std::array<SimilarItems, std::size(kFormWords)> similar = {
      MakeSimilarItems(SeriesForm::kDaily), MakeSimilarItems(SeriesForm::kWeekly),
      MakeSimilarItems(SeriesForm::kMonthly), MakeSimilarItems(SeriesForm::kSecond)};
  for (const SeriesForm form : kAllForms) {
    const std::string_view prefix = WordsOf(form).prefix;
    if (form != SeriesForm::kDaily && !name.starts_with(prefix)) continue;
    // The rest is compared with daily names, because folding writes 週 and 月 as 日.
    const SimilarItems& items = similar[static_cast<size_t>(form)];
    const auto found = items.find(Folded(name.substr(prefix.size())));
    if (found != items.end()) return {found->second, form};
  }
  return {};
}

std::vector<FoundItem> FindItemsWith(std::string_view word) {
  const std::string folded = FoldName(word);
  std::vector<FoundItem> found;
  for (const ItemEntry& entry : ItemCatalogue()) {
    for (const SeriesForm form : kAllForms) {
      if (!entry.HasForm(form)) continue;
      const bool matches = FoldName(ShownName(entry, form)).find(folded) != std::string::npos;
      if (matches) found.push_back({&entry, form});
    }
  }
  return found;
}

std::string UnknownItem(std::string_view name) {
  const FoundItem similar = FindSimilarItem(name);
  const bool has_wide_parenthesis = name.find("（") != name.npos;
  if (similar.entry == nullptr && has_wide_parenthesis) {
    return Quoted(name) +
           "の引数を囲む括弧「(」「)」、引数を区切る「,」と数字は半角で書いてください。";
  }
  std::string message = "分析項目" + Quoted(name) + "はありません";
  if (similar.entry != nullptr) {
    message += "（" + Quoted(ItemName(*similar.entry, similar.form)) + "ではありませんか）";
  }
  return message + "。";
}

}  // namespace orin::analysis
