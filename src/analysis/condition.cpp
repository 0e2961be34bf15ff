#include "analysis/condition.h"

#include <utility>

#include "analysis/condition_notes.h"
#include "analysis/condition_text.h"
#include "analysis/operator_codes.h"
#include "analysis/splitters.h"

namespace orin::analysis {

namespace {

// A failure keeps its type of error while the type of the value it stands for changes.
tl::unexpected<Note> Forward(const Note& failure) { return tl::unexpected<Note>(failure); }

Split<ConditionText> DropComments(TextView text, std::vector<Note>& notes) {
  const auto pieces = SplitQuotes(text);
  if (!pieces) return Forward(pieces.error());
  ConditionText kept;
  for (size_t i = 0; i < pieces->size(); i += 2) kept.Append((*pieces)[i]);
  if (pieces->size() % 2 == 0) {
    const size_t quote = text.bytes.rfind('"');
    AddNote(notes, text.positions[quote],
            "「\"」が閉じていないので、ここから後ろはすべて注釈になります。");
  }
  return kept;
}

// Replaces the operators inside braces by the codes of their depth.
class OperatorCoder {
 public:
  OperatorCoder(ConditionText& text, std::vector<Note>& notes) : text_(text), notes_(notes) {}

  void Run() {
    for (size_t i = 0; i < text_.bytes.size();) {
      const char c = text_.bytes[i];
      if (c == '{') Open(text_.positions[i]);
      if (c == '}') Close(text_.positions[i]);
      i += Code(i);
    }
    for (const uint32_t position : open_) {
      AddNote(notes_, position, "「{」に対応する「}」がありません。");
    }
  }

 private:
  void Open(uint32_t position) {
    open_.push_back(position);
    if (open_.size() == kDeepestCode + 1) {
      AddNote(notes_, position,
              "「{」は3重までです。4重目の中の演算子は「{」の外にあるものとして計算されます。");
    }
  }

  void Close(uint32_t position) {
    if (open_.empty()) {
      AddNote(notes_, position, "「}」に対応する「{」がありません。");
    } else {
      open_.pop_back();
    }
  }

  // Gives the number of bytes dealt with. Item arguments are not spared: only the forms of
  // IsArgumentSign keep their "-".
  size_t Code(size_t at) {
    const size_t depth = open_.size();
    if (depth == 0 || depth > kDeepestCode) return 1;
    const auto found = OperatorAt(std::string_view(text_.bytes).substr(at));
    if (!found || found->depth != 0) return 1;
    if (found->kind == OperatorKind::kSubtract && IsArgumentSign(at)) return 1;
    const OperatorRow& row = kOperatorRows[static_cast<size_t>(found->kind)];
    text_.bytes.replace(at, found->length, row.codes[depth]);
    return found->length;
  }

  [[nodiscard]] bool IsArgumentSign(size_t at) const {
    const std::string_view before = std::string_view(text_.bytes).substr(0, at);
    return before.ends_with(',') || before.ends_with('(') || EndsWithDayKeyword(before);
  }

  ConditionText& text_;
  std::vector<Note>& notes_;
  std::vector<uint32_t> open_;  // where the braces open at this point stand
};

Split<ConditionText> RemoveBraces(TextView text) {
  auto without_opening = RemoveAll(text, '{');
  if (!without_opening) return without_opening;
  return RemoveAll(without_opening->View(), '}');
}

Split<AndTerm> MakeAndTerm(TextView text) {
  const auto pieces = SplitRelation(text);
  if (!pieces) return Forward(pieces.error());
  AndTerm term;
  for (const TextView& piece : *pieces) {
    // Only now: blanks count against the limit of one piece, not of the whole text.
    const auto collapsed = CollapseSpaces(piece);
    if (!collapsed) return Forward(collapsed.error());
    term.push_back(MakePiece(*collapsed));
  }
  return term;
}

Split<OrTerm> MakeOrTerm(TextView text) {
  const auto and_texts = SplitAnd(text);
  if (!and_texts) return Forward(and_texts.error());
  OrTerm term;
  for (const TextView& and_text : *and_texts) {
    auto and_term = MakeAndTerm(and_text);
    if (!and_term) return Forward(and_term.error());
    term.push_back(std::move(*and_term));
  }
  return term;
}

}  // namespace

tl::expected<CompiledCondition, Note> CompileCondition(std::string_view text) {
  CompiledCondition compiled;
  auto coded = DropComments(ConditionText::Decode(text).View(), compiled.notes);
  if (!coded) return Forward(coded.error());
  // Before the coding, which makes letters of operators, so that a letter is one that was typed.
  NoteDoubtfulWords(coded->View(), compiled.notes, compiled.explained);
  OperatorCoder(*coded, compiled.notes).Run();
  const auto flat = RemoveBraces(coded->View());
  if (!flat) return Forward(flat.error());
  const auto or_texts = SplitOr(flat->View());
  if (!or_texts) return Forward(or_texts.error());
  for (const TextView& or_text : *or_texts) {
    auto or_term = MakeOrTerm(or_text);
    if (!or_term) return Forward(or_term.error());
    compiled.or_terms.push_back(std::move(*or_term));
  }
  return compiled;
}

}  // namespace orin::analysis
