#include "analysis/explanation_outline.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace orin::analysis {

using base::Currency;

namespace {

std::string InQuotes(const std::string& text) { return "「" + text + "」"; }

/// "-2.33％".
std::string PercentText(Currency rate) {
  constexpr int64_t kHundredth = Currency::kScale / 100;
  const auto hundredths = base::DivideHalfToEven(rate.Raw(), kHundredth);
  std::string text = Currency::FromRaw(static_cast<int64_t>(hundredths) * kHundredth).ToText();
  return text.substr(0, text.size() - 2) + "％";
}

/// Where the sides of a false relation lie.
std::string Gap(const ExplainedRelation& relation) {
  const Currency left = relation.left.value.value;
  const Currency right = relation.right.value.value;
  if (left == right) return "左右が等しい値です";
  const std::string verb = relation.relation == "=" ? "違います"
                           : left < right           ? "足りません"
                                                    : "超えています";
  if (!relation.difference) return verb;
  const std::string size = relation.difference->Abs().value_or(Currency()).ToText();
  if (!relation.difference_rate) return size + " " + verb;
  return size + "（" + PercentText(relation.difference_rate->Abs().value_or(Currency())) + "）" +
         verb;
}

/// "2番目の条件「…」が成り立たないからです（…）。"
std::string Reason(const FirstFalse& found) {
  const ExplainedRelation& relation = *found.relation;
  const std::string what = std::to_string(found.and_term) + "番目の条件" + InQuotes(relation.text);
  if (relation.relation.empty()) return what + "に比較演算子がないからです。";
  for (const auto& [side, name] :
       {std::pair(&relation.left, "左"), std::pair(&relation.right, "右")}) {
    if (!side->value.ok) return what + "の" + name + "が計算できないからです。" + side->failure;
  }
  return what + "が成り立たないからです（左 " + relation.left.value.value.ToText() + "、右 " +
         relation.right.value.value.ToText() + "、" + Gap(relation) + "）。";
}

std::string Outcome(const Explanation& explanation) {
  if (explanation.truth) return "選ばれます。\n";
  const auto& or_terms = explanation.or_terms;
  const auto reason = [](const ExplainedOrTerm& or_term) {
    const auto found = FindFirstFalse(or_term);
    return found ? Reason(*found) : std::string();
  };
  if (or_terms.size() == 1) return "選ばれません。" + reason(or_terms[0]) + "\n";
  std::string text = "選ばれません。Or で区切った" + std::to_string(or_terms.size()) +
                     "つのどれも成り立たないからです。\n";
  for (size_t i = 0; i < or_terms.size(); ++i) {
    text += "  " + std::to_string(i + 1) + "つ目：" + reason(or_terms[i]) + "\n";
  }
  return text;
}

std::string BarsText(const DatedSpan& bars) {
  // A number of bars, and one bar that has two dates.
  struct Words {
    std::string_view several;
    std::string_view one;
  };
  constexpr std::array<Words, kAllForms.size()> kWords = {
      {{"本", ""}, {"週", " の週"}, {"か月", " の月"}, {"本", ""}}};
  const Words& words = kWords[static_cast<size_t>(bars.form)];
  const std::string first = bars.oldest.first.ToText();
  const std::string last = bars.examined.last.ToText();
  const std::string range = first == last ? first : first + "～" + last;
  if (bars.count == 1) return range + std::string(words.one);
  return range + "（" + (bars.from_first ? "最初から" : "") + std::to_string(bars.count) +
         std::string(words.several) + "）";
}

/// Collects the rows of an outline.
class Outline {
 public:
  void AddHeading(size_t level, std::string text, bool truth) {
    rows_.push_back({level, std::move(text), "", "", truth});
  }

  void AddOperand(size_t level, const std::string& label, const ExplainedOperand& operand) {
    if (operand.IsOneItem()) {
      AddItem(level, label, operand.items[0]);
      return;
    }
    const bool item_fails = std::any_of(operand.items.begin(), operand.items.end(),
                                        [](const ExplainedItem& item) { return !item.value.ok; });
    AddValue(level, label + operand.text, operand.value,
             item_fails ? "計算できません。" : operand.failure);
    for (const ExplainedItem& item : operand.items) AddItem(level + 2, "", item);
  }

  void AddDifference(size_t level, const ExplainedRelation& relation) {
    if (!relation.difference) return;
    const auto& rate = relation.difference_rate;
    rows_.push_back(
        {level, "差", relation.difference->ToText(), rate ? "右の " + PercentText(*rate) : "", {}});
  }

  std::vector<OutlineRow> Take() { return std::move(rows_); }

 private:
  void AddItem(size_t level, const std::string& label, const ExplainedItem& item) {
    AddValue(level, label + item.text, item.value,
             item.value.ok && item.bars ? BarsText(*item.bars) : item.failure);
  }

  void AddValue(size_t level, const std::string& text, const Value& value,
                const std::string& remark) {
    rows_.push_back({level, text, value.ok ? value.value.ToText() : "－", remark, {}});
  }

  std::vector<OutlineRow> rows_;
};

std::string_view TruthWords(bool truth, bool needed) {
  if (needed) return truth ? "成り立つ" : "成り立たない";
  return truth ? "調べていない（調べれば成り立つ）" : "調べていない（調べても成り立たない）";
}

std::string HeadingOf(const std::string& what, const std::string& text, bool truth, bool needed) {
  return what + InQuotes(text) + "：" + std::string(TruthWords(truth, needed));
}

void AddRelation(Outline& outline, size_t level, const ExplainedRelation& relation) {
  outline.AddOperand(level, "左  ", relation.left);
  if (relation.relation.empty()) return;
  outline.AddOperand(level, "右  ", relation.right);
  outline.AddDifference(level, relation);
}

void AddAndTerm(Outline& outline, size_t level, size_t number, const ExplainedAndTerm& term) {
  outline.AddHeading(level,
                     HeadingOf(std::to_string(number) + "番目の条件", term.text, term.truth,
                               term.relations.front().needed),
                     term.truth);
  const bool is_chain = term.relations.size() > 1;
  for (const ExplainedRelation& relation : term.relations) {
    if (is_chain) {
      outline.AddHeading(level + 1, HeadingOf("", relation.text, relation.truth, relation.needed),
                         relation.truth);
    }
    AddRelation(outline, is_chain ? level + 2 : level + 1, relation);
  }
}

void AddOrTerms(Outline& outline, const std::vector<ExplainedOrTerm>& or_terms) {
  const bool has_several = or_terms.size() > 1;
  for (size_t i = 0; i < or_terms.size(); ++i) {
    const ExplainedOrTerm& term = or_terms[i];
    if (has_several) {
      outline.AddHeading(0,
                         HeadingOf("Or の" + std::to_string(i + 1) + "つ目", term.text, term.truth,
                                   term.and_terms.front().relations.front().needed),
                         term.truth);
    }
    for (size_t j = 0; j < term.and_terms.size(); ++j) {
      AddAndTerm(outline, has_several ? 1 : 0, j + 1, term.and_terms[j]);
    }
  }
}

std::string ValueOutcome(const ExplainedOperand& value) {
  const std::string what = InQuotes(value.text) + "は";
  if (value.value.ok) return what + " " + value.value.value.ToText() + " です。\n";
  return what + "計算できません。" + value.failure + "\n";
}

}  // namespace

std::string OutcomeText(const Explanation& explanation, const std::string& stock, base::Date date) {
  if (explanation.value) {
    return stock + "の " + date.ToText() + " の" + ValueOutcome(*explanation.value);
  }
  return stock + "は " + date.ToText() + " に" + Outcome(explanation);
}

std::vector<OutlineRow> OutlineOf(const Explanation& explanation) {
  Outline outline;
  if (explanation.value) {
    outline.AddOperand(0, "", *explanation.value);
  } else {
    AddOrTerms(outline, explanation.or_terms);
  }
  return outline.Take();
}

}  // namespace orin::analysis
