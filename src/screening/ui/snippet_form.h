#pragma once

#include <QComboBox>
#include <QDialog>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <string>
#include <vector>

#include "analysis/condition_snippets.h"

namespace orin::screening {

/// A condition from a few fields: which one, its fields, and where its text goes.
class snippet_Form final : public QDialog {
  Q_OBJECT

 public:
  enum class Place { kAtCursor, kJoinWithAnd, kJoinWithOr, kReplaceAll };

  /// `condition` proposes itself where a snippet asks for one; what it is joined with.
  explicit snippet_Form(std::string condition, QWidget* owner = nullptr);

  /// The text to put at the cursor, or the whole condition.
  [[nodiscard]] std::string Result() const { return result_; }
  [[nodiscard]] Place Where() const;

 private:
  void FillTree();
  void ShowFields();
  void ShowText();
  [[nodiscard]] const analysis::Snippet* Chosen() const;

  std::string condition_;
  std::string result_;
  QTreeWidget* tree_;
  QLabel* explanation_;
  QFormLayout* fields_;
  QPlainTextEdit* text_;
  QLabel* fault_;
  QComboBox* place_;
  QPushButton* insert_ = nullptr;
  std::vector<QLineEdit*> boxes_;
};

}  // namespace orin::screening
