#include "analysis/failure_reason.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <vector>

#include "analysis/condition_text.h"
#include "analysis/items/item_families.h"
#include "analysis/items/item_span.h"
#include "analysis/node_table.h"
#include "analysis/operand_builder.h"
#include "analysis/operators.h"
#include "indicators/indicator.h"

namespace orin::analysis {

using base::BarsView;
using base::DayIndex;

namespace {

constexpr std::string_view kUnknown = "計算できません。";

/// Why there is no value although all bars that are read have data, or would not have one with it.
std::string NoValueFromBars(const indicators::Indicator& indicator, const ItemSpan& span) {
  if (span.from_first) return "その日までのデータのある足が足りないので、計算できません。";
  if (indicator.output == indicators::Unit::kPercent) {
    return "期間に値動きか出来高がなく、割る数が 0 になるので、計算できません。";
  }
  return "期間の足からは値が決まりません。";
}

std::string_view NameOfBars(SeriesForm form) {
  constexpr std::array<std::string_view, kAllForms.size()> kNames = {"日足", "週足", "月足",
                                                                     "第二銘柄の日足"};
  return kNames[static_cast<size_t>(form)];
}

BarsView BarsOf(SeriesForm form, StockContext& context, DayIndex day) {
  switch (form) {
    case SeriesForm::kWeekly:
      return context.WeeklyAsOf(day);
    case SeriesForm::kMonthly:
      return context.MonthlyAsOf(day);
    case SeriesForm::kSecond:
      return context.Second();
    case SeriesForm::kDaily:
      return context.Daily();
  }
  return {};
}

std::string NoSuchBars(const ItemSpan& span) {
  if (span.examined > span.newest) return "分析する日より後の足なので、計算できません。";
  // Of items that read all bars only the one that is named is sure to be needed.
  const int64_t oldest = span.from_first ? span.examined : span.oldest;
  return std::string(NameOfBars(span.form)) + "が足りません（" +
         std::to_string(span.newest - oldest + 1) + "本必要ですが、" + std::to_string(span.newest) +
         "本しかありません）。";
}

/// The bars of a span as they might have been: the indicator is asked again with data in the place
/// of data that is missing.
class SupposedBars {
 public:
  SupposedBars(const BoundItem& item, BarsView bars, const ItemSpan& span)
      : item_(item), bars_(bars), span_(span) {}

  [[nodiscard]] std::string DateText(int32_t t) const { return bars_.DateOf(t).ToText(); }

  [[nodiscard]] std::vector<int32_t> MissingBars() const {
    std::vector<int32_t> missing;
    for (int32_t t = Oldest(); t <= Examined(); ++t) {
      if (!bars_.HasData(t)) missing.push_back(t);
    }
    return missing;
  }

  /// Whether there were a value if these bars had data.
  [[nodiscard]] bool HaveValueWith(const std::vector<int32_t>& filled) const {
    base::BarColumns supposed;
    for (int32_t t = Oldest(); t <= Examined(); ++t) supposed.Append(BarAt(t));
    for (const int32_t t : filled) {
      supposed.Put(static_cast<size_t>(t - Oldest()), BarAt(NearestWithData(t)));
    }
    base::Currency value = base::kNoValue;
    indicators::ComputeInto(*item_.indicator, BarsView(supposed, Oldest()), item_.arguments,
                            Examined(), Examined(), indicators::Span::kWhole,
                            indicators::ColumnSink(&value, Examined()));
    return value != base::kNoValue;
  }

 private:
  [[nodiscard]] int32_t Oldest() const { return static_cast<int32_t>(span_.oldest); }
  [[nodiscard]] int32_t Examined() const { return static_cast<int32_t>(span_.examined); }

  /// Prices that the indicator does not read may not have been loaded.
  [[nodiscard]] base::Bar BarAt(int32_t t) const {
    const base::PriceFields read = item_.indicator->reads;
    base::Bar bar;
    bar.date = bars_.DateOf(t);
    if (read.Has(base::PriceFields::kOpen)) bar.open = bars_.Open(t);
    if (read.Has(base::PriceFields::kHigh)) bar.high = bars_.High(t);
    if (read.Has(base::PriceFields::kLow)) bar.low = bars_.Low(t);
    if (read.Has(base::PriceFields::kClose)) bar.close = bars_.Close(t);
    bar.volume = bars_.Volume(t);
    return bar;
  }

  /// The bar itself where none has data.
  [[nodiscard]] int32_t NearestWithData(int32_t t) const {
    for (int32_t distance = 1; distance < span_.Count(); ++distance) {
      const int32_t before = t - distance;
      const int32_t after = t + distance;
      if (before >= Oldest() && bars_.HasData(before)) return before;
      if (after <= Examined() && bars_.HasData(after)) return after;
    }
    return t;
  }

  const BoundItem& item_;
  BarsView bars_;
  const ItemSpan& span_;
};

std::string MissingData(const ItemCall& call, BarsView bars, const ItemSpan& span) {
  const SupposedBars supposed(call.Bound(), bars, span);
  const std::vector<int32_t> missing = supposed.MissingBars();
  const std::string no_value = NoValueFromBars(*call.Bound().indicator, span);
  if (missing.empty()) return no_value;
  const std::string days_bar = supposed.DateText(missing.back());
  if (missing.back() == span.examined &&
      (span.Count() == 1 || supposed.HaveValueWith({missing.back()}))) {
    return days_bar + " のデータがありません。";
  }
  if (missing.front() == span.oldest && supposed.HaveValueWith({missing.front()})) {
    return "期間の最初の足（" + supposed.DateText(missing.front()) + "）のデータがありません。";
  }
  if (!supposed.HaveValueWith(missing)) return no_value;
  return "期間にデータのない足があります（" + std::to_string(missing.size()) +
         "本、最も新しいのは " + days_bar + "）。";
}

/// A spread has no value where one of its days lacks data.
std::string MissingSecondBar(const ItemSpan& span, const StockContext& context) {
  const auto oldest = static_cast<int32_t>(span.oldest);
  for (auto t = static_cast<int32_t>(span.examined); t >= oldest; --t) {
    const std::string date = context.Daily().DateOf(t).ToText();
    if (!context.Daily().HasData(t)) return date + " のデータがありません。";
    if (!context.Second().HasData(t)) return date + " の第二銘柄のデータがありません。";
  }
  return std::string(kUnknown);
}

/// The operation as it might have been typed.
std::string OperationText(OperatorKind kind, base::Currency left, base::Currency right) {
  if (kind != OperatorKind::kFunction) {
    const std::string code(kOperatorRows[static_cast<size_t>(kind)].codes[0]);
    return Quoted(left.ToText() + " " + code + " " + right.ToText());
  }
  for (const ItemEntry& entry : ItemCatalogue()) {
    const bool is_function = entry.family == &kFunctionNumberItems;
    if (is_function && base::Currency::FromInt(entry.number) == left) {
      return Quoted(std::string(entry.name) + "()? " + right.ToText());
    }
  }
  return Quoted(left.ToText() + " ? " + right.ToText());
}

std::string WhyNoResult(OperatorKind kind, base::Currency left, base::Currency right) {
  const bool by_integer = kind == OperatorKind::kIntegerDivide || kind == OperatorKind::kMod;
  const bool by_zero = (kind == OperatorKind::kDivide && right == base::Currency()) ||
                       (by_integer && right.ToInt32() == 0);
  return OperationText(kind, left, right) + (by_zero ? "は 0 での割り算なので、結果がありません。"
                                                     : "の結果がないか、値の範囲を越えています。");
}

/// The nodes of one operand, computed one by one for one day.
class NodeWalk {
 public:
  NodeWalk(const NodeTable& nodes, std::vector<ItemCall> items, StockContext& context, DayIndex day)
      : nodes_(nodes), items_(std::move(items)), context_(context), day_(day) {}

  /// The sentence about the first node that has no value.
  std::string FindFailure(const OperandBuilder::Operand& operand) {
    values_.assign(size_t{operand.root} + 1, Value::Failed());
    for (const uint32_t number : operand.computed) {
      values_[number] = Compute(nodes_[number]);
      if (values_[number].ok) continue;
      const Node& node = nodes_[number];
      if (node.kind != Node::Kind::kOperation) break;
      return WhyNoResult(node.operation, ValueOf(node.left).value, ValueOf(node.right).value);
    }
    return std::string(kUnknown);
  }

 private:
  Value ValueOf(uint32_t number) const {
    const Node& node = nodes_[number];
    return node.kind == Node::Kind::kLiteral ? Value::Of(node.literal) : values_[number];
  }

  Value Compute(const Node& node) {
    if (node.kind == Node::Kind::kItem) {
      base::ValueColumn column;
      items_[node.left].Evaluate(context_, day_, day_, column);
      return column.Has(0) ? Value::Of(column.At(0)) : Value::Failed();
    }
    const Value left = ValueOf(node.left);
    if (node.kind == Node::Kind::kNegated) {
      const auto negated = left.value.Negated();
      return negated ? Value::Of(*negated) : Value::Failed();
    }
    return ApplyOperator(left.value, node.operation, ValueOf(node.right).value);
  }

  const NodeTable& nodes_;
  std::vector<ItemCall> items_;
  StockContext& context_;
  DayIndex day_;
  std::vector<Value> values_;
};

}  // namespace

std::string WhyItemFails(const ItemCall& call, StockContext& context, DayIndex day) {
  const ItemFamily& family = *call.Bound().entry->family;
  const History needs = call.Needs();
  if (const auto never = call.WhyNever()) return *never;
  if (call.ReadsSecondStock() && !context.HasSecond()) return "第二銘柄がありません。";
  if (family.needs == TradeNeeds) return "シミュレーション中の売買がまだありません。";
  if (needs.companies) return "会社のデータにこの値がありません。";
  if (needs.rankings) return "その日のランキングに順位がありません。";
  const auto& keyword = call.Bound().keyword;
  if (keyword && !context.KeywordDays().Of(*keyword, day))
    return "キーワードの日がまだ決まっていません。";
  const auto span = SpanOf(call, context, day);
  if (!span) return std::string(kUnknown);
  if (!span->Exists()) return NoSuchBars(*span);
  if (needs.credit) return "信用残のデータがありません。";
  if (family.reads_second) return MissingSecondBar(*span, context);
  const BarsView bars = BarsOf(span->form, context, day);
  if (call.Bound().indicator != nullptr) return MissingData(call, bars, *span);
  const auto examined = static_cast<int32_t>(span->examined);
  if (bars.HasData(examined)) return std::string(kUnknown);
  return bars.DateOf(examined).ToText() + " のデータがありません。";
}

std::string WhyOperationFails(const Piece& operand, StockContext& context, DayIndex day) {
  NodeTable nodes;
  std::vector<Note> notes;
  const std::vector<Stretch> explained;
  OperandBuilder builder(nodes, notes, explained);
  const OperandBuilder::Operand built = builder.Build(operand, 1);
  // What fails whatever the day is has been noted.
  if (built.root == NodeTable::kFailed)
    return notes.empty() ? std::string(kUnknown) : notes[0].message;
  return NodeWalk(nodes, nodes.TakeItems(), context, day).FindFailure(built);
}

}  // namespace orin::analysis
