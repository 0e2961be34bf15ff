#include "analysis/items/item_call.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>
#include <vector>

#include "base/text.h"
#include "indicators/indicator.h"

namespace orin::analysis {

using base::DayIndex;

namespace {

constexpr std::string_view kWideBlank = "\u3000";

std::string Quoted(std::string_view text) { return "「" + std::string(text) + "」"; }

tl::unexpected<ItemFault> Fault(std::string message) {
  return tl::unexpected<ItemFault>(ItemFault{std::move(message)});
}

std::string_view TrimAllBlanks(std::string_view text) {
  for (;;) {
    const size_t before = text.size();
    text = base::TrimBlanks(text);
    if (text.starts_with(kWideBlank)) text.remove_prefix(kWideBlank.size());
    if (text.ends_with(kWideBlank)) text.remove_suffix(kWideBlank.size());
    if (text.size() == before) return text;
  }
}

/// The texts between the commas; none for an empty list.
std::vector<std::string_view> SplitArguments(std::string_view list) {
  std::vector<std::string_view> pieces;
  if (TrimAllBlanks(list).empty()) return pieces;
  for (;;) {
    const size_t comma = list.find(',');
    pieces.push_back(TrimAllBlanks(list.substr(0, comma)));
    if (comma == std::string_view::npos) return pieces;
    list.remove_prefix(comma + 1);
  }
}

std::optional<int32_t> ParseInteger(std::string_view text) {
  int32_t value = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  if (text.empty() || error != std::errc() || stop != end) return std::nullopt;
  return value;
}

/// "「移動平均日数」「何日前(前日のとき－１を指定）」", or "なし".
std::string LabelList(const std::vector<std::string>& labels) {
  std::string list;
  for (const std::string& label : labels) list += Quoted(label);
  return list.empty() ? "なし" : list;
}

std::string UnknownItem(std::string_view name) {
  const FoundItem similar = FindSimilarItem(name);
  std::string message = "分析項目" + Quoted(name) + "はありません";
  if (similar.entry != nullptr) {
    message += "（" + Quoted(ItemName(*similar.entry, similar.form)) + "ではありませんか）";
  }
  return message + "。";
}

std::string WrongCount(std::string_view name, const std::vector<std::string>& labels,
                       size_t given) {
  return Quoted(name) + "の引数は" + std::to_string(labels.size()) + "個（" + LabelList(labels) +
         "）ですが、" + std::to_string(given) + "個あります。";
}

std::string NotInteger(std::string_view name, const std::vector<std::string>& labels,
                       std::string_view argument) {
  return Quoted(name) + "の引数（" + LabelList(labels) + "）は整数で指定しますが、" +
         Quoted(argument) + "は整数ではありません。";
}

}  // namespace

tl::expected<ItemCall, ItemFault> ItemCall::Bind(std::string_view text) {
  const size_t open = text.find('(');
  const std::string_view name = text.substr(0, open);
  const FoundItem found = FindItem(name);
  if (found.entry == nullptr) return Fault(UnknownItem(name));
  const std::vector<std::string> labels = ArgumentLabels(*found.entry, found.form);
  if (open == std::string_view::npos || !text.ends_with(')')) {
    return Fault(Quoted(name) + "の後の括弧「(」「)」の中に引数（" + LabelList(labels) +
                 "）を書いてください。");
  }
  const std::vector<std::string_view> arguments =
      SplitArguments(text.substr(open + 1, text.size() - open - 2));
  if (arguments.size() != labels.size()) {
    return Fault(WrongCount(name, labels, arguments.size()));
  }

  BoundItem item;
  item.entry = found.entry;
  item.indicator = indicators::FindIndicator(found.entry->indicator);
  item.form = found.form;
  for (size_t i = 0; i < arguments.size(); ++i) {
    const std::optional<int32_t> value = ParseInteger(arguments[i]);
    if (!value) return Fault(NotInteger(name, labels, arguments[i]));
    const bool is_offset = i == found.entry->ParameterCount();
    (is_offset ? item.offset : item.arguments[i]) = *value;
  }
  return ItemCall(item);
}

History ItemCall::Needs() const {
  return item_.offset > 0 ? History{} : item_.entry->family->needs(item_);
}

void ItemCall::Evaluate(StockContext& context, DayIndex first, DayIndex last,
                        base::ValueColumn& out) const {
  const int64_t count = int64_t{last.Value()} - first.Value() + 1;
  out.Reset(count > 0 ? static_cast<size_t>(count) : 0);
  if (count <= 0 || item_.offset > 0) return;
  // A day that does not exist has no days before it either.
  const DayIndex last_day(std::min(last.Value(), context.Daily().Count()));
  item_.entry->family->evaluate(item_, context, first, last_day, out);
}

Value ItemValue(std::string_view item_call, StockContext& context, DayIndex day) {
  const auto call = ItemCall::Bind(item_call);
  if (!call) return Value::Failed();
  base::ValueColumn column;
  call->Evaluate(context, day, day, column);
  return column.valid[0] != 0 ? Value::Of(column.values[0]) : Value::Failed();
}

}  // namespace orin::analysis
