#include <QAbstractItemView>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QScrollBar>
#include <QStandardItemModel>
#include <QTextBlock>
#include <algorithm>
#include <array>
#include <memory>

#include "analysis/items/item_suggestions.h"
#include "screening/ui/condition_editor.h"
#include "screening/ui/condition_highlighter.h"
#include "widgets/qt_text.h"

// Completion of item names in the condition editor.

namespace orin::screening {

using widgets::Text;
using widgets::Utf8;

namespace {

constexpr size_t kMostSuggestions = 40;
constexpr int kShownRows = 10;
constexpr int kCallRole = Qt::UserRole;
/// Keys that belong to the list while it is shown.
constexpr std::array kListKeys = {Qt::Key_Enter, Qt::Key_Return, Qt::Key_Escape, Qt::Key_Tab,
                                  Qt::Key_Backtab};

bool IsPlainText(const QKeyEvent& event) {
  const bool is_command = (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier)) != 0;
  return !is_command && !event.text().isEmpty() && event.text().at(0).isPrint();
}

}  // namespace

void ConditionEditor::MakeCompleter() {
  completer_ = new QCompleter(this);
  completer_->setModel(new QStandardItemModel(completer_));
  completer_->setCompletionMode(QCompleter::UnfilteredPopupCompletion);
  completer_->setMaxVisibleItems(kShownRows);
  completer_->setWidget(this);
  connect(completer_, qOverload<const QModelIndex&>(&QCompleter::activated), this,
          &ConditionEditor::InsertCompletion);
}

int ConditionEditor::WordLength() const {
  const QTextCursor cursor = textCursor();
  if (ConditionHighlighter::BeginsInComment(cursor.block())) return 0;
  const QString before = cursor.block().text().left(cursor.positionInBlock());
  return static_cast<int>(analysis::WordUnderWay(Utf8(before)));
}

void ConditionEditor::Complete(bool is_asked_for) {
  const int length = WordLength();
  const QTextCursor cursor = textCursor();
  const QString word = cursor.block().text().left(cursor.positionInBlock()).right(length);
  const bool is_one_letter = length == 1 && word.at(0).unicode() < 0x80;
  std::vector<analysis::ItemSuggestion> suggestions;
  if (length > 0 && (is_asked_for || !is_one_letter)) {
    suggestions = analysis::SuggestItems(Utf8(word), kMostSuggestions);
  }
  // Who has typed the whole name needs no list.
  const bool is_whole = suggestions.size() == 1 && Text(suggestions[0].name) == word;
  if (suggestions.empty() || (is_whole && !is_asked_for)) {
    completer_->popup()->hide();
    return;
  }
  auto* model = static_cast<QStandardItemModel*>(completer_->model());
  model->clear();
  for (const analysis::ItemSuggestion& suggestion : suggestions) {
    const QString labels = suggestion.labels.empty()
                               ? QString()
                               : QStringLiteral("　〔%1〕").arg(Text(suggestion.labels));
    auto item = std::make_unique<QStandardItem>(Text(suggestion.name) + labels);
    item->setData(Text(suggestion.call), kCallRole);
    item->setEditable(false);
    model->appendRow(item.release());
  }
  QRect place = cursorRect();
  const int widest = completer_->popup()->sizeHintForColumn(0) +
                     completer_->popup()->verticalScrollBar()->sizeHint().width() +
                     fontMetrics().averageCharWidth() * 2;
  place.setWidth(
      std::min(widest, std::max(viewport()->width(), fontMetrics().averageCharWidth() * 60)));
  completer_->complete(place);
  completer_->popup()->setCurrentIndex(completer_->completionModel()->index(0, 0));
}

void ConditionEditor::InsertCompletion(const QModelIndex& index) {
  const QString call = index.data(kCallRole).toString();
  QTextCursor cursor = textCursor();
  cursor.movePosition(QTextCursor::Left, QTextCursor::KeepAnchor, WordLength());
  const int begin = cursor.selectionStart();
  // Where the call's arguments stand already, the name alone takes the word's place.
  const bool has_arguments = document()->characterAt(textCursor().position()) == QLatin1Char('(');
  const qsizetype open = call.indexOf(QLatin1Char('('));
  cursor.insertText(has_arguments && open > 0 ? call.left(open) : call);
  const qsizetype first_end = call.indexOf(QLatin1Char(','));
  if (!has_arguments && first_end > open && open > 0) {
    // The first argument is what its writer changes next.
    cursor.setPosition(begin + static_cast<int>(open) + 1);
    cursor.setPosition(begin + static_cast<int>(first_end), QTextCursor::KeepAnchor);
  }
  setTextCursor(cursor);
}

void ConditionEditor::keyPressEvent(QKeyEvent* event) {
  const bool is_shown = completer_->popup()->isVisible();
  if (is_shown && std::ranges::find(kListKeys, event->key()) != kListKeys.end()) {
    event->ignore();
    return;
  }
  if (event->key() == Qt::Key_Space && event->modifiers() == Qt::ControlModifier) {
    if (!is_composing_) Complete(true);
    return;
  }
  const bool is_text = IsPlainText(*event);
  const bool is_erasing = event->key() == Qt::Key_Backspace;
  QPlainTextEdit::keyPressEvent(event);
  if (is_composing_) return;
  if (is_text || (is_shown && is_erasing)) {
    Complete(false);
  } else if (is_shown) {
    completer_->popup()->hide();
  }
}

void ConditionEditor::inputMethodEvent(QInputMethodEvent* event) {
  is_composing_ = !event->preeditString().isEmpty();
  const bool has_text = !event->commitString().isEmpty();
  if (is_composing_) completer_->popup()->hide();
  QPlainTextEdit::inputMethodEvent(event);
  if (has_text && !is_composing_) Complete(false);
}

}  // namespace orin::screening
