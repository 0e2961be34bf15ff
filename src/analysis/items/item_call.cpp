#include "analysis/items/item_call.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <limits>
#include <optional>
#include <tuple>
#include <vector>

#include "analysis/condition_text.h"
#include "analysis/items/day_keywords.h"
#include "analysis/items/item_families.h"
#include "analysis/items/name_folding.h"
#include "analysis/operator_codes.h"
#include "indicators/indicator.h"

namespace orin::analysis {

using base::DayIndex;

namespace {

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

std::string MissingArguments(std::string_view name, const std::vector<std::string>& labels) {
  return Quoted(name) + "の後の括弧「(」「)」の中に引数（" + LabelList(labels) +
         "）を書いてください。";
}

std::string WrongCount(std::string_view name, const std::vector<std::string>& labels,
                       size_t given) {
  return Quoted(name) + "の引数は" + std::to_string(labels.size()) + "個（" + LabelList(labels) +
         "）ですが、" + std::to_string(given) + "個あります。";
}

// In braces a "-" with a blank before it has become the letter of a subtraction, which nobody
// who typed "( -1)" would recognise. Arguments have no letters of their own.
std::string NotInteger(std::string_view name, const std::vector<std::string>& labels,
                       std::string_view argument) {
  const std::string typed = AsTyped(argument);
  if (typed != argument && ParseInteger(typed)) {
    return Quoted(name) + "の引数" + Quoted(typed) +
           "の「-」は、「(」か「,」のすぐ後に空白を入れずに書いてください。";
  }
  const bool is_ascii =
      std::all_of(typed.begin(), typed.end(), [](char c) { return (c & 0x80) == 0; });
  if (!is_ascii && ParseInteger(FoldName(typed))) {
    return Quoted(name) + "の引数" + Quoted(typed) + "は半角の数字で書いてください。";
  }
  return Quoted(name) + "の引数（" + LabelList(labels) + "）は整数で指定しますが、" +
         Quoted(typed) + "は整数ではありません。";
}

std::string WrongKeyword(std::string_view name, SeriesForm form, const FoundKeyword& found) {
  const auto example = [](SeriesForm of) {
    return Quoted(DayKeywordText({{DayKeyword::kAnalysisDate, 1}, CountedForm(of)}));
  };
  return Quoted(name) + "には" + Quoted(DayKeywordText(found)) + "ではなく、" + example(form) +
         "のように同じ種類の足を数えるキーワードを書いてください。";
}

std::string UnreadBehindKeyword(std::string_view keyword) {
  return Quoted(keyword) +
         "のすぐ後の「+」「-」には整数だけを書けます。引き算のときは「-"
         "」の前に空白を入れてください。";
}

std::string MisplacedParentheses() {
  return "「(」と「)」は分析項目の引数を囲みます。計算のまとまりは「{」と「}」で囲んでください。";
}

std::string UnreadRest(std::string_view call, std::string_view rest) {
  return Quoted(call) + "の後の" + Quoted(rest) +
         "は演算子として読めません。演算子（+、-、*、/ など）と比較（=、<>、<、<=、>、>=）は"
         "半角で書いてください。";
}

// The end of the argument list that begins at `open`: behind the ")" that closes it, npos where
// none does.
size_t EndOfArguments(std::string_view text, size_t open) {
  size_t depth = 0;
  for (size_t i = open; i < text.size(); ++i) {
    if (text[i] == '(') ++depth;
    if (text[i] == ')' && --depth == 0) return i + 1;
  }
  return std::string_view::npos;
}

// What stands wrong about the parentheses of a text, none of which is at its right place where
// `end` is not its end.
ItemFault FaultOfShape(std::string_view text, size_t open, size_t end) {
  const std::string_view name = text.substr(0, open);
  const size_t sign = name.find_first_of("+-");
  if (sign != name.npos && FindDayKeyword(TrimAllBlanks(name.substr(0, sign)))) {
    return {UnreadBehindKeyword(TrimAllBlanks(name.substr(0, sign)))};
  }
  const bool closes_only = open == std::string_view::npos && name.find(')') != name.npos;
  if (name.empty() || closes_only) return {MisplacedParentheses()};
  const FoundItem found = FindItem(name);
  if (found.entry == nullptr) return {UnknownItem(name)};
  if (open == std::string_view::npos || end == std::string_view::npos) {
    return {MissingArguments(name, ArgumentLabels(*found.entry, found.form))};
  }
  const std::string_view rest = TrimAllBlanks(text.substr(end));
  const std::string_view before = text.substr(0, static_cast<size_t>(rest.data() - text.data()));
  const auto characters = std::count_if(before.begin(), before.end(), BeginsCharacter);
  return {UnreadRest(text.substr(0, end), rest), static_cast<size_t>(characters)};
}

// nullopt, or the sentence about an offset that is none.
std::optional<std::string> ReadOffset(std::string_view name, const std::vector<std::string>& labels,
                                      std::string_view argument, BoundItem& item) {
  if (const auto value = ParseInteger(argument)) {
    item.offset = *value;
    return std::nullopt;
  }
  const auto place = ParseKeywordPlace(argument);
  if (!place || item.entry->family->ending != ItemFamily::Ending::kOffset) {
    return NotInteger(name, labels, argument);
  }
  // Every series has a bar of the examined day.
  const bool is_examined_day = place->found.keyword.keyword == DayKeyword::kCurrentDay;
  if (CountedForm(item.form) != place->found.form) {
    return WrongKeyword(name, item.form, place->found);
  }
  item.offset = place->offset;
  if (!is_examined_day) item.keyword = place->found.keyword;
  return std::nullopt;
}

// nullopt, or the sentence about arguments that do not fit the item.
std::optional<std::string> ReadArguments(std::string_view name, std::string_view list,
                                         BoundItem& item) {
  const std::vector<std::string_view> arguments = SplitArguments(list);
  const std::vector<std::string> labels = ArgumentLabels(*item.entry, item.form);
  const bool takes_zero = item.entry->family->ending == ItemFamily::Ending::kOptionalZero;
  const std::string zero_only = Quoted(name) + "の引数は書かないか、0だけを書いてください。";
  if (takes_zero && arguments.size() != 1) return zero_only;
  if (arguments.size() != labels.size()) return WrongCount(name, labels, arguments.size());
  const size_t parameters = item.entry->ParameterCount();
  for (size_t i = 0; i < parameters; ++i) {
    const std::optional<int32_t> value = ParseInteger(arguments[i]);
    if (!value) return NotInteger(name, labels, arguments[i]);
    item.arguments[i] = *value;
  }
  if (arguments.size() > parameters) {
    if (auto wrong = ReadOffset(name, labels, arguments.back(), item)) return wrong;
  }
  if (takes_zero && item.offset != 0) return zero_only;
  return std::nullopt;
}

}  // namespace

tl::expected<ItemCall, ItemFault> ItemCall::Bind(std::string_view text, bool explain) {
  const auto fault = [explain](auto make) {
    return tl::unexpected<ItemFault>(explain ? make() : ItemFault{});
  };
  const size_t open = text.find('(');
  const size_t end = open == text.npos ? text.npos : EndOfArguments(text, open);
  const std::string_view name = text.substr(0, open);
  const FoundItem found = FindItem(name);
  BoundItem item;
  item.entry = found.entry;
  item.form = found.form;
  const bool may_stand_bare =
      found.entry != nullptr && found.entry->family->ending == ItemFamily::Ending::kOptionalZero;
  if (open == text.npos && may_stand_bare) return ItemCall(item);
  if (open == text.npos) {
    if (const auto place = ParseKeywordPlace(text)) return ItemCall(KeywordNumber(*place));
  }
  if (found.entry == nullptr || end != text.size()) {
    return fault([&] { return FaultOfShape(text, open, end); });
  }
  item.indicator = indicators::FindIndicator(found.entry->indicator);
  const auto wrong = ReadArguments(name, text.substr(open + 1, end - open - 2), item);
  if (wrong) return fault([&] { return ItemFault{*wrong}; });
  return ItemCall(item);
}

std::optional<std::string> ItemCall::WhyNever() const {
  const ItemEntry& entry = *item_.entry;
  const std::string name = Quoted(ItemName(entry, item_.form));
  const std::vector<std::string> labels = ArgumentLabels(entry, item_.form);
  for (size_t i = 0; i < entry.ParameterCount(); ++i) {
    if (item_.IsWithinLimits(i)) continue;
    const auto [minimum, maximum] = item_.LimitsOf(i);
    const bool is_open = maximum == std::numeric_limits<int32_t>::max();
    return name + "の" + Quoted(labels[i]) + "が" + std::to_string(item_.arguments[i]) +
           "なので、値がありません。" + std::to_string(minimum) +
           (is_open ? "以上で" : "から" + std::to_string(maximum) + "までの整数で") +
           "指定してください。";
  }
  if (!IsAlwaysLater()) return std::nullopt;
  const std::string because = name + "の" + Quoted(labels.back()) + "が" +
                              std::to_string(item_.offset) +
                              "で、分析する日より後になるので、値がありません。";
  if (item_.Lead() == 0) return because + "0か負の数で指定してください。";
  return because + std::to_string(-int64_t{item_.Lead()}) + "以下で指定してください。";
}

bool ItemCall::IsAlwaysLater() const {
  return !item_.keyword && int64_t{item_.offset} + item_.Lead() > 0;
}

std::optional<int32_t> ItemCall::FunctionNumber() const {
  if (item_.entry->family != &kFunctionNumberItems) return std::nullopt;
  return item_.entry->number;
}

bool ItemCall::ReadsSecondStock() const {
  return item_.form == SeriesForm::kSecond || item_.entry->family->reads_second;
}

bool ItemCall::IsShiftOf(const ItemCall& other) const {
  const bool counts_days = item_.form == SeriesForm::kDaily || item_.form == SeriesForm::kSecond;
  const bool counts_from_day = !item_.keyword && item_.offset <= 0 && other.item_.offset <= 0;
  if (item_.indicator == nullptr || !counts_days || !counts_from_day) return false;
  BoundItem shifted = item_;
  shifted.offset = other.item_.offset;
  return shifted == other.item_;
}

bool ItemCall::IsListedBefore(const ItemCall& a, const ItemCall& b) {
  const auto key = [](const BoundItem& item) {
    return std::tuple(item.entry, item.form, item.arguments, item.keyword, -int64_t{item.offset});
  };
  return key(a.item_) < key(b.item_);
}

bool ItemCall::IsBuyPrice() const { return item_.entry->family == &kBuyPriceItem; }

bool ItemCall::IsSellPrice() const { return item_.entry->family == &kSellPriceItem; }

History ItemCall::Needs() const {
  if (IsAlwaysLater()) return {};
  BoundItem item = item_;
  // The day of a keyword may be any one.
  if (item_.keyword) item.offset = std::numeric_limits<int32_t>::min();
  return item_.entry->family->needs(item);
}

void ItemCall::Evaluate(StockContext& context, DayIndex first, DayIndex last,
                        base::ValueColumn& out) const {
  const int64_t count = int64_t{last.Value()} - first.Value() + 1;
  out.Reset(count > 0 ? static_cast<size_t>(count) : 0);
  if (count <= 0 || IsAlwaysLater()) return;
  // A day that does not exist has no days before it either.
  const DayIndex last_day(std::min(last.Value(), context.Daily().Count()));
  if (item_.keyword && !IsKeywordNumber(item_)) {
    return EvaluateAtKeyword(item_, context, first, last_day, out);
  }
  item_.entry->family->evaluate(item_, context, first, last_day, out);
}

Value ItemValue(std::string_view item_call, StockContext& context, DayIndex day) {
  const auto call = ItemCall::Bind(item_call, false);
  if (!call) return Value::Failed();
  base::ValueColumn column;
  call->Evaluate(context, day, day, column);
  return column.Has(0) ? Value::Of(column.At(0)) : Value::Failed();
}

}  // namespace orin::analysis
