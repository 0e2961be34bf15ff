#pragma once

#include <QPlainTextEdit>

#include "settings/ui/settings_editor.h"

namespace orin::settings {

/// A field for one line of any length: wrapped over as many rows as it needs, up to a few. Line
/// breaks in what is pasted become blanks; the return key belongs to the window.
class LongLine final : public QPlainTextEdit {
  Q_OBJECT

 public:
  LongLine();

  [[nodiscard]] QString Line() const;

 Q_SIGNALS:
  void Left();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void insertFromMimeData(const QMimeData* source) override;
  void focusOutEvent(QFocusEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void FitHeight();
};

/// Conditions and expressions.
class ExpressionEditor final : public SettingEditor {
 public:
  explicit ExpressionEditor(const SettingEntry& entry);
  void ShowText(const QString& text) override;

 private:
  LongLine* line_;
};

}  // namespace orin::settings
