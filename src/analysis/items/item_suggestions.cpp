#include "analysis/items/item_suggestions.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "analysis/condition_text.h"
#include "analysis/condition_words.h"
#include "analysis/items/item_families.h"
#include "analysis/items/item_readings.h"
#include "analysis/items/name_folding.h"
#include "indicators/indicator.h"

namespace orin::analysis {

namespace {

/// What a parameter whose label contains a word usually is, by day, week and month.
struct Usual {
  std::string_view label;
  int32_t day;
  int32_t week;
  int32_t month;
};

/// The first that fits counts.
constexpr Usual kUsual[] = {
    {"偏差", 2, 2, 2},          {"サンプル", 20, 13, 12},     {"ランキング項目番号", 1, 1, 1},
    {"検索市場", 0, 0, 0},      {"ソート順", 1, 1, 1},        {"かぎ足日数", 100, 52, 36},
    {"かぎ足率", 7, 7, 7},      {"転換点", -1, -1, -1},       {"基準", 26, 26, 26},
    {"転換", 9, 9, 9},          {"先行スパン２", 52, 52, 52}, {"先行", 26, 26, 26},
    {"遅行", 26, 26, 26},       {"ＥＭＡ１", 5, 5, 5},        {"ＥＭＡ２", 20, 20, 20},
    {"ＡＤＸ", 14, 14, 14},     {"ＤＩ", 14, 14, 14},         {"ＲＣＩ", 14, 14, 14},
    {"ＲＳＩ", 14, 14, 14},     {"ＶＲ", 14, 14, 14},         {"％Ｋ", 5, 5, 5},
    {"％Ｄ", 3, 3, 3},          {"ＡＦ初期値", 2, 2, 2},      {"ＡＦ増加値", 1, 1, 1},
    {"ＡＦ最大値", 20, 20, 20}, {"移動平均", 25, 13, 12},     {"チェック期間", 20, 13, 12},
    {"数を求める", 12, 12, 12},
};
constexpr Usual kOtherwise = {"", 25, 13, 12};

int32_t UsualOf(std::string_view label, SeriesForm form) {
  const auto found = std::ranges::find_if(kUsual, [label](const Usual& usual) {
    return label.find(usual.label) != std::string_view::npos;
  });
  const Usual& usual = found == std::end(kUsual) ? kOtherwise : *found;
  return form == SeriesForm::kWeekly    ? usual.week
         : form == SeriesForm::kMonthly ? usual.month
                                        : usual.day;
}

BoundItem ItemOf(const ItemEntry& entry, SeriesForm form) {
  BoundItem item;
  item.entry = &entry;
  item.form = form;
  item.indicator = indicators::FindIndicator(entry.indicator);
  return item;
}

/// An item as the search sees it.
struct Candidate {
  FoundItem item;
  std::string name;  // as shown, folded
  std::string abbreviation;
  std::string reading;
  std::string other_reading;  // by another common way of reading a word; else the same
};

/// Words that are read in two ways; the second is not that of the names' readings.
constexpr std::pair<std::string_view, std::string_view> kReadTwice[] = {
    {"さいたかね", "さいこうち"},
    {"さいやすね", "さいあんち"},
    {"ひとかぶ", "いちかぶ"},
};

std::string OtherReading(std::string reading) {
  for (const auto& [usual, other] : kReadTwice) {
    const size_t at = reading.find(usual);
    if (at != std::string::npos) reading.replace(at, usual.size(), other);
  }
  return reading;
}

std::vector<Candidate> MakeCandidates() {
  std::vector<Candidate> candidates;
  // The daily forms of all items come before the others.
  for (const bool is_daily : {true, false}) {
    for (const ItemEntry& entry : ItemCatalogue()) {
      for (const SeriesForm form : kAllForms) {
        if (!entry.HasForm(form) || (form == SeriesForm::kDaily) != is_daily) continue;
        const std::string reading = ReadingOfItem(ItemName(entry, form));
        candidates.push_back({{&entry, form},
                              FoldName(ShownName(entry, form)),
                              FoldName(entry.abbreviation),
                              reading,
                              OtherReading(reading)});
      }
    }
  }
  return candidates;
}

/// How well a folded word fits, 0 best; nullopt: not at all.
std::optional<int> RankOf(const Candidate& candidate, std::string_view word) {
  if (candidate.name.starts_with(word)) return 0;
  if (!candidate.abbreviation.empty() && candidate.abbreviation.starts_with(word)) return 1;
  if (candidate.reading.starts_with(word)) return 1;
  if (candidate.other_reading.starts_with(word)) return 1;
  if (candidate.name.find(word) != std::string::npos) return 2;
  if (candidate.reading.find(word) != std::string::npos) return 3;
  if (candidate.other_reading.find(word) != std::string::npos) return 3;
  return std::nullopt;
}

ItemSuggestion SuggestionOf(const FoundItem& item) {
  ItemSuggestion suggestion{item, ShownName(*item.entry, item.form), "", ""};
  for (const std::string& label : ArgumentLabels(*item.entry, item.form)) {
    suggestion.labels += (suggestion.labels.empty() ? "" : "、") + label;
  }
  const auto arguments = UsualArguments(*item.entry, item.form);
  suggestion.call =
      CallText(*item.entry, item.form, arguments, NewestOffset(*item.entry, item.form, arguments));
  return suggestion;
}

std::vector<ItemSuggestion> SuggestionsFor(std::string_view folded, size_t most) {
  static const std::vector<Candidate> candidates = MakeCandidates();
  std::array<std::vector<const Candidate*>, 4> ranked;
  for (const Candidate& candidate : candidates) {
    const auto rank = RankOf(candidate, folded);
    if (rank) ranked.at(static_cast<size_t>(*rank)).push_back(&candidate);
  }
  std::vector<ItemSuggestion> suggestions;
  for (const auto& same : ranked) {
    for (const Candidate* candidate : same) {
      if (suggestions.size() < most) suggestions.push_back(SuggestionOf(candidate->item));
    }
  }
  return suggestions;
}

}  // namespace

std::array<int32_t, kMaximumItemArguments> UsualArguments(const ItemEntry& entry, SeriesForm form) {
  const BoundItem item = ItemOf(entry, form);
  std::array<int32_t, kMaximumItemArguments> arguments = {};
  for (size_t i = 0; i < entry.ParameterCount(); ++i) {
    const ArgumentLimits limits = item.LimitsOf(i);
    arguments.at(i) = std::clamp(UsualOf(entry.labels.at(i), form), limits.minimum, limits.maximum);
  }
  return arguments;
}

int32_t NewestOffset(const ItemEntry& entry, SeriesForm form,
                     const std::array<int32_t, kMaximumItemArguments>& arguments) {
  BoundItem item = ItemOf(entry, form);
  item.arguments = arguments;
  return -item.Lead();
}

std::string CallText(const ItemEntry& entry, SeriesForm form,
                     const std::array<int32_t, kMaximumItemArguments>& arguments, int32_t offset) {
  std::string text = ItemName(entry, form);
  if (entry.family == &kFunctionNumberItems) return text + "()? ";
  text += '(';
  for (size_t i = 0; i < entry.ParameterCount(); ++i) {
    if (i > 0) text += ',';
    text += std::to_string(arguments.at(i));
  }
  if (entry.family->ending != ItemFamily::Ending::kNone) {
    if (entry.ParameterCount() > 0) text += ',';
    text += entry.family->ending == ItemFamily::Ending::kOffset ? std::to_string(offset) : "0";
  }
  return text + ')';
}

std::vector<ItemSuggestion> SuggestItems(std::string_view word, size_t most) {
  const std::string folded = FoldName(word);
  if (folded.empty()) return {};
  std::vector<ItemSuggestion> suggestions = SuggestionsFor(folded, most);
  // Of "週間いどう" no name has both parts, but a reading has.
  return suggestions.empty() ? SuggestionsFor(ReadingOfItem(word), most) : suggestions;
}

size_t WordUnderWay(std::string_view before) {
  LineEnd state;
  const std::vector<MarkedWord> words = MarkWords(before, state);
  const auto length = static_cast<size_t>(std::ranges::count_if(before, BeginsCharacter));
  if (words.empty() || state.in_comment) return 0;
  const MarkedWord& last = words.back();
  const bool is_name = last.kind == WordKind::kUnknownItem || last.kind == WordKind::kItem ||
                       last.kind == WordKind::kDayKeyword;
  return is_name && last.first + last.count == length ? last.count : 0;
}

}  // namespace orin::analysis
