#include "screening/ui/group_list.h"

#include <QHeaderView>
#include <QTreeWidgetItem>
#include <algorithm>
#include <memory>

#include "screening/screening_run.h"
#include "widgets/qt_text.h"

namespace orin::screening {

using widgets::Text;

namespace {

enum GroupColumn { kNumber, kTitle, kFile, kDate, kMarket, kOutcome, kGroupColumns };

}  // namespace

GroupList::GroupList(QWidget* owner) : QTreeWidget(owner) {
  setColumnCount(kGroupColumns);
  setHeaderLabels({QStringLiteral("実行"), QStringLiteral("題名"), QStringLiteral("分析ファイル"),
                   QStringLiteral("分析日付"), QStringLiteral("分析上場市場"),
                   QStringLiteral("結果")});
  setAccessibleName(QStringLiteral("株価分析グループの分析ファイル"));
  setAllColumnsShowFocus(true);
  setAlternatingRowColors(true);
  setSelectionBehavior(QAbstractItemView::SelectRows);
  header()->setStretchLastSection(true);
  header()->setSectionsMovable(false);
  for (size_t i = 0; i < settings::AnalysisGroup::kEntries; ++i) {
    auto item = std::make_unique<QTreeWidgetItem>();
    item->setText(kNumber, QString::number(i + 1));
    item->setTextAlignment(kOutcome, Qt::AlignRight | Qt::AlignVCenter);
    addTopLevelItem(item.release());
  }
  setCurrentItem(topLevelItem(0));
  connect(this, &QTreeWidget::itemChanged, this, [this](QTreeWidgetItem* item, int column) {
    if (is_filling_ || column != kNumber || item->parent() != nullptr) return;
    Q_EMIT Ticked(indexOfTopLevelItem(item), item->checkState(kNumber) == Qt::Checked);
  });
  connect(this, &QTreeWidget::currentItemChanged, this, &GroupList::EntryChanged);
  connect(this, &QTreeWidget::itemActivated, this, &GroupList::EditWanted);
}

void GroupList::ShowGroup(const settings::AnalysisGroup& group,
                          const shell::AnalysisGroupFiles& files) {
  is_filling_ = true;
  for (size_t i = 0; i < group.entries.size(); ++i) ShowEntry(i, group.entries[i], files.all[i]);
  is_filling_ = false;
  for (int column = 0; column < kGroupColumns; ++column) resizeColumnToContents(column);
  const int widest = fontMetrics().averageCharWidth() * 44;
  for (const int column : {kTitle, kFile}) {
    setColumnWidth(column, std::min(columnWidth(column), widest));
  }
}

void GroupList::ShowEntry(size_t place, const settings::AnalysisGroupEntry& entry,
                          const std::filesystem::path& file) {
  QTreeWidgetItem* item = topLevelItem(static_cast<int>(place));
  qDeleteAll(item->takeChildren());
  item->setText(kTitle, Text(entry.title));
  item->setText(kFile, Text(entry.file));
  item->setToolTip(kFile, file.empty() ? QString() : widgets::PathOf(file));
  item->setText(kOutcome, {});
  for (const GroupColumn column : {kDate, kMarket}) item->setText(column, {});
  if (entry.file.empty()) {
    item->setData(kNumber, Qt::CheckStateRole, {});
    return;
  }
  item->setCheckState(kNumber, entry.check ? Qt::Checked : Qt::Unchecked);
  const auto analysis = ReadAnalysisFile(file);
  if (!analysis) {
    item->setText(kOutcome, QStringLiteral("使えません"));
    AddNotes(place, {analysis.error().message});
    return;
  }
  item->setText(kTitle, Text(analysis->title.empty() ? entry.title : analysis->title));
  item->setText(kDate,
                analysis->date ? Text(analysis->date->ToText()) : QStringLiteral("最新の日"));
  item->setText(kMarket, Text(NameOf(analysis->market)));
}

void GroupList::AddNotes(size_t place, const std::vector<std::string>& notes) {
  QTreeWidgetItem* item = topLevelItem(static_cast<int>(place));
  for (const std::string& note : notes) {
    auto child = std::make_unique<QTreeWidgetItem>(QStringList(Text(note)));
    child->setToolTip(0, Text(note));
    QTreeWidgetItem* added = child.get();
    item->addChild(child.release());
    added->setFirstColumnSpanned(true);
  }
  item->setExpanded(true);
}

void GroupList::ShowOutcome(size_t place, const QString& outcome,
                            const std::vector<std::string>& notes) {
  QTreeWidgetItem* item = topLevelItem(static_cast<int>(place));
  qDeleteAll(item->takeChildren());
  item->setText(kOutcome, outcome);
  AddNotes(place, notes);
  resizeColumnToContents(kOutcome);
}

void GroupList::ClearOutcomes() {
  for (size_t i = 0; i < settings::AnalysisGroup::kEntries; ++i) ShowOutcome(i, {}, {});
}

size_t GroupList::CurrentEntry() const {
  QTreeWidgetItem* item = currentItem();
  if (item != nullptr && item->parent() != nullptr) item = item->parent();
  return static_cast<size_t>(std::max(0, indexOfTopLevelItem(item)));
}

void GroupList::SelectEntry(size_t place) { setCurrentItem(topLevelItem(static_cast<int>(place))); }

}  // namespace orin::screening
