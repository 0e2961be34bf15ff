#include "settings/ui/settings_expression_editor.h"

#include <QFontDatabase>
#include <QKeyEvent>
#include <QMimeData>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextLayout>
#include <algorithm>
#include <cmath>

#include "widgets/qt_text.h"

namespace orin::settings {

namespace {

constexpr int kMostRows = 6;

QString WithoutBreaks(QString text) {
  static const QRegularExpression breaks(QStringLiteral("[\\r\\n\\x{2028}\\x{2029}]+"));
  return text.replace(breaks, QStringLiteral(" "));
}

}  // namespace

LongLine::LongLine() {
  QFont fixed;  // of it the family alone, so that the size follows that of the window
  fixed.setFamilies({QFontDatabase::systemFont(QFontDatabase::FixedFont).family()});
  setFont(fixed);
  setTabChangesFocus(true);
  setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  connect(this, &QPlainTextEdit::textChanged, this, &LongLine::FitHeight);
  FitHeight();
}

QString LongLine::Line() const { return WithoutBreaks(toPlainText()); }

void LongLine::FitHeight() {
  // As high as it is with all fonts that its letters need.
  const QTextBlock line = document()->firstBlock();
  const double text = blockBoundingRect(line).height();
  const int rows = std::max(1, line.layout()->lineCount());
  const double shown = text * std::min(rows, kMostRows) / rows;
  const int edges = 2 * frameWidth() + static_cast<int>(2 * document()->documentMargin());
  const int height = static_cast<int>(std::ceil(shown)) + edges;
  if (height != minimumHeight() || height != maximumHeight()) setFixedHeight(height);
}

void LongLine::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter ||
      event->key() == Qt::Key_Escape) {
    event->ignore();
    return;
  }
  QPlainTextEdit::keyPressEvent(event);
}

void LongLine::insertFromMimeData(const QMimeData* source) {
  if (source->hasText()) insertPlainText(WithoutBreaks(source->text()));
}

void LongLine::focusOutEvent(QFocusEvent* event) {
  QPlainTextEdit::focusOutEvent(event);
  Q_EMIT Left();
}

void LongLine::resizeEvent(QResizeEvent* event) {
  QPlainTextEdit::resizeEvent(event);
  FitHeight();
}

void LongLine::changeEvent(QEvent* event) {
  QPlainTextEdit::changeEvent(event);
  if (event->type() == QEvent::FontChange) FitHeight();
}

ExpressionEditor::ExpressionEditor(const SettingEntry& entry)
    : SettingEditor(entry), line_(new LongLine) {
  Adopt(line_);
  connect(line_, &QPlainTextEdit::textChanged, this, [this] { Q_EMIT Edited(line_->Line()); });
  connect(line_, &LongLine::Left, this, &SettingEditor::EditingFinished);
}

void ExpressionEditor::ShowText(const QString& text) {
  if (line_->Line() == text) return;
  const QSignalBlocker silence(this);
  line_->setPlainText(text);
}

}  // namespace orin::settings
