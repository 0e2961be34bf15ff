#include "screening/ui/snippet_form.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QVBoxLayout>
#include <algorithm>
#include <memory>
#include <utility>

#include "analysis/condition_rewriting.h"
#include "analysis/condition_text.h"
#include "analysis/program.h"
#include "widgets/manual_form.h"
#include "widgets/qt_text.h"

namespace orin::screening {

using widgets::Text;
using widgets::Utf8;

namespace {

/// Whether the text is a condition that can serve as part of another.
bool IsCondition(const std::string& text) {
  const auto program = analysis::BuildProgram(text);
  return program && !program->IsValue() && program->Notes().empty();
}

}  // namespace

snippet_Form::snippet_Form(std::string condition, QWidget* owner)
    : QDialog(owner),
      condition_(std::move(condition)),
      tree_(new QTreeWidget(this)),
      explanation_(new QLabel(this)),
      fields_(new QFormLayout),
      text_(new QPlainTextEdit(this)),
      fault_(new QLabel(this)),
      place_(new QComboBox(this)) {
  setWindowTitle(QStringLiteral("よく使う条件"));
  setProperty("helpPage", QStringLiteral("condition_editor"));
  widgets::OpenManualWithF1(this);
  tree_->setHeaderHidden(true);
  tree_->setAccessibleName(QStringLiteral("よく使う条件"));
  explanation_->setWordWrap(true);
  fault_->setWordWrap(true);
  text_->setReadOnly(true);
  text_->setAccessibleName(QStringLiteral("できる条件"));
  text_->setMaximumHeight(fontMetrics().height() * 6);
  place_->addItems(
      {QStringLiteral("カーソルの位置に入れる"), QStringLiteral("今の条件に And で加える"),
       QStringLiteral("今の条件に Or で加える"), QStringLiteral("今の条件と取り替える")});
  auto* place_label = new QLabel(QStringLiteral("入れ方(&P)："), this);
  place_label->setBuddy(place_);
  auto* right = new QVBoxLayout;
  right->addWidget(explanation_);
  right->addLayout(fields_);
  auto* place_bar = new QHBoxLayout;
  place_bar->addWidget(place_label);
  place_bar->addWidget(place_, 1);
  right->addLayout(place_bar);
  right->addWidget(new QLabel(QStringLiteral("できる条件"), this));
  right->addWidget(text_);
  right->addWidget(fault_);
  right->addStretch();
  auto* columns = new QHBoxLayout;
  columns->addWidget(tree_, 2);
  columns->addLayout(right, 3);
  auto* buttons = new QDialogButtonBox(this);
  insert_ = buttons->addButton(QStringLiteral("入れる(&I)"), QDialogButtonBox::AcceptRole);
  buttons->addButton(QDialogButtonBox::Cancel);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(columns);
  layout->addWidget(buttons);
  resize(fontMetrics().averageCharWidth() * 85, fontMetrics().height() * 34);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(tree_, &QTreeWidget::currentItemChanged, this, &snippet_Form::ShowFields);
  connect(place_, &QComboBox::currentIndexChanged, this, &snippet_Form::ShowText);
  FillTree();
}

void snippet_Form::FillTree() {
  const auto snippets = analysis::Snippets();
  QTreeWidgetItem* group = nullptr;
  for (size_t i = 0; i < snippets.size(); ++i) {
    if (group == nullptr || Utf8(group->text(0)) != snippets[i].group) {
      auto added = std::make_unique<QTreeWidgetItem>(QStringList(Text(snippets[i].group)));
      added->setFlags(Qt::ItemIsEnabled);
      group = added.get();
      tree_->addTopLevelItem(added.release());
    }
    auto item = std::make_unique<QTreeWidgetItem>(QStringList(Text(snippets[i].name)));
    item->setData(0, Qt::UserRole, static_cast<int>(i));
    group->addChild(item.release());
  }
  tree_->expandAll();
  tree_->setCurrentItem(tree_->topLevelItem(0)->child(0));
}

const analysis::Snippet* snippet_Form::Chosen() const {
  const QTreeWidgetItem* item = tree_->currentItem();
  if (item == nullptr || item->parent() == nullptr) return nullptr;
  return &analysis::Snippets()[static_cast<size_t>(item->data(0, Qt::UserRole).toInt())];
}

snippet_Form::Place snippet_Form::Where() const {
  return static_cast<Place>(place_->currentIndex());
}

void snippet_Form::ShowFields() {
  while (fields_->rowCount() > 0) fields_->removeRow(0);
  boxes_.clear();
  const analysis::Snippet* snippet = Chosen();
  explanation_->setText(snippet != nullptr ? Text(snippet->explanation) : QString());
  if (snippet != nullptr) {
    for (const analysis::SnippetField& field : snippet->fields) {
      const bool takes_condition =
          field.kind == analysis::SnippetField::Kind::kCondition && IsCondition(condition_);
      auto* box = new QLineEdit(takes_condition ? Text(condition_) : Text(field.usual), this);
      connect(box, &QLineEdit::textChanged, this, &snippet_Form::ShowText);
      fields_->addRow(Text(field.label) + QStringLiteral("："), box);
      boxes_.push_back(box);
      if (takes_condition) place_->setCurrentIndex(static_cast<int>(Place::kReplaceAll));
    }
  }
  ShowText();
}

void snippet_Form::ShowText() {
  const analysis::Snippet* snippet = Chosen();
  base::Result<std::string> text = base::Fail("条件を選んで下さい。");
  if (snippet != nullptr) {
    std::vector<std::string> values;
    for (const QLineEdit* box : boxes_) values.push_back(Utf8(box->text().trimmed()));
    text = MakeSnippet(*snippet, values);
    if (text && Where() == Place::kJoinWithAnd) text = analysis::JoinedWithAnd(condition_, *text);
    if (text && Where() == Place::kJoinWithOr) text = analysis::JoinedWithOr(condition_, *text);
  }
  result_ = text.value_or("");
  text_->setPlainText(Text(result_));
  fault_->setText(text ? QString() : Text(text.error().message));
  insert_->setEnabled(text.has_value());
}

}  // namespace orin::screening
