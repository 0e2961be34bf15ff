#include "analysis/items/item_catalogue.h"

#include <unordered_map>

#include "analysis/condition_text.h"
#include "analysis/items/item_families.h"

namespace orin::analysis {

namespace {

struct FormWords {
  std::string_view prefix;
  std::string_view unit;  // what 日 becomes
  std::string_view offset_label;
};

constexpr std::string_view kDay = "日";
constexpr FormWords kFormWords[] = {
    {"", kDay, "何日前(前日のとき－１を指定）"},
    {"週間", "週", "何週前(前週のとき－１を指定）"},
    {"月間", "月", "何月前(前月のとき－１を指定）"},
    {"第二銘柄", kDay, "何日前(前日のとき－１を指定）"},
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
  std::string folded;
  for (size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    // U+FF01..U+FF5E, the full-width forms of U+0021..U+007E, are EF BC 81 ... EF BD 9E.
    const bool wide_lead = byte == 0xef && i + 2 < text.size();
    const int second = wide_lead ? static_cast<unsigned char>(text[i + 1]) : 0;
    const int third = wide_lead ? static_cast<unsigned char>(text[i + 2]) : 0;
    const int wide = (second - 0xbc) * 0x40 + (third - 0x80);
    const bool is_wide = wide_lead && second >= 0xbc && wide >= 0x01 && wide <= 0x5e;
    const int c = is_wide ? wide + 0x20 : byte;
    if (is_wide) i += 2;
    if (c == ' ') continue;
    folded += static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
  }
  for (const std::string_view word : {"週", "月"}) folded = ReplaceAll(folded, word, kDay);
  return ReplaceAll(folded, kFullWidthBlank, "");
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

size_t ItemEntry::ParameterCount() const {
  size_t count = 0;
  while (count < labels.size() && !labels[count].empty()) ++count;
  return count;
}

bool ItemEntry::HasForm(SeriesForm form) const {
  return form == SeriesForm::kDaily || rule != NameRule::kDailyOnly;
}

std::string ItemName(const ItemEntry& entry, SeriesForm form) {
  const FormWords& words = WordsOf(form);
  const bool bare = entry.rule == NameRule::kBare && form != SeriesForm::kSecond;
  const std::string prefix(bare ? "" : words.prefix);
  if (entry.rule == NameRule::kPrefixOnly) return prefix + std::string(entry.name);
  return prefix + ReplaceAll(entry.name, kDay, words.unit);
}

std::vector<std::string> ArgumentLabels(const ItemEntry& entry, SeriesForm form) {
  const FormWords& words = WordsOf(form);
  std::vector<std::string> labels;
  for (size_t i = 0; i < entry.ParameterCount(); ++i) {
    labels.push_back(ReplaceAll(entry.labels[i], kDay, words.unit));
  }
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
  for (const SeriesForm form : kAllForms) {
    const std::string_view prefix = WordsOf(form).prefix;
    if (form != SeriesForm::kDaily && !name.starts_with(prefix)) continue;
    // The rest is compared with daily names, because folding writes 週 and 月 as 日.
    const std::string rest = Folded(name.substr(prefix.size()));
    for (const ItemEntry& entry : ItemCatalogue()) {
      if (entry.HasForm(form) && Folded(entry.name) == rest) return {&entry, form};
    }
  }
  return {};
}

std::string UnknownItem(std::string_view name) {
  const FoundItem similar = FindSimilarItem(name);
  std::string message = "分析項目" + Quoted(name) + "はありません";
  if (similar.entry != nullptr) {
    message += "（" + Quoted(ItemName(*similar.entry, similar.form)) + "ではありませんか）";
  }
  return message + "。";
}

}  // namespace orin::analysis
