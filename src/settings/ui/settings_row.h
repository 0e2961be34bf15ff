#pragma once

#include <QGridLayout>
#include <QLabel>
#include <QToolButton>

#include "settings/ui/settings_draft.h"
#include "settings/ui/settings_editor.h"

namespace orin::settings {

/// A sentence below a field: a refusal in red, a caution in the colour of the window's text;
/// hidden while there is none.
class SentenceLabel final : public QLabel {
 public:
  SentenceLabel();
  void ShowSentence(const QString& problem, const QString& caution);

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void Paint();

  bool is_problem_ = false;
};

/// A red that can be read on the background of the palette.
QColor ProblemColor(const QPalette& palette);

/// An entry of the draft in rows of a page's grid: label, editor and a button that brings the
/// default back; below them the explanation and what is wrong. Columns: kColumns.
class SettingRow final : public QObject {
  Q_OBJECT

 public:
  static constexpr int kColumns = 3;

  /// Adds itself below the last row of the grid.
  SettingRow(SettingsDraft& draft, EntryPlace place, const EditorContext& context,
             QGridLayout* grid, QWidget* page);

  [[nodiscard]] EntryPlace Place() const { return place_; }
  [[nodiscard]] SettingEditor* Editor() const { return editor_; }
  /// Shows the draft as it now is.
  void Refresh();

 Q_SIGNALS:
  /// The draft has changed here.
  void Changed();

 private:
  void Take(const QString& text);
  void Reset_Click();
  void ShowState();

  SettingsDraft& draft_;
  EntryPlace place_;
  SettingEditor* editor_;
  QToolButton* reset_button_;
  SentenceLabel* sentence_;
};

}  // namespace orin::settings
