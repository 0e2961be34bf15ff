#include "screening/ui/condition_editor.h"

#include <QAbstractItemView>
#include <QElapsedTimer>
#include <QFontDatabase>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QTextBlock>
#include <QToolTip>
#include <algorithm>

#include "analysis/note_sentence.h"
#include "analysis/pasted_condition.h"
#include "analysis/program.h"
#include "screening/analysis_document.h"
#include "screening/ui/condition_highlighter.h"
#include "widgets/look.h"
#include "widgets/qt_text.h"

// The text and the notes; completion is in condition_completion.cpp.

namespace orin::screening {

using widgets::Text;
using widgets::Utf8;

namespace {

constexpr int kCheckAfter = 150;  // ms after the last change
// A line is laid out anew with every key; this many characters take no time that one feels.
constexpr qsizetype kLongestLine = 400;
constexpr int kLongestMark = 200;
constexpr qsizetype kFarthestPair = 20'000;

/// Long lines broken behind blanks, or wherever there is none.
QString WithShortLines(const QString& text) {
  QString broken;
  broken.reserve(text.size() + text.size() / kLongestLine + 1);
  for (const QStringView whole : QStringView(text).split('\n')) {
    QStringView line = whole;
    while (line.size() > kLongestLine) {
      qsizetype end = line.lastIndexOf(' ', kLongestLine - 1) + 1;
      if (end <= 0) end = kLongestLine - (line.at(kLongestLine - 1).isHighSurrogate() ? 1 : 0);
      broken += line.first(end);
      broken += '\n';
      line = line.sliced(end);
    }
    broken += line;
    broken += '\n';
  }
  broken.chop(1);
  return broken;
}

bool EndsWord(QChar c) { return c.isSpace() || QStringLiteral("(){}<>=,?^*/\\+\"").contains(c); }

}  // namespace

ConditionEditor::ConditionEditor(QWidget* owner)
    : QPlainTextEdit(owner), highlighter_(new ConditionHighlighter(document())) {
  QFont fixed;  // of it the family alone, so that the size follows that of the window
  fixed.setFamilies({QFontDatabase::systemFont(QFontDatabase::FixedFont).family(),
                     QStringLiteral("Noto Sans Mono CJK JP"), font().family()});
  setFont(fixed);
  setAccessibleName(QStringLiteral("条件"));
  setTabChangesFocus(true);
  setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  SetColors();
  MakeCompleter();
  check_timer_.setSingleShot(true);
  check_timer_.setInterval(kCheckAfter);
  connect(&check_timer_, &QTimer::timeout, this, &ConditionEditor::CheckNow);
  connect(this, &QPlainTextEdit::textChanged, this, [this] { check_timer_.start(); });
  connect(this, &QPlainTextEdit::cursorPositionChanged, this,
          [this] { setExtraSelections(note_marks_ + MarkedPair()); });
}

ConditionEditor::~ConditionEditor() = default;

void ConditionEditor::SetCondition(const std::string& lines) {
  setPlainText(WithShortLines(Text(lines)));
  CheckNow();
}

std::string ConditionEditor::Lines() const { return Utf8(toPlainText()); }

std::string ConditionEditor::Condition() const { return JoinedCondition(Lines()); }

void ConditionEditor::InsertText(const std::string& text) {
  textCursor().insertText(WithShortLines(Text(text)));
  setFocus();
}

void ConditionEditor::ReplaceCondition(const std::string& lines) {
  QTextCursor cursor(document());
  cursor.select(QTextCursor::Document);
  cursor.insertText(WithShortLines(Text(lines)));
  moveCursor(QTextCursor::End);
  setFocus();
}

void ConditionEditor::insertFromMimeData(const QMimeData* source) {
  if (!source->hasText()) return;
  QTextCursor cursor = textCursor();
  const QString pasted = WithShortLines(source->text());
  const QString mended = WithShortLines(Text(analysis::PastedCondition(Utf8(source->text()))));
  const int begin = cursor.selectionStart();
  cursor.insertText(pasted);
  if (mended != pasted) {
    // A step of its own, so that undoing it shows the text as it was pasted.
    cursor.setPosition(begin, QTextCursor::KeepAnchor);
    cursor.insertText(mended);
    Q_EMIT PastedTextMended();
  }
  setTextCursor(cursor);
  ensureCursorVisible();
}

void ConditionEditor::CheckNow() {
  check_timer_.stop();
  QElapsedTimer since;
  since.start();
  const auto program = analysis::BuildProgram(Condition());
  can_be_compiled_ = program.has_value();
  notes_ = program ? program->Notes() : std::vector<analysis::Note>{program.error()};
  MarkNotes();
  // A text that takes long is checked when its writer pauses longer.
  check_timer_.setInterval(std::max<int>(kCheckAfter, 4 * static_cast<int>(since.elapsed())));
  Q_EMIT Checked();
}

int ConditionEditor::PlaceOf(size_t position) const {
  size_t character = 0;
  for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
    const QString text = block.text();
    for (int i = 0; i < text.size(); ++i) {
      if (text.at(i).isLowSurrogate()) continue;
      if (++character >= position) return block.position() + i;
    }
  }
  return std::max(0, document()->characterCount() - 1);
}

void ConditionEditor::MarkNotes() {
  note_marks_.clear();
  note_texts_.clear();
  for (const analysis::Note& note : notes_) {
    QTextEdit::ExtraSelection mark;
    mark.cursor = QTextCursor(document());
    int begin = PlaceOf(note.position);
    const int last = document()->characterCount() - 1;
    int end = begin;
    const int farthest = std::min(last, begin + kLongestMark);
    while (end < farthest && !EndsWord(document()->characterAt(end))) ++end;
    // At the end of the text the character before it is marked.
    if (end == begin && end < last) ++end;
    if (end == begin && begin > 0) --begin;
    mark.cursor.setPosition(begin);
    mark.cursor.setPosition(end, QTextCursor::KeepAnchor);
    mark.format.setUnderlineStyle(QTextCharFormat::WaveUnderline);
    mark.format.setUnderlineColor(can_be_compiled_ ? QColor(0xe07000) : QColor(0xe00020));
    note_marks_.append(mark);
    note_texts_.append(Text(analysis::NoteSentence(note)));
  }
  setExtraSelections(note_marks_ + MarkedPair());
}

void ConditionEditor::GoTo(size_t position) {
  QTextCursor cursor = textCursor();
  cursor.setPosition(PlaceOf(position));
  setTextCursor(cursor);
  setFocus();
}

QList<QTextEdit::ExtraSelection> ConditionEditor::MarkedPair() const {
  static const QString opening = QStringLiteral("({");
  static const QString closing = QStringLiteral(")}");
  const QTextCursor cursor = textCursor();
  int at = cursor.position();
  const auto is_bracket = [](QChar c) { return opening.contains(c) || closing.contains(c); };
  if (!is_bracket(document()->characterAt(at)) && at > 0) --at;
  const QChar here = document()->characterAt(at);
  if (here.isNull() || !is_bracket(here)) return {};
  const bool is_open = opening.contains(here);
  const QChar other =
      is_open ? closing.at(opening.indexOf(here)) : opening.at(closing.indexOf(here));
  const int step = is_open ? 1 : -1;
  int depth = 0;
  int pair = at;
  for (qsizetype looked = 0; looked < kFarthestPair; ++looked, pair += step) {
    const QChar c = document()->characterAt(pair);
    if (c.isNull()) return {};
    depth += c == here ? 1 : c == other ? -1 : 0;
    if (depth == 0) break;
  }
  if (depth != 0) return {};
  QList<QTextEdit::ExtraSelection> marks;
  for (const int place : {at, pair}) {
    QTextEdit::ExtraSelection mark;
    mark.cursor = cursor;
    mark.cursor.setPosition(place);
    mark.cursor.setPosition(place + 1, QTextCursor::KeepAnchor);
    mark.format.setBackground(palette().brush(QPalette::Highlight));
    mark.format.setForeground(palette().brush(QPalette::HighlightedText));
    marks.append(mark);
  }
  return marks;
}

void ConditionEditor::SetColors() { highlighter_->SetDark(widgets::IsDark(palette())); }

void ConditionEditor::changeEvent(QEvent* event) {
  QPlainTextEdit::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) SetColors();
}

bool ConditionEditor::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QPlainTextEdit::event(event);
  const auto* help = static_cast<QHelpEvent*>(event);
  const int place = cursorForPosition(viewport()->mapFrom(this, help->pos())).position();
  QStringList texts;
  for (qsizetype i = 0; i < note_marks_.size(); ++i) {
    const QTextCursor& marked = note_marks_.at(i).cursor;
    if (place >= marked.selectionStart() && place <= marked.selectionEnd()) {
      texts.append(note_texts_.at(i));
    }
  }
  if (texts.isEmpty()) {
    QToolTip::hideText();
  } else {
    QToolTip::showText(help->globalPos(), texts.join('\n'), this);
  }
  return true;
}

}  // namespace orin::screening
