#include "lists/ui/meigaramenu_form.h"

#include <QAction>
#include <QClipboard>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QHeaderView>
#include <QScrollBar>
#include <QSplitter>
#include <QStringList>
#include <QVBoxLayout>
#include <array>
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
      model_(new StockModel(state, this)),
      view_(new QTableView(this)) {
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
    if (item->data(0, kLeafRole).isValid() && model_->rowCount() > 0) view_->setFocus();
  });
  connect(view_, &QTableView::activated, this, &meigaramenu_Form::mnu_open_Click);
  Reload();
}

void meigaramenu_Form::MakeTable() {
  view_->setModel(model_);
  view_->setAccessibleName(QStringLiteral("銘柄"));
  view_->setSelectionBehavior(QAbstractItemView::SelectRows);
  view_->setSelectionMode(QAbstractItemView::SingleSelection);
  view_->setTabKeyNavigation(false);
  view_->setWordWrap(false);
  view_->verticalHeader()->hide();
  view_->horizontalHeader()->setHighlightSections(false);
  view_->horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
  view_->installEventFilter(this);
}

void meigaramenu_Form::MakeActions() {
  const auto add = [this](const QString& text, const QKeySequence& key, auto handler) {
    auto* action = new QAction(text, this);
    action->setShortcut(key);
    action->setShortcutContext(Qt::WidgetShortcut);
    connect(action, &QAction::triggered, this, handler);
    view_->addAction(action);
  };
  // What a tab parts is shown as the key: these keys are handled elsewhere.
  add(QStringLiteral("株価一覧を開く(&O)\tEnter"), {}, &meigaramenu_Form::mnu_open_Click);
  add(QStringLiteral("コピー(&C)"), QKeySequence::Copy, &meigaramenu_Form::mnu_copy_Click);
  add(QStringLiteral("銘柄検索(&F)\tCtrl+F"), {}, &meigaramenu_Form::StartSearch);
  view_->setContextMenuPolicy(Qt::ActionsContextMenu);
}

void meigaramenu_Form::Reload() {
  const QString shown = menu_ == nullptr ? QString() : Text(menu_->caption);
  const int row = view_->currentIndex().row();
  menu_ = nullptr;
  menus_.clear();
  search_ = {};
  model_->Reload();
  if (state_.store) {
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
  Search_Changed(search_box_->text());
  if (row > 0 && row < model_->rowCount()) view_->setCurrentIndex(model_->index(row, 0));
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
  SizeColumns();
  const settings::MenuDisplaySettings& display = state_.settings.menu_display;
  view_->setColumnHidden(0, display.code_display == 2);
  view_->setColumnHidden(1, display.name_display == 2);
  view_->setColumnHidden(2, display.category_display == 0);
}

/// The name has what the others leave.
void meigaramenu_Form::changeEvent(QEvent* event) {
  // The size of texts reaches a window only after the settings have changed.
  if (event->type() == QEvent::FontChange) SizeColumns();
  QWidget::changeEvent(event);
}

void meigaramenu_Form::SizeColumns() {
  const QFontMetrics metrics = view_->fontMetrics();
  view_->verticalHeader()->setDefaultSectionSize(metrics.height() * 3 / 2);
  const bool has_market = state_.settings.menu_display.code_display == 1;
  const QString code = QStringLiteral("WWWW.W");
  const std::array<std::pair<int, QString>, 3> widest = {
      {{0, has_market ? code + QStringLiteral("（ＮＹ市場）") : code},
       {2, QStringLiteral("テクノロジー")},
       {3, QStringLiteral("ＮＹ市場")}}};
  for (const auto& [column, text] : widest) {
    view_->setColumnWidth(column, metrics.horizontalAdvance(text) + metrics.height());
  }
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

void meigaramenu_Form::Search_Changed(const QString& text) {
  if (!text.trimmed().isEmpty()) {
    ShowStocks(SearchCaption(), search_.Find(Utf8(text), kMostFound));
  } else if (menu_ != nullptr) {
    ShowStocks(Text(menu_->caption), menu_->stocks);
  } else {
    ShowStocks(SearchCaption(), {});
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

void meigaramenu_Form::ShowStocks(const QString& caption, std::vector<base::MasterRecord> stocks) {
  setWindowTitle(caption);
  ShowCount(stocks.size());
  model_->Show(std::move(stocks));
  if (model_->rowCount() > 0) view_->setCurrentIndex(model_->index(0, 0));
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
  const QModelIndex current = view_->currentIndex();
  if (current.isValid()) Q_EMIT StockChosen(model_->StockAt(current.row()).Value());
}

/// What the row shows, parted by tabs.
void meigaramenu_Form::mnu_copy_Click() {
  const QModelIndex current = view_->currentIndex();
  if (!current.isValid()) return;
  QStringList fields;
  for (int column = 0; column < model_->columnCount(); ++column) {
    if (view_->isColumnHidden(column)) continue;
    fields.append(current.siblingAtColumn(column).data().toString());
  }
  QGuiApplication::clipboard()->setText(fields.join('\t'));
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
  if (!leads_on || model_->rowCount() == 0) return TypeInSearch(event);
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
