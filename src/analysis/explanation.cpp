#include "analysis/explanation.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

#include "analysis/condition_text.h"
#include "analysis/evaluator.h"
#include "analysis/failure_reason.h"
#include "analysis/items/item_call.h"
#include "analysis/program.h"
#include "analysis/splitters.h"
#include "analysis/tokenizer.h"

namespace orin::analysis {

using base::Currency;
using base::DayIndex;

namespace {

/// A condition text without its comments, of which parts are asked for by the places of their
/// characters.
class TypedText {
 public:
  explicit TypedText(std::string_view text) {
    const ConditionText decoded = ConditionText::Decode(text);
    bool in_comment = false;
    for (size_t i = 0; i < decoded.bytes.size(); ++i) {
      const bool is_quote = decoded.bytes[i] == '"';
      if (!in_comment && !is_quote) typed_.Append(decoded.View().Part(i, i + 1));
      in_comment = in_comment != is_quote;
    }
  }

  /// The characters first..last and the braces around them; empty for first 0.
  [[nodiscard]] std::string Part(uint32_t first, uint32_t last) const {
    if (first == 0) return "";
    const auto& positions = typed_.positions;
    const auto at = [&positions](auto found) {
      return static_cast<size_t>(found - positions.begin());
    };
    size_t begin = at(std::lower_bound(positions.begin(), positions.end(), first));
    size_t end = at(std::upper_bound(positions.begin(), positions.end(), last));
    while (begin > 0 && IsAround(typed_.bytes[begin - 1])) --begin;
    while (end < typed_.bytes.size() && IsAround(typed_.bytes[end])) ++end;
    return Collapsed(typed_.View().Part(begin, end));
  }

  [[nodiscard]] std::string Exactly(uint32_t first, uint32_t last) const {
    const auto& positions = typed_.positions;
    const auto begin = std::lower_bound(positions.begin(), positions.end(), first);
    const auto end = std::upper_bound(begin, positions.end(), last);
    return typed_.bytes.substr(static_cast<size_t>(begin - positions.begin()),
                               static_cast<size_t>(end - begin));
  }

 private:
  // Between two pieces stand braces and blanks alone.
  static bool IsAround(char c) { return c == ' ' || c == '\t' || c == '{' || c == '}'; }

  static std::string Collapsed(TextView part) {
    const auto collapsed = CollapseSpaces(part);
    return collapsed ? collapsed->bytes : std::string(part.bytes);
  }

  ConditionText typed_;
};

/// From the first to the last character of the pieces; none where they have no text.
template <typename Pieces>
std::pair<uint32_t, uint32_t> StretchOf(const Pieces& pieces) {
  std::pair<uint32_t, uint32_t> stretch = {0, 0};
  for (const Piece& piece : pieces) {
    if (piece.positions.empty()) continue;
    if (stretch.first == 0) stretch.first = piece.positions.front();
    stretch.second = piece.positions.back();
  }
  return stretch;
}

CompiledCondition OneTerm(AndTerm pieces) {
  CompiledCondition condition;
  condition.or_terms.push_back({std::move(pieces)});
  return condition;
}

class Explainer {
 public:
  Explainer(std::string_view text, StockContext& context, DayIndex day)
      : typed_(text), context_(context), day_(day) {}

  Explanation Run(const CompiledCondition& condition) {
    Explanation explanation;
    explanation.notes = Program::Build(condition).Notes();
    for (const Stretch& stretch : condition.explained) FindNoteOf(stretch, explanation.notes);
    if (condition.IsValue()) {
      explanation.value = ExplainOperand(condition.or_terms[0][0][0]);
      return explanation;
    }
    for (const OrTerm& or_term : condition.or_terms) {
      needed_ = !explanation.truth;
      explanation.or_terms.push_back(ExplainOrTerm(or_term));
      explanation.truth = explanation.truth || explanation.or_terms.back().truth;
    }
    return explanation;
  }

 private:
  [[nodiscard]] std::string TextOf(std::pair<uint32_t, uint32_t> stretch) const {
    return typed_.Part(stretch.first, stretch.second);
  }

  void FindNoteOf(const Stretch& stretch, const std::vector<Note>& notes) {
    const auto note = std::find_if(notes.begin(), notes.end(), [&stretch](const Note& each) {
      return each.position >= stretch.first && each.position <= stretch.last;
    });
    if (note != notes.end()) misread_.push_back({stretch, note->message});
  }

  ExplainedOrTerm ExplainOrTerm(const OrTerm& or_term) {
    ExplainedOrTerm explained;
    std::vector<Piece> pieces;
    explained.truth = true;
    for (const AndTerm& and_term : or_term) {
      pieces.insert(pieces.end(), and_term.begin(), and_term.end());
      explained.and_terms.push_back(ExplainAndTerm(and_term));
      explained.truth = explained.truth && explained.and_terms.back().truth;
    }
    explained.text = TextOf(StretchOf(pieces));
    return explained;
  }

  ExplainedAndTerm ExplainAndTerm(const AndTerm& pieces) {
    ExplainedAndTerm explained;
    explained.text = TextOf(StretchOf(pieces));
    explained.truth = true;
    for (size_t i = 0; i == 0 || i + 2 < pieces.size(); i += 2) {
      const size_t end = std::min(i + 3, pieces.size());
      explained.relations.push_back(
          ExplainRelation({pieces.begin() + static_cast<ptrdiff_t>(i),
                           pieces.begin() + static_cast<ptrdiff_t>(end)}));
      explained.truth = explained.truth && explained.relations.back().truth;
    }
    return explained;
  }

  ExplainedRelation ExplainRelation(const AndTerm& pieces) {
    ExplainedRelation explained;
    explained.text = TextOf(StretchOf(pieces));
    explained.needed = needed_;
    explained.left = ExplainOperand(pieces[0]);
    if (pieces.size() == 3) {
      explained.relation = pieces[1].text;
      explained.right = ExplainOperand(pieces[2]);
      Compare(explained);
      FindTruth(pieces, explained);
    }
    needed_ = needed_ && explained.truth;
    return explained;
  }

  /// As the evaluator finds it. Every relation reads the prices of the trade as they were.
  void FindTruth(const AndTerm& pieces, ExplainedRelation& relation) {
    const TradePrices before = context_.Trade();
    const Program program = Program::Build(OneTerm(pieces));
    relation.truth = Evaluator(program).EvaluateCondition(context_, day_);
    relation.needed = relation.needed || program.StoresPrices();
    context_.Trade() = before;
  }

  static void Compare(ExplainedRelation& relation) {
    const Value& left = relation.left.value;
    const Value& right = relation.right.value;
    if (!left.ok || !right.ok) return;
    relation.difference = left.value.Minus(right.value);
    if (!relation.difference || right.value == Currency()) return;
    relation.difference_rate = Currency::FromDouble(relation.difference->ToDouble() /
                                                    std::abs(right.value.ToDouble()) * 100.0);
  }

  ExplainedOperand ExplainOperand(const Piece& piece) {
    ExplainedOperand explained;
    explained.text = TextOf(StretchOf(std::vector<Piece>{piece}));
    explained.value = ValueOf(piece);
    for (const Token& token : TokenizeOperand(piece.text)) {
      if (token.kind == Token::Kind::kOperand) AddItem(piece, token, explained);
    }
    if (!explained.value.ok && explained.failure.empty()) {
      explained.failure = WhyFailing(explained, piece);
    }
    return explained;
  }

  std::string WhyFailing(const ExplainedOperand& operand, const Piece& piece) {
    const auto failed = std::find_if(operand.items.begin(), operand.items.end(),
                                     [](const ExplainedItem& item) { return !item.value.ok; });
    if (failed == operand.items.end()) return WhyOperationFails(piece, context_, day_);
    return operand.IsOneItem() ? failed->failure : Quoted(failed->text) + "：" + failed->failure;
  }

  Value ValueOf(const Piece& piece) {
    const Program program = Program::Build(OneTerm({piece}));
    return Evaluator(program).EvaluateOperand(context_, day_);
  }

  std::string WhyItemFailing(const Piece& item, const tl::expected<ItemCall, ItemFault>& call) {
    const Program program = Program::Build(OneTerm({item}));
    if (!program.Notes().empty()) return program.Notes().front().message;
    return call ? WhyItemFails(*call, context_, day_) : call.error().message;
  }

  void AddItem(const Piece& piece, const Token& token, ExplainedOperand& operand) {
    if (token.text.empty() || Currency::Parse(token.text)) return;
    const auto call = ItemCall::Bind(token.text);
    if (call && call->FunctionNumber()) return;
    const auto begin = piece.positions.begin() + static_cast<ptrdiff_t>(token.position) - 1;
    const auto length = std::count_if(token.text.begin(), token.text.end(), BeginsCharacter);
    const Piece part = {std::string(token.text), {begin, begin + length}};
    if (IsMisread(part, operand)) return;
    ExplainedItem item;
    item.text = typed_.Exactly(part.positions.front(), part.positions.back());
    const bool is_listed =
        std::any_of(operand.items.begin(), operand.items.end(),
                    [&item](const ExplainedItem& other) { return other.text == item.text; });
    if (is_listed) return;
    item.value = ValueOf(part);
    if (!item.value.ok) item.failure = WhyItemFailing(part, call);
    const auto span = call ? SpanOf(*call, context_, day_) : std::nullopt;
    if (span && span->Exists()) item.bars = DatesOf(*span, context_, day_);
    operand.items.push_back(std::move(item));
  }

  /// Pieces of a name whose letters were read as operators mean nothing to who typed it.
  bool IsMisread(const Piece& part, ExplainedOperand& operand) const {
    for (const auto& [stretch, message] : misread_) {
      if (part.positions.front() < stretch.first || part.positions.back() > stretch.last) continue;
      operand.failure = message;
      return true;
    }
    return false;
  }

  TypedText typed_;
  std::vector<std::pair<Stretch, std::string>> misread_;
  StockContext& context_;
  DayIndex day_;
  bool needed_ = true;  // whether the outcome hangs on the relation under way
};

}  // namespace

std::optional<FirstFalse> FindFirstFalse(const ExplainedOrTerm& or_term) {
  for (size_t i = 0; i < or_term.and_terms.size(); ++i) {
    for (const ExplainedRelation& relation : or_term.and_terms[i].relations) {
      if (!relation.truth) return FirstFalse{i + 1, &relation};
    }
  }
  return std::nullopt;
}

tl::expected<Explanation, Note> Explain(std::string_view text, StockContext& context,
                                        DayIndex day) {
  const auto condition = CompileCondition(text);
  if (!condition) return tl::unexpected<Note>(condition.error());
  return Explainer(text, context, day).Run(*condition);
}

}  // namespace orin::analysis
