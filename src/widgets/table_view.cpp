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

TableView::TableView(const QString& name, ColumnFit fit, QWidget* owner)
    : QTableView(owner), model_(new TableModel(this)), fit_(fit), file_name_(name) {
  setModel(model_);
  setAccessibleName(name);
  setSelectionBehavior(QAbstractItemView::SelectRows);
  setAlternatingRowColors(true);
  setShowGrid(false);
  setWordWrap(false);
  setTabKeyNavigation(false);
  verticalHeader()->hide();
  horizontalHeader()->setHighlightSections(false);
  horizontalHeader()->setStretchLastSection(fit == ColumnFit::kContents);
  setContextMenuPolicy(Qt::ActionsContextMenu);
  AddAction(QStringLiteral("コピー(&C)"), QKeySequence::Copy, &TableView::mnu_copy_Click);
  connect(this, &QTableView::activated, this, [this](const QModelIndex& index) {
    const QString code = CodeOf(index.row());
    if (!code.isEmpty()) Q_EMIT CodeChosen(code);
  });
  connect(selectionModel(), &QItemSelectionModel::currentRowChanged, this,
          [this](const QModelIndex& now) { Q_EMIT CurrentCodeChanged(CodeOf(now.row())); });
}

void TableView::AddAction(const QString& text, const QKeySequence& key,
                          void (TableView::*handler)()) {
  auto* action = new QAction(text, this);
  action->setShortcut(key);
  action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
  connect(action, &QAction::triggered, this, handler);
  addAction(action);
}

void TableView::AllowSorting(int column, Qt::SortOrder order) {
  horizontalHeader()->setSortIndicator(column, order);
  setSortingEnabled(true);
}

void TableView::AllowSaving(base::Messages& messages, base::FileSystem& files) {
  messages_ = &messages;
  files_ = &files;
  AddAction(QStringLiteral("ＣＳＶに保存(&S)…"), QKeySequence::Save, &TableView::mnu_save_Click);
}

void TableView::Show(base::Table table, CurrentRow current) {
  const base::Cell key = current == CurrentRow::kSame ? CurrentKey() : base::Cell();
  model_->Show(std::move(table));
  if (isSortingEnabled()) {
    model_->sort(horizontalHeader()->sortIndicatorSection(),
                 horizontalHeader()->sortIndicatorOrder());
  }
  for (int column = 0; column < model_->columnCount(); ++column) {
    setColumnHidden(column, Content().columns[static_cast<size_t>(column)].is_hidden);
  }
  FitColumns();
  if (model_->rowCount() == 0) return;
  const size_t row = base::IsEmpty(key) ? 0 : Content().FindRow(key).value_or(0);
  setCurrentIndex(model_->index(static_cast<int>(row), 0));
}

QString TableView::CodeOf(int row) const {
  const auto column = Content().CodeColumn();
  if (!column || row < 0 || row >= model_->rowCount()) return {};
  return Text(Content().Text(static_cast<size_t>(row), *column));
}

QString TableView::CurrentCode() const { return CodeOf(currentIndex().row()); }

base::Cell TableView::CurrentKey() const {
  const auto column = Content().KeyColumn();
  if (!column || !currentIndex().isValid()) return {};
  return Content().rows[static_cast<size_t>(currentIndex().row())][*column];
}

std::vector<std::string> TableView::Codes() const {
  std::vector<std::string> codes;
  const auto column = Content().CodeColumn();
  if (!column) return codes;
  for (size_t row = 0; row < Content().rows.size(); ++row) {
    codes.push_back(Content().Text(row, *column));
  }
  return codes;
}

std::vector<size_t> TableView::SelectedRows() const {
  std::vector<size_t> rows;
  for (const QModelIndex& index : selectionModel()->selectedRows()) {
    rows.push_back(static_cast<size_t>(index.row()));
  }
  std::ranges::sort(rows);
  return rows;
}

void TableView::SelectCode(const QString& code) {
  const std::vector<std::string> codes = Codes();
  const auto place = std::ranges::find(codes, Utf8(code));
  if (code.isEmpty() || place == codes.end()) return;
  setCurrentIndex(model_->index(static_cast<int>(place - codes.begin()), 0));
}

void TableView::FitColumns() {
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() * 3 / 2);
  switch (fit_) {
    case ColumnFit::kContents:
      resizeColumnsToContents();
      break;
    case ColumnFit::kRoomy:
      FitRoomily();
      break;
    case ColumnFit::kExpected:
      FitToExpected();
      break;
  }
}

void TableView::FitRoomily() {
  const QFontMetrics metrics = fontMetrics();
  for (int column = 0; column < model_->columnCount(); ++column) {
    const auto place = static_cast<size_t>(column);
    const int text = metrics.horizontalAdvance(Text(Content().LongestText(place)));
    // The mark of the order stands beside the heading.
    const int heading =
        metrics.horizontalAdvance(Text(Content().columns[place].heading)) + metrics.height();
    setColumnWidth(column, std::max(text, heading) + 2 * metrics.averageCharWidth());
  }
}

void TableView::FitToExpected() {
  const QFontMetrics metrics = fontMetrics();
  for (int column = 0; column < model_->columnCount(); ++column) {
    const QString longest = Text(Content().columns[static_cast<size_t>(column)].longest_text);
    if (isColumnHidden(column)) continue;
    horizontalHeader()->setSectionResizeMode(
        column, longest.isEmpty() ? QHeaderView::Stretch : QHeaderView::Interactive);
    if (longest.isEmpty()) continue;
    setColumnWidth(column, metrics.horizontalAdvance(longest) + metrics.height());
  }
}

void TableView::changeEvent(QEvent* event) {
  QTableView::changeEvent(event);
  if (event->type() == QEvent::FontChange) FitColumns();
}

void TableView::mnu_copy_Click() {
  const std::vector<size_t> rows = SelectedRows();
  if (rows.empty()) return;
  QString text = Text(Content().ToTabs(rows));
  // The one row of a menu goes into a line of another text.
  if (selectionMode() == QAbstractItemView::SingleSelection) text.chop(1);
  QGuiApplication::clipboard()->setText(text);
}

void TableView::mnu_save_Click() {
  const auto path = messages_->ChooseFile({.caption = "ＣＳＶに保存",
                                           .filter = "ＣＳＶファイル|*.csv|",
                                           .start = Utf8(file_name_) + ".csv",
                                           .choice = base::FileChoice::kSave});
  if (!path) return;
  // Spreadsheets look for the mark of UTF-8.
  const auto saved =
      base::ReplaceFile(*files_, *path, std::string(base::kUtf8Mark) + Content().ToCsv());
  if (!saved) messages_->Warn(saved.error().message);
}

}  // namespace orin::widgets
