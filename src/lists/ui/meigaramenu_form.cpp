#include "lists/ui/meigaramenu_form.h"

#include <QAction>
#include <QCoreApplication>
#include <QHeaderView>
#include <QScrollBar>
#include <QSplitter>
#include <QStringList>
#include <QVBoxLayout>
#include <utility>

#include "widgets/qt_text.h"

namespace orin::lists {

using widgets::Text;
using widgets::Utf8;

namespace {

constexpr size_t kMostFound = 500;
constexpr int kLeafRole = Qt::UserRole;

QString Css(base::Color color) { return QColor(color.red, color.green, color.blue).name(); }

QString SearchCaption() { return QStringLiteral("銘柄検索"); }

}  // namespace

meigaramenu_Form::meigaramenu_Form(const shell::ProgramState& state)
    : state_(state),
      search_box_(new QLineEdit(this)),
      count_(new QLabel(this)),
      tree_(new QTreeWidget(this)),
      view_(new widgets::TableView(QStringLiteral("銘柄"), widgets::ColumnFit::kExpected, this)) {
  setProperty("helpPage", QStringLiteral("stock_menus"));
  setWindowTitle(SearchCaption());
  auto* label = new QLabel(QStringLiteral("検索(&E)："), this);
  label->setBuddy(search_box_);
  search_box_->setPlaceholderText(QStringLiteral("コード・社名・読み"));
  search_box_->setClearButtonEnabled(true);
  search_box_->installEventFilter(this);
  auto* bar = new QHBoxLayout;
  bar->addWidget(label);
  bar->addWidget(search_box_);
  bar->addWidget(count_);

  tree_->setHeaderHidden(true);
  tree_->setAccessibleName(QStringLiteral("銘柄メニュー"));
  tree_->installEventFilter(this);
  MakeTable();
  MakeActions();
  auto* splitter = new QSplitter(this);
  splitter->addWidget(tree_);
  splitter->addWidget(view_);
  splitter->setStretchFactor(1, 1);
  const int widest = tree_->fontMetrics().horizontalAdvance(QStringLiteral("証券コードメニュー"));
  const int tree_width =
      widest + 2 * tree_->indentation() + tree_->verticalScrollBar()->sizeHint().width();
  splitter->setSizes({tree_width, 3 * tree_width});
  splitter->setChildrenCollapsible(false);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(bar);
  layout->addWidget(splitter, 1);
  setTabOrder(search_box_, tree_);
  setTabOrder(tree_, view_);
  setFocusProxy(search_box_);

  connect(search_box_, &QLineEdit::textChanged, this, &meigaramenu_Form::Search_Changed);
  connect(search_box_, &QLineEdit::returnPressed, this, &meigaramenu_Form::mnu_open_Click);
  connect(tree_, &QTreeWidget::currentItemChanged, this,
          [this](const QTreeWidgetItem* item) { Menu_Chosen(item); });
  connect(tree_, &QTreeWidget::itemClicked, this,
          [this](const QTreeWidgetItem* item) { Menu_Chosen(item); });
  connect(tree_, &QTreeWidget::itemActivated, this, [this](const QTreeWidgetItem* item) {
    if (item->data(0, kLeafRole).isValid() && view_->model()->rowCount() > 0) view_->setFocus();
  });
  connect(view_, &QTableView::activated, this, &meigaramenu_Form::mnu_open_Click);
  Reload();
}

void meigaramenu_Form::MakeTable() {
  view_->setSelectionMode(QAbstractItemView::SingleSelection);
  view_->setAlternatingRowColors(false);
  view_->setShowGrid(true);
  view_->installEventFilter(this);
}

void meigaramenu_Form::MakeActions() {
  // What a tab parts is shown as the key: these keys are handled elsewhere.
  auto* open = new QAction(QStringLiteral("株価一覧を開く(&O)\tEnter"), this);
  connect(open, &QAction::triggered, this, &meigaramenu_Form::mnu_open_Click);
  view_->insertAction(view_->actions().front(), open);
  auto* search = new QAction(QStringLiteral("銘柄検索(&F)\tCtrl+F"), this);
  connect(search, &QAction::triggered, this, &meigaramenu_Form::StartSearch);
  view_->addAction(search);
}

void meigaramenu_Form::Reload() {
  const QString shown = menu_ == nullptr ? QString() : Text(menu_->caption);
  const int row = view_->currentIndex().row();
  menu_ = nullptr;
  menus_.clear();
  search_ = {};
  companies_.clear();
  if (state_.store) {
    companies_ = CompaniesByRecord(state_.store->Master(), state_.name_index);
    menus_ = MakeStockMenus(state_.store->Master(), state_.name_index);
    search_ = StockSearch(state_.store->Master(), state_.name_index);
  }
  FillTree();
  PaintAsSet();
  if (QTreeWidgetItem* item = ItemOf(shown)) {
    const QSignalBlocker quiet(tree_);
    tree_->setCurrentItem(item);
    menu_ = MenuOf(item);
  }
  ShowChosen(row > 0 ? widgets::CurrentRow::kSame : widgets::CurrentRow::kFirst);
}

bool meigaramenu_Form::DependsOnChange(const settings::Settings& before,
                                       const settings::Settings& after) const {
  // A view with a style sheet keeps its font until the sheet is set again.
  return before.menu_color != after.menu_color || before.menu_display != after.menu_display ||
         before.window != after.window;
}

void meigaramenu_Form::FillTree() {
  const QSignalBlocker quiet(tree_);
  tree_->clear();
  leaves_.clear();
  AddMenus(tree_->invisibleRootItem(), menus_);
  for (int i = 0; i < tree_->topLevelItemCount(); ++i) tree_->topLevelItem(i)->setExpanded(true);
}

void meigaramenu_Form::AddMenus(QTreeWidgetItem* parent, const std::vector<StockMenu>& menus) {
  for (const StockMenu& menu : menus) {
    auto* item = new QTreeWidgetItem(QStringList{Text(menu.label)});
    parent->addChild(item);
    if (menu.menus.empty()) {
      item->setData(0, kLeafRole, static_cast<qulonglong>(leaves_.size()));
      leaves_.push_back(&menu);
      if (menu.stocks.empty()) {
        item->setForeground(0, palette().brush(QPalette::Disabled, QPalette::Text));
      }
    }
    AddMenus(item, menu.menus);
  }
}

void meigaramenu_Form::PaintAsSet() {
  const settings::MenuColorSettings& colors = state_.settings.menu_color;
  view_->setStyleSheet(
      QStringLiteral("QTableView { background-color: %1; gridline-color: %2; }"
                     "QHeaderView::section { background-color: %3; color: %4; border: none;"
                     " border-right: 1px solid %2; padding: 4px; }")
          .arg(Css(colors.ground), Css(colors.lines), Css(colors.heading_ground),
               Css(colors.heading_text)));
}

void meigaramenu_Form::ShowMenu(const QString& caption) {
  QTreeWidgetItem* item = ItemOf(caption);
  if (item == nullptr) return;
  tree_->setCurrentItem(item);
  Menu_Chosen(item);
  tree_->setFocus();
}

/// Null where there is no menu of stocks with that caption.
QTreeWidgetItem* meigaramenu_Form::ItemOf(const QString& caption) const {
  for (QTreeWidgetItemIterator item(tree_); *item != nullptr; ++item) {
    const StockMenu* menu = MenuOf(*item);
    if (menu != nullptr && Text(menu->caption) == caption) return *item;
  }
  return nullptr;
}

/// Null where the item holds menus.
const StockMenu* meigaramenu_Form::MenuOf(const QTreeWidgetItem* item) const {
  const QVariant leaf = item == nullptr ? QVariant() : item->data(0, kLeafRole);
  return leaf.isValid() ? leaves_[leaf.toULongLong()] : nullptr;
}

void meigaramenu_Form::StartSearch() {
  search_box_->setFocus();
  search_box_->selectAll();
}

void meigaramenu_Form::Search_Changed() { ShowChosen(widgets::CurrentRow::kFirst); }

/// What is searched for, else the menu chosen.
void meigaramenu_Form::ShowChosen(widgets::CurrentRow current) {
  const QString text = search_box_->text();
  if (!text.trimmed().isEmpty()) {
    ShowStocks(SearchCaption(), search_.Find(Utf8(text), kMostFound), current);
  } else if (menu_ != nullptr) {
    ShowStocks(Text(menu_->caption), menu_->stocks, current);
  } else {
    ShowStocks(SearchCaption(), {}, current);
  }
}

void meigaramenu_Form::Menu_Chosen(const QTreeWidgetItem* item) {
  const StockMenu* menu = MenuOf(item);
  if (menu == nullptr) return;
  menu_ = menu;
  {
    const QSignalBlocker quiet(search_box_);
    search_box_->clear();
  }
  ShowStocks(Text(menu->caption), menu->stocks);
}

void meigaramenu_Form::ShowStocks(const QString& caption,
                                  const std::vector<base::MasterRecord>& stocks,
                                  widgets::CurrentRow current) {
  setWindowTitle(caption);
  ShowCount(stocks.size());
  if (!state_.store) {
    view_->Show({});
    return;
  }
  view_->Show(TableOfMenu(state_.store->Master(), stocks, companies_, state_.settings.menu_display,
                          state_.settings.menu_color),
              current);
}

void meigaramenu_Form::ShowCount(size_t count) {
  const bool is_search = windowTitle() == SearchCaption();
  const bool is_idle = is_search && search_box_->text().trimmed().isEmpty();
  QString text = QStringLiteral("%1銘柄").arg(count);
  if (count == 0) text = QStringLiteral("該当する銘柄がありません");
  if (is_search && count == kMostFound) text = QStringLiteral("先頭の%1銘柄").arg(count);
  count_->setText(is_idle ? QString() : text);
}

void meigaramenu_Form::mnu_open_Click() {
  const auto code = store::StockCode::Parse(Utf8(view_->CurrentCode()));
  if (!code || !state_.store) return;
  const base::MasterRecord stock = state_.store->Master().Find(*code);
  if (!stock.IsNone()) Q_EMIT StockChosen(stock.Value());
}

bool meigaramenu_Form::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
  auto& key = static_cast<QKeyEvent&>(*event);
  if (watched == search_box_) return SearchKey(key);
  if (watched == tree_) return TreeKey(key);
  return watched == view_ && TableKey(key);
}

/// The arrows choose among the stocks while the user types.
bool meigaramenu_Form::SearchKey(QKeyEvent& event) {
  switch (event.key()) {
    case Qt::Key_Up:
      // The table would give the focus back.
      if (view_->currentIndex().row() <= 0) return true;
      [[fallthrough]];
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
      if (event.modifiers() & Qt::ControlModifier) return false;
      QCoreApplication::sendEvent(view_, &event);
      return true;
    case Qt::Key_Escape:
      search_box_->clear();
      return true;
    default:
      return false;
  }
}

bool meigaramenu_Form::TreeKey(QKeyEvent& event) {
  const bool leads_on = event.key() == Qt::Key_Right && MenuOf(tree_->currentItem()) != nullptr;
  if (!leads_on || view_->model()->rowCount() == 0) return TypeInSearch(event);
  view_->setFocus();
  return true;
}

bool meigaramenu_Form::TableKey(QKeyEvent& event) {
  const QModelIndex current = view_->currentIndex();
  const bool is_leftmost = current.column() <= view_->horizontalHeader()->logicalIndexAt(0);
  if (event.key() == Qt::Key_Left && is_leftmost) {
    tree_->setFocus();
    return true;
  }
  if (event.key() == Qt::Key_Up && current.row() <= 0) {
    search_box_->setFocus();
    return true;
  }
  return TypeInSearch(event);
}

/// Letters typed anywhere in the window are searched for.
bool meigaramenu_Form::TypeInSearch(QKeyEvent& event) {
  const QString text = event.text();
  const bool is_command =
      event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
  if (is_command || text.isEmpty() || !text[0].isPrint() || text[0].isSpace()) return false;
  search_box_->setFocus();
  QCoreApplication::sendEvent(search_box_, &event);
  return true;
}

}  // namespace orin::lists
