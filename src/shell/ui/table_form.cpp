#include "shell/ui/table_form.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "base/file_system.h"
#include "shell/ui/qt_text.h"

namespace orin::shell {

TableModel::TableModel(lists::Table table, QObject* owner)
    : QAbstractTableModel(owner), table_(std::move(table)) {
  for (size_t column = 0; column < table_.headings.size(); ++column) {
    is_numeric_.push_back(table_.IsNumeric(column));
  }
}

int TableModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(table_.rows.size());
}

int TableModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(table_.headings.size());
}

QVariant TableModel::data(const QModelIndex& index, int role) const {
  const auto column = static_cast<size_t>(index.column());
  if (role == Qt::DisplayRole) return Text(table_.rows[static_cast<size_t>(index.row())][column]);
  if (role == Qt::TextAlignmentRole && is_numeric_[column]) {
    return QVariant(Qt::AlignRight | Qt::AlignVCenter);
  }
  return {};
}

QVariant TableModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal)
    return QAbstractTableModel::headerData(section, orientation, role);
  const auto column = static_cast<size_t>(section);
  if (role == Qt::DisplayRole) return Text(table_.headings[column]);
  if (role != Qt::TextAlignmentRole) return {};
  return QVariant((is_numeric_[column] ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
}

void TableModel::sort(int column, Qt::SortOrder order) {
  if (column < 0) return;
  Q_EMIT layoutAboutToBeChanged();
  table_.Sort(static_cast<size_t>(column), order == Qt::DescendingOrder);
  Q_EMIT layoutChanged();
}

table_Form::table_Form(const QString& caption, lists::Table table, Messages& messages)
    : messages_(messages),
      model_(new TableModel(std::move(table), this)),
      view_(new QTableView(this)) {
  setWindowTitle(caption);
  view_->setModel(model_);
  view_->setAccessibleName(caption);
  view_->setSelectionBehavior(QAbstractItemView::SelectRows);
  view_->setAlternatingRowColors(true);
  view_->setShowGrid(false);
  view_->setWordWrap(false);
  view_->verticalHeader()->hide();
  view_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() * 3 / 2);
  view_->horizontalHeader()->setHighlightSections(false);
  view_->horizontalHeader()->setStretchLastSection(true);
  view_->horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
  view_->setTabKeyNavigation(false);
  view_->setSortingEnabled(true);
  view_->resizeColumnsToContents();

  auto* count = new QLabel(QStringLiteral("%1件").arg(model_->rowCount()), this);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(view_);
  layout->addWidget(count);

  const auto add = [this](const QString& text, const QKeySequence& key, auto handler) {
    auto* action = new QAction(text, this);
    action->setShortcut(key);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(action, &QAction::triggered, this, handler);
    view_->addAction(action);
  };
  add(QStringLiteral("コピー(&C)"), QKeySequence::Copy, &table_Form::mnu_copy_Click);
  add(QStringLiteral("ＣＳＶに保存(&S)…"), QKeySequence::Save, &table_Form::mnu_save_Click);
  view_->setContextMenuPolicy(Qt::ActionsContextMenu);
  connect(view_, &QTableView::activated, this, &table_Form::OpenRow);
  setFocusProxy(view_);
  if (model_->rowCount() > 0) view_->setCurrentIndex(model_->index(0, 0));
}

void table_Form::mnu_copy_Click() {
  QModelIndexList rows = view_->selectionModel()->selectedRows();
  std::ranges::sort(rows, {}, &QModelIndex::row);
  QString text;
  for (const QModelIndex& index : rows) {
    QStringList fields;
    for (const std::string& field : model_->Content().rows[static_cast<size_t>(index.row())]) {
      fields.append(Text(field));
    }
    text += fields.join('\t') + '\n';
  }
  QGuiApplication::clipboard()->setText(text);
}

void table_Form::mnu_save_Click() {
  const auto path = messages_.ChooseFile({.caption = "ＣＳＶに保存",
                                          .filter = "ＣＳＶファイル|*.csv|",
                                          .start = Utf8(windowTitle()) + ".csv",
                                          .choice = FileChoice::kSave});
  if (!path) return;
  const auto saved = base::ReplaceFile(base::NativeFileSystem(), *path,
                                       "\xEF\xBB\xBF" + model_->Content().ToCsv());
  if (!saved) messages_.Warn(saved.error().message);
}

void table_Form::OpenRow(const QModelIndex& index) {
  const auto column = model_->Content().CodeColumn();
  if (!column || !index.isValid()) return;
  Q_EMIT CodeChosen(Text(model_->Content().rows[static_cast<size_t>(index.row())][*column]));
}

}  // namespace orin::shell
