#include "widgets/table_view.h"

#include <QAction>
#include <QClipboard>
#include <QEvent>
#include <QGuiApplication>
#include <QHeaderView>
#include <algorithm>
#include <utility>

#include "base/text.h"
#include "widgets/qt_text.h"

namespace orin::widgets {

void PrepareTable(QTableView& view, const QString& name) {
  view.setAccessibleName(name);
  view.setSelectionBehavior(QAbstractItemView::SelectRows);
  view.setAlternatingRowColors(true);
  view.setShowGrid(false);
  view.setWordWrap(false);
  view.setTabKeyNavigation(false);
  view.verticalHeader()->hide();
  view.horizontalHeader()->setHighlightSections(false);
}

void SaveCsv(base::Messages& messages, base::FileSystem& files, const QString& proposed_name,
             const std::string& csv) {
  const auto path = messages.ChooseFile({.caption = "ＣＳＶに保存",
                                         .filter = "ＣＳＶファイル|*.csv|",
                                         .start = Utf8(proposed_name) + ".csv",
                                         .choice = base::FileChoice::kSave});
  if (!path) return;
  const auto saved = base::ReplaceFile(files, *path, std::string(base::kUtf8Mark) + csv);
  if (!saved) messages.Warn(saved.error().message);
}

TableModel::TableModel(QObject* owner) : QAbstractTableModel(owner) {}

void TableModel::Show(lists::Table table) {
  beginResetModel();
  table_ = std::move(table);
  is_numeric_.clear();
  for (size_t column = 0; column < table_.headings.size(); ++column) {
    is_numeric_.push_back(table_.IsNumeric(column));
  }
  endResetModel();
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
  if (orientation != Qt::Horizontal) {
    return QAbstractTableModel::headerData(section, orientation, role);
  }
  const auto column = static_cast<size_t>(section);
  if (role == Qt::DisplayRole) return Text(table_.headings[column]);
  if (role != Qt::TextAlignmentRole) return {};
  return QVariant((is_numeric_[column] ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
}

void TableModel::sort(int column, Qt::SortOrder order) {
  if (column < 0 || column >= columnCount()) return;
  Q_EMIT layoutAboutToBeChanged();
  const std::vector<size_t> places =
      table_.Sort(static_cast<size_t>(column), order == Qt::DescendingOrder);
  std::vector<int> rows(places.size());
  for (size_t row = 0; row < places.size(); ++row) rows[places[row]] = static_cast<int>(row);
  for (const QModelIndex& was : persistentIndexList()) {
    changePersistentIndex(was, index(rows[static_cast<size_t>(was.row())], was.column()));
  }
  Q_EMIT layoutChanged();
}

TableView::TableView(const QString& name, base::Messages& messages, base::FileSystem& files,
                     QWidget* owner)
    : QTableView(owner),
      messages_(messages),
      files_(files),
      file_name_(name),
      model_(new TableModel(this)) {
  setModel(model_);
  PrepareTable(*this, name);
  horizontalHeader()->setStretchLastSection(true);
  horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
  setSortingEnabled(true);
  const auto add = [this](const QString& text, const QKeySequence& key, auto handler) {
    auto* action = new QAction(text, this);
    action->setShortcut(key);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(action, &QAction::triggered, this, handler);
    addAction(action);
  };
  add(QStringLiteral("コピー(&C)"), QKeySequence::Copy, &TableView::mnu_copy_Click);
  add(QStringLiteral("ＣＳＶに保存(&S)…"), QKeySequence::Save, &TableView::mnu_save_Click);
  setContextMenuPolicy(Qt::ActionsContextMenu);
  connect(this, &QTableView::activated, this, [this](const QModelIndex& index) {
    const QString code = CodeOf(index.row());
    if (!code.isEmpty()) Q_EMIT CodeChosen(code);
  });
  connect(selectionModel(), &QItemSelectionModel::currentRowChanged, this,
          [this](const QModelIndex& now) { Q_EMIT CurrentCodeChanged(CodeOf(now.row())); });
}

void TableView::Show(lists::Table table) {
  const QString code = CurrentCode();
  model_->Show(std::move(table));
  const int column = horizontalHeader()->sortIndicatorSection();
  if (column >= 0) model_->sort(column, horizontalHeader()->sortIndicatorOrder());
  FitColumns();
  if (model_->rowCount() > 0) setCurrentIndex(model_->index(0, 0));
  SelectCode(code);
}

QString TableView::CodeOf(int row) const {
  const auto column = Content().CodeColumn();
  if (!column || row < 0 || row >= model_->rowCount()) return {};
  return Text(Content().rows[static_cast<size_t>(row)][*column]);
}

QString TableView::CurrentCode() const { return CodeOf(currentIndex().row()); }

std::vector<std::string> TableView::Codes() const {
  std::vector<std::string> codes;
  const auto column = Content().CodeColumn();
  if (!column) return codes;
  for (const auto& row : Content().rows) codes.push_back(row[*column]);
  return codes;
}

void TableView::SelectCode(const QString& code) {
  const std::vector<std::string> codes = Codes();
  const auto place = std::ranges::find(codes, Utf8(code));
  if (code.isEmpty() || place == codes.end()) return;
  setCurrentIndex(model_->index(static_cast<int>(place - codes.begin()), 0));
}

void TableView::FitColumns() {
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() * 3 / 2);
  resizeColumnsToContents();
}

void TableView::changeEvent(QEvent* event) {
  QTableView::changeEvent(event);
  if (event->type() == QEvent::FontChange) FitColumns();
}

void TableView::mnu_copy_Click() {
  QModelIndexList rows = selectionModel()->selectedRows();
  std::ranges::sort(rows, {}, &QModelIndex::row);
  QString text;
  for (const QModelIndex& index : rows) {
    QStringList fields;
    for (const std::string& field : Content().rows[static_cast<size_t>(index.row())]) {
      fields.append(Text(field));
    }
    text += fields.join('\t') + '\n';
  }
  QGuiApplication::clipboard()->setText(text);
}

void TableView::mnu_save_Click() { SaveCsv(messages_, files_, file_name_, Content().ToCsv()); }

}  // namespace orin::widgets
