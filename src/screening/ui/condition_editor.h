#pragma once

#include <QCompleter>
#include <QPlainTextEdit>
#include <QStringList>
#include <QTimer>
#include <cstddef>
#include <string>
#include <vector>

#include "analysis/condition.h"

namespace orin::screening {

class ConditionHighlighter;

/// A field for condition texts: items, operators and braces by depth in colour, the compiler's
/// notes under the characters they are about, completion of item names, undo and redo. Lines are
/// the writer's own; the condition is what they give joined with nothing between. Long lines are
/// broken for the eye at blanks between words, which changes nothing of the condition.
class ConditionEditor final : public QPlainTextEdit {
  Q_OBJECT

 public:
  explicit ConditionEditor(QWidget* owner = nullptr);
  ~ConditionEditor() override;

  /// Replaces all of it; nothing to undo is left.
  void SetCondition(const std::string& lines);
  /// The lines, parted by "\n".
  [[nodiscard]] std::string Lines() const;
  /// The condition as the run reads it.
  [[nodiscard]] std::string Condition() const;
  /// At the cursor or in place of the selection, one step to undo.
  void InsertText(const std::string& text);
  /// All of it, one step to undo.
  void ReplaceCondition(const std::string& lines);
  /// Of the text as it was when it was checked last.
  [[nodiscard]] const std::vector<analysis::Note>& Notes() const { return notes_; }
  [[nodiscard]] bool CanBeCompiled() const { return can_be_compiled_; }
  /// Puts the cursor before the character a note is about.
  void GoTo(size_t position);
  /// Checks at once instead of a moment after the last key.
  void CheckNow();

 Q_SIGNALS:
  /// The text was checked anew; see Notes.
  void Checked();
  /// Pasted text was changed to what the language wants; undo brings back the text as it was.
  void PastedTextMended();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void inputMethodEvent(QInputMethodEvent* event) override;
  void insertFromMimeData(const QMimeData* source) override;
  void changeEvent(QEvent* event) override;
  bool event(QEvent* event) override;

 private:
  void MakeCompleter();
  /// Shows what the word before the cursor may become; hides it where there is nothing. What a
  /// single letter may become is shown only when it is asked for.
  void Complete(bool is_asked_for);
  void InsertCompletion(const QModelIndex& index);
  /// The characters before the cursor that belong to the word under way.
  [[nodiscard]] int WordLength() const;
  void MarkNotes();
  /// What marks the pair of the bracket at the cursor.
  [[nodiscard]] QList<QTextEdit::ExtraSelection> MarkedPair() const;
  /// The place in the document of a character of the condition, from 1.
  [[nodiscard]] int PlaceOf(size_t position) const;
  void SetColors();

  ConditionHighlighter* highlighter_;
  QCompleter* completer_ = nullptr;
  QTimer check_timer_;
  QList<QTextEdit::ExtraSelection> note_marks_;
  QStringList note_texts_;  // of the marks
  std::vector<analysis::Note> notes_;
  bool can_be_compiled_ = true;
  bool is_composing_ = false;
};

}  // namespace orin::screening
