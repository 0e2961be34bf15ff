#include "screening/ui/condition_highlighter.h"

#include <QTextBlock>
#include <algorithm>
#include <array>

#include "analysis/condition_words.h"
#include "widgets/qt_text.h"

namespace orin::screening {

using analysis::MarkedWord;
using analysis::WordKind;

namespace {

struct Tint {
  QRgb light;
  QRgb dark;
};

struct KindRow {
  WordKind kind;
  Tint tint;
  bool is_bold;
};

constexpr std::array kKinds = {
    KindRow{WordKind::kItem, {0x004a9f, 0x7fb8ff}, false},
    KindRow{WordKind::kUnknownItem, {0xb00020, 0xff8a80}, false},
    KindRow{WordKind::kDayKeyword, {0x00695c, 0x6fd3c7}, false},
    KindRow{WordKind::kNumber, {0x6a3e00, 0xe0b070}, false},
    KindRow{WordKind::kArithmetic, {0x333333, 0xdddddd}, false},
    KindRow{WordKind::kRelation, {0x7a0087, 0xe39bef}, true},
    KindRow{WordKind::kLogic, {0x7a0087, 0xe39bef}, true},
    KindRow{WordKind::kParenthesis, {0x555555, 0xbbbbbb}, false},
    KindRow{WordKind::kComment, {0x3b7a3b, 0x8fcf8f}, false},
};

/// Of braces and the operators inside them, outermost first.
constexpr std::array kDepths = {Tint{0xb35900, 0xffb366}, Tint{0x00695c, 0x6fd3c7},
                                Tint{0xb0004f, 0xff9ac4}, Tint{0x555500, 0xd6d66b}};

using Formats = std::array<QTextCharFormat, kKinds.size() + kDepths.size()>;

/// Of the kinds, then of the depths.
Formats MakeFormats(bool is_dark) {
  Formats formats;
  for (size_t i = 0; i < formats.size(); ++i) {
    const bool is_depth = i >= kKinds.size();
    const Tint& tint = is_depth ? kDepths.at(i - kKinds.size()) : kKinds.at(i).tint;
    formats.at(i).setForeground(QColor(is_dark ? tint.dark : tint.light));
    if (is_depth || kKinds.at(i).is_bold) formats.at(i).setFontWeight(QFont::Bold);
  }
  return formats;
}

QTextCharFormat FormatOf(const MarkedWord& word, bool is_dark) {
  // Made once: a brace at the beginning of a long condition has all of it coloured anew.
  static const std::array<Formats, 2> grounds = {MakeFormats(false), MakeFormats(true)};
  const Formats& formats = grounds.at(is_dark ? 1 : 0);
  if (word.depth > 0) {
    return formats.at(kKinds.size() + static_cast<size_t>(word.depth - 1) % kDepths.size());
  }
  const auto* row = std::ranges::find(kKinds, word.kind, &KindRow::kind);
  if (row == kKinds.end()) return {};
  return formats.at(static_cast<size_t>(row - kKinds.begin()));
}

analysis::LineEnd StateOf(int state) {
  if (state < 0) return {};
  return {state / 2, state % 2 != 0};
}

}  // namespace

ConditionHighlighter::ConditionHighlighter(QTextDocument* document)
    : QSyntaxHighlighter(document) {}

void ConditionHighlighter::SetDark(bool is_dark) {
  if (is_dark == is_dark_) return;
  is_dark_ = is_dark;
  rehighlight();
}

bool ConditionHighlighter::BeginsInComment(const QTextBlock& block) {
  return block.previous().isValid() && StateOf(block.previous().userState()).in_comment;
}

void ConditionHighlighter::highlightBlock(const QString& text) {
  analysis::LineEnd state = StateOf(previousBlockState());
  int at = 0;  // in the units of the toolkit, of which rare characters take two
  size_t character = 0;
  const auto go_to = [&](size_t target) {
    for (; character < target && at < text.size(); ++character) {
      at += text.at(at).isHighSurrogate() ? 2 : 1;
    }
    return at;
  };
  for (const MarkedWord& word : analysis::MarkWords(widgets::Utf8(text), state)) {
    const int begin = go_to(word.first);
    const int end = go_to(word.first + word.count);
    setFormat(begin, end - begin, FormatOf(word, is_dark_));
  }
  setCurrentBlockState(state.depth * 2 + (state.in_comment ? 1 : 0));
}

}  // namespace orin::screening
