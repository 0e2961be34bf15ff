#include "screening/ui/explanation_view.h"

#include <QHeaderView>
#include <QVBoxLayout>
#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include "analysis/explanation_outline.h"
#include "analysis/note_sentence.h"
#include "widgets/qt_text.h"

namespace orin::screening {

using widgets::Text;

namespace {

enum ReasonColumn { kText, kValue, kRemark, kColumns };

std::string WithoutLineEnd(std::string text) {
  while (text.ends_with('\n')) text.pop_back();
  return text;
}

/// A mark and a word, so that colour alone tells nothing.
QString MarkOf(const analysis::OutlineRow& row) {
  if (!row.truth) return {};
  return *row.truth ? QStringLiteral("○ ") : QStringLiteral("× ");
}

}  // namespace

ExplanationView::ExplanationView(QWidget* owner)
    : QWidget(owner), outcome_(new QLabel(this)), tree_(new QTreeWidget(this)) {
  outcome_->setWordWrap(true);
  outcome_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  tree_->setColumnCount(kColumns);
  tree_->setHeaderLabels(
      {QStringLiteral("条件と値"), QStringLiteral("値"), QStringLiteral("足、理由")});
  tree_->headerItem()->setTextAlignment(kValue, Qt::AlignRight | Qt::AlignVCenter);
  tree_->setAccessibleName(QStringLiteral("選ばれる、選ばれない理由"));
  tree_->setAlternatingRowColors(true);
  tree_->setUniformRowHeights(true);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(outcome_);
  layout->addWidget(tree_);
  fit_timer_.setSingleShot(true);
  fit_timer_.setInterval(0);
  connect(&fit_timer_, &QTimer::timeout, this, &ExplanationView::FitColumns);
  ShowSentence({});
}

void ExplanationView::ShowExplanation(const analysis::Explanation& explanation,
                                      const std::string& stock, base::Date date,
                                      const std::string& remark) {
  const std::string outcome = OutcomeText(explanation, stock, date) + remark;
  outcome_->setText(Text(WithoutLineEnd(outcome)));
  tree_->clear();
  // The items that further ones may hang on, each with its level. Levels may be passed over.
  std::vector<std::pair<size_t, QTreeWidgetItem*>> open;
  const auto add = [&](size_t level, const QStringList& texts) {
    while (!open.empty() && open.back().first >= level) open.pop_back();
    auto item = std::make_unique<QTreeWidgetItem>(texts);
    item->setTextAlignment(kValue, Qt::AlignRight | Qt::AlignVCenter);
    for (int column = 0; column < kColumns; ++column) item->setToolTip(column, item->text(column));
    QTreeWidgetItem* added = item.get();
    if (open.empty()) {
      tree_->addTopLevelItem(item.release());
    } else {
      open.back().second->addChild(item.release());
    }
    open.emplace_back(level, added);
  };
  for (const analysis::OutlineRow& row : OutlineOf(explanation)) {
    add(row.level, {MarkOf(row) + Text(row.text), Text(row.value), Text(row.remark)});
  }
  if (!explanation.notes.empty()) {
    add(0, {QStringLiteral("書き方の注意")});
    for (const analysis::Note& note : explanation.notes) {
      add(1, {Text(analysis::NoteSentence(note))});
    }
  }
  tree_->expandAll();
  FitColumns();
}

void ExplanationView::FitColumns() {
  for (int column = 0; column < kColumns; ++column) tree_->resizeColumnToContents(column);
  // What a long condition says can be read in its tip; the values stay in sight.
  const int rest = tree_->viewport()->width() - tree_->columnWidth(kValue);
  const int widest = std::max(rest / 2, rest - tree_->columnWidth(kRemark));
  tree_->setColumnWidth(kText, std::min(tree_->columnWidth(kText), widest));
}

void ExplanationView::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  // The tree has its new width after the layout.
  fit_timer_.start();
}

void ExplanationView::ShowSentence(const QString& sentence) {
  outcome_->setText(sentence);
  tree_->clear();
}

}  // namespace orin::screening
