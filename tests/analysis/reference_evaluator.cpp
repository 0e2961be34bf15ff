#include "reference_evaluator.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <vector>

#include "analysis/items/item_call.h"
#include "analysis/operators.h"
#include "analysis/tokenizer.h"

namespace orin::analysis {

namespace {

using Codes = std::vector<std::string>;

struct Depth {
  std::string sign;
  std::array<Codes, 6> passes;
};

const Depth kDepths[] = {
    {"J", {{{"R"}, {"D"}, {"N", "Y"}, {"G"}, {"moD"}, {"V", "J"}}}},
    {"I", {{{"Q"}, {"C"}, {"L", "X"}, {"F"}, {"mOd"}, {"U", "I"}}}},
    {"H", {{{"P"}, {"B"}, {"K", "W"}, {"E"}, {"mOD"}, {"T", "H"}}}},
    {"-", {{{"?"}, {"^"}, {"*", "/"}, {"\\"}, {"mod", "MOD", "Mod"}, {"+", "-"}}}},
};

struct Entry {
  Token::Kind kind;
  std::string code;
  Value value;

  [[nodiscard]] bool IsValue() const { return kind == Token::Kind::kOperand && value.ok; }
};

Value LeafValue(std::string_view text, StockContext& context, base::DayIndex day) {
  if (const auto number = base::Currency::Parse(text)) return Value::Of(*number);
  return ItemValue(text, context, day);
}

bool ApplySigns(std::vector<Entry>& list, const std::string& sign) {
  for (size_t i = list.size(); i-- > 0;) {
    if (list[i].kind != Token::Kind::kSign || list[i].code != sign) continue;
    if (!list[i + 1].IsValue()) return false;
    const auto negated = list[i + 1].value.value.Negated();
    if (!negated) return false;
    list[i + 1].value = Value::Of(*negated);
    list.erase(list.begin() + static_cast<ptrdiff_t>(i));
  }
  return true;
}

bool ApplyPass(std::vector<Entry>& list, const Codes& codes) {
  for (size_t i = 0; i < list.size();) {
    if (list[i].kind != Token::Kind::kOperator ||
        std::find(codes.begin(), codes.end(), list[i].code) == codes.end()) {
      ++i;
      continue;
    }
    if (!list[i - 1].IsValue() || !list[i + 1].IsValue()) return false;
    list[i - 1].value =
        ApplyOperator(list[i - 1].value.value, list[i].code, list[i + 1].value.value);
    if (!list[i - 1].value.ok) return false;
    const auto at = list.begin() + static_cast<ptrdiff_t>(i);
    list.erase(at, at + 2);
  }
  return true;
}

bool RelationHolds(const AndTerm& pieces, size_t relation, StockContext& context,
                   base::DayIndex day) {
  const Value left = ReferenceOperand(pieces[relation - 1].text, context, day);
  const Value right = ReferenceOperand(pieces[relation + 1].text, context, day);
  return left.ok && right.ok && CompareValues(left.value, pieces[relation].text, right.value);
}

bool HasItem(std::string_view operand, bool (ItemCall::*is_item)() const) {
  const auto tokens = TokenizeOperand(operand);
  return std::any_of(tokens.begin(), tokens.end(), [is_item](const Token& token) {
    const auto call = ItemCall::Bind(token.text, false);
    return token.kind == Token::Kind::kOperand && call && ((*call).*is_item)();
  });
}

}  // namespace

Value ReferenceOperand(std::string_view text, StockContext& context, base::DayIndex day) {
  std::vector<Entry> list;
  for (const Token& token : TokenizeOperand(text)) {
    const bool operand = token.kind == Token::Kind::kOperand;
    const Value value = operand ? LeafValue(token.text, context, day) : Value::Failed();
    if (operand && !value.ok) return Value::Failed();
    list.push_back({token.kind, std::string(token.text), value});
  }
  for (const Depth& depth : kDepths) {
    if (!ApplySigns(list, depth.sign)) return Value::Failed();
    for (const Codes& codes : depth.passes) {
      if (!ApplyPass(list, codes)) return Value::Failed();
    }
  }
  return list.size() == 1 ? list[0].value : Value::Failed();
}

TradePrices ReferencePrices(const CompiledCondition& condition, StockContext& context,
                            base::DayIndex day) {
  TradePrices after = context.Trade();
  for (const OrTerm& and_terms : condition.or_terms) {
    for (const AndTerm& pieces : and_terms) {
      for (size_t i = 1; i + 1 < pieces.size(); i += 2) {
        const Value left = ReferenceOperand(pieces[i - 1].text, context, day);
        if (!RelationHolds(pieces, i, context, day)) continue;
        const auto price = static_cast<float>(left.value.ToDouble());
        if (HasItem(pieces[i - 1].text, &ItemCall::IsBuyPrice)) after.buy = price;
        if (HasItem(pieces[i - 1].text, &ItemCall::IsSellPrice)) after.sell = price;
      }
    }
  }
  return after;
}

bool ReferenceCondition(const CompiledCondition& condition, StockContext& context,
                        base::DayIndex day) {
  const auto and_term_holds = [&](const AndTerm& pieces) {
    for (size_t i = 1; i + 1 < pieces.size(); i += 2) {
      if (!RelationHolds(pieces, i, context, day)) return false;
    }
    return pieces.size() > 1;
  };
  return std::any_of(condition.or_terms.begin(), condition.or_terms.end(),
                     [&](const OrTerm& and_terms) {
                       return std::all_of(and_terms.begin(), and_terms.end(), and_term_holds);
                     });
}

}  // namespace orin::analysis
