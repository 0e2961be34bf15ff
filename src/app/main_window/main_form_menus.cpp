#include <QActionGroup>
#include <QCoreApplication>
#include <QMenuBar>
#include <QStatusBar>
#include <array>

#include "app/main_window/main_form.h"
#include "store/file_names.h"
#include "widgets/qt_text.h"

// The menu bar and the toolbar of the main window.

namespace orin::app {

/// A command of a menu, with its handler.
struct main_Form::Command {
  const char* menu;
  const char* text;
  const char* shortcut;  // "" for none
  const char* tip;       // shown in the status bar
  void (main_Form::*handler)();
  bool needs_store = false;
  const char* toolbar_text = nullptr;  // null: not in the toolbar
};

namespace {

constexpr std::array kMenus = {"ファイル(&F)", "銘柄(&M)", "分析(&A)",       "表示(&V)",
                               "管理(&K)",     "設定(&S)", "ウィンドウ(&W)", "ヘルプ(&H)"};

struct SystemFileRow {
  store::FileKind kind;
  const char* text;
};

constexpr std::array kSystemFiles = {
    SystemFileRow{store::FileKind::kNameIndex, "５０音順一覧（orin.ind）"},
    SystemFileRow{store::FileKind::kAdded, "追加銘柄一覧（orin.add）"},
    SystemFileRow{store::FileKind::kDeleted, "削除銘柄一覧（orin.del）"},
};

}  // namespace

const std::vector<main_Form::Command>& main_Form::Commands() {
  using Form = main_Form;
  static const std::vector<Command> commands = {
      {kMenus[0], "株価データを用意する(&N)…", "",
       "見本市場、空の株価データ、ＣＳＶファイルのどれかで始めます", &Form::mnu_market_Click},
      {kMenus[0], "ＣＳＶ株価更新(&U)…", "Ctrl+U", "ＣＳＶファイルから株価を取り込みます",
       &Form::mnu_update_csv_Click, true, "株価更新"},
      {kMenus[0], "会社情報の取り込み(&I)…", "", "会社情報と財務をＣＳＶファイルから取り込みます",
       &Form::mnu_company_read_Click, true},
      {kMenus[0], "会社情報の保存(&O)…", "", "会社情報と財務をＣＳＶファイルに保存します",
       &Form::mnu_company_write_Click, true},
      {kMenus[1], "銘柄検索(&F)", "Ctrl+F", "コード、社名、読みで銘柄を探します",
       &Form::mnu_search_Click, true, "銘柄検索"},
      {kMenus[1], "株価一覧(&P)", "Ctrl+L",
       "ダウ工業株の指数など、最初の銘柄の株価一覧を表示します", &Form::mnu_pricelist_Click, true,
       "株価一覧"},
      {kMenus[1], "前の銘柄(&B)", "Ctrl+PgUp", "株価一覧か分析結果を前の銘柄に変えます",
       &Form::mnu_beforemeigara_Click, true, "前の銘柄"},
      {kMenus[1], "次の銘柄(&N)", "Ctrl+PgDown", "株価一覧か分析結果を次の銘柄に変えます",
       &Form::mnu_aftermeigara_Click, true, "次の銘柄"},
      {kMenus[2], "株価分析(&W)…", "Ctrl+R",
       "株価分析グループの分析ファイルを選び、日付を決めて実行します", &Form::mnu_check2_Click,
       true, "株価分析"},
      {kMenus[2], "株価分析の実行(&R)", "F5",
       "株価分析グループの、印のついた分析ファイルを実行します", &Form::mnu_analysis_Click, true},
      {kMenus[2], "条件エディター(&J)…", "Ctrl+E", "新しい分析ファイルの条件を書きます",
       &Form::mnu_joken_Click, false, "条件エディター"},
      {kMenus[2], "結果リストを開く(&O)…", "", "前に書かれた結果リストを表示します",
       &Form::mnu_result_Click, true},
      {kMenus[2], "分析項目一覧(&I)", "", "条件に使える項目の一覧を表示します",
       &Form::mnu_koumoku_Click},
      {kMenus[3], "文字を大きく(&L)", "Ctrl++", "すべての文字を大きくします",
       &Form::mnu_larger_Click},
      {kMenus[3], "文字を小さく(&S)", "Ctrl+-", "すべての文字を小さくします",
       &Form::mnu_smaller_Click},
      {kMenus[3], "標準の大きさ(&N)", "Ctrl+0", "文字を標準の大きさに戻します",
       &Form::mnu_normal_Click},
      {kMenus[4], "株価データの検査(&C)", "", "株価データに問題がないか調べます",
       &Form::mnu_check_Click, true},
      {kMenus[4], "株式分割一覧(&B)", "", "登録されている株式分割を表示します",
       &Form::mnu_bunkatsu_Click, true},
      {kMenus[4], "銘柄マスター一覧(&M)", "", "登録されている銘柄を表示します",
       &Form::mnu_master_Click, true},
      {kMenus[4], "エラーの記録(&E)", "", "これまでに起きた問題の記録を表示します",
       &Form::mnu_errorlog_Click},
      {kMenus[5], "設定(&S)…", "Ctrl+,", "すべての設定を変更します", &Form::mnu_settings_Click,
       false, "設定"},
      {kMenus[7], "このウィンドウの説明(&H)", "F1", "前にあるウィンドウの使い方を表示します",
       &Form::mnu_help_Click, false, "使い方"},
      {kMenus[7], "使い方の目次(&I)", "", "使い方の目次を表示します", &Form::mnu_contents_Click},
      {kMenus[7], "ミルテについて(&A)", "", "版を表示します", &Form::mnu_about_Click},
  };
  return commands;
}

QAction* main_Form::AddCommand(const Command& command, QMenu* menu) {
  QAction* action = menu->addAction(widgets::Text(command.text));
  action->setShortcut(QKeySequence(QLatin1String(command.shortcut)));
  action->setStatusTip(widgets::Text(command.tip));
  connect(action, &QAction::triggered, this, command.handler);
  if (command.needs_store) store_actions_.push_back(action);
  if (command.toolbar_text != nullptr) {
    action->setIconText(widgets::Text(command.toolbar_text));
    action->setToolTip(widgets::Text(command.tip));
    toolbar_->addAction(action);
  }
  return action;
}

void main_Form::MakeMenus() {
  std::vector<QMenu*> menus;
  for (const char* title : kMenus) {
    menus.push_back(menuBar()->addMenu(widgets::Text(title)));
    for (const Command& command : Commands()) {
      if (command.menu != title) continue;
      QAction* action = AddCommand(command, menus.back());
      if (command.handler == &main_Form::mnu_market_Click) market_action_ = action;
    }
  }
  toolbar_->setToolButtonStyle(Qt::ToolButtonTextOnly);
  menus[0]->addSeparator();
  QAction* quit = menus[0]->addAction(QStringLiteral("終了(&X)"));
  quit->setShortcut(QKeySequence(QStringLiteral("Ctrl+Q")));
  quit->setStatusTip(QStringLiteral("ミルテを終了します"));
  connect(quit, &QAction::triggered, this, &QWidget::close);
  menus[1]->addSeparator();
  for (const char* title :
       {"証券コードメニュー(&C)", "５０音順メニュー(&A)", "業種別メニュー(&S)"}) {
    stock_menus_.push_back(menus[1]->addMenu(widgets::Text(title)));
    store_actions_.push_back(stock_menus_.back()->menuAction());
  }
  MakeStockMenuEntries();
  MakeThemeEntries(menus[3]);
  MakeSystemFileEntries(menus[4]);
  window_menu_ = menus[6];
  MakeWindowEntries();
}

void main_Form::MakeThemeEntries(QMenu* menu) {
  const auto add_check = [this, menu](const QString& text, void (main_Form::*handler)()) {
    QAction* action = menu->addAction(text);
    action->setCheckable(true);
    connect(action, &QAction::triggered, this, handler);
    return action;
  };
  menu->addSeparator();
  toolbar_action_ = add_check(QStringLiteral("ツールバー(&T)"), &main_Form::mnu_toolbar_Click);
  statusbar_action_ =
      add_check(QStringLiteral("ステータスバー(&B)"), &main_Form::mnu_statusbar_Click);
  QMenu* themes = menu->addMenu(QStringLiteral("配色(&C)"));
  for (const char* text : {"デスクトップに合わせる(&S)", "明るい配色(&L)", "暗い配色(&D)"}) {
    QAction* action = themes->addAction(widgets::Text(text));
    action->setCheckable(true);
    const auto theme = static_cast<widgets::Theme>(themes_->actions().size());
    themes_->addAction(action);
    connect(action, &QAction::triggered, this, [this, theme] { ChooseTheme(theme); });
  }
  ShowChecks();
}

void main_Form::MakeSystemFileEntries(QMenu* menu) {
  menu->addSeparator();
  for (const SystemFileRow& row : kSystemFiles) {
    QAction* action = menu->addAction(widgets::Text(row.text));
    connect(action, &QAction::triggered, this,
            [this, row] { ShowSystemFile(row.kind, widgets::Text(row.text)); });
    store_actions_.push_back(action);
  }
}

void main_Form::MakeStockMenuEntries() {
  for (QMenu* menu : stock_menus_) menu->clear();
  if (!state_.store) return;
  const auto contents = lists::MakeStockMenus(state_.store->Master(), state_.name_index);
  for (size_t i = 0; i < std::min(contents.size(), stock_menus_.size()); ++i) {
    FillStockMenu(stock_menus_[i], contents[i]);
  }
}

void main_Form::FillStockMenu(QMenu* menu, const lists::StockMenu& content) {
  for (const lists::StockMenu& entry : content.menus) {
    if (entry.menus.empty()) {
      QAction* action = menu->addAction(widgets::Text(entry.label));
      const QString caption = widgets::Text(entry.caption);
      connect(action, &QAction::triggered, this, [this, caption] { ShowStockMenu(caption); });
    } else {
      FillStockMenu(menu->addMenu(widgets::Text(entry.label)), entry);
    }
  }
}

void main_Form::MakeWindowEntries() {
  const auto add = [this](const QString& text, const char* key, auto handler) {
    QAction* action = window_menu_->addAction(text, area_, handler);
    action->setShortcut(QKeySequence(QLatin1String(key)));
    window_actions_.push_back(action);
  };
  add(QStringLiteral("重ねて表示(&C)"), "", &QMdiArea::cascadeSubWindows);
  add(QStringLiteral("並べて表示(&T)"), "", &QMdiArea::tileSubWindows);
  add(QStringLiteral("次のウィンドウ(&N)"), "Ctrl+Tab", &QMdiArea::activateNextSubWindow);
  add(QStringLiteral("前のウィンドウ(&P)"), "Ctrl+Shift+Tab", &QMdiArea::activatePreviousSubWindow);
  add(QStringLiteral("閉じる(&L)"), "Ctrl+W", &QMdiArea::closeActiveSubWindow);
  add(QStringLiteral("すべて閉じる(&A)"), "", &QMdiArea::closeAllSubWindows);
  window_menu_->addSeparator();
  const auto enable = [this] {
    for (QAction* action : window_actions_) action->setEnabled(!area_->subWindowList().isEmpty());
  };
  enable();
  connect(area_, &QMdiArea::subWindowActivated, this, enable);
  connect(window_menu_, &QMenu::aboutToShow, this, &main_Form::ListWindows);
}

void main_Form::ListWindows() {
  for (QAction* action : listed_windows_) delete action;
  listed_windows_.clear();
  for (QMdiSubWindow* window : area_->subWindowList()) {
    const size_t number = listed_windows_.size() + 1;
    const QString mark = number < 10 ? QStringLiteral("&%1 ").arg(number) : QString();
    QAction* action = window_menu_->addAction(mark + window->windowTitle());
    action->setCheckable(true);
    action->setChecked(window == area_->activeSubWindow());
    connect(action, &QAction::triggered, area_,
            [this, window] { area_->setActiveSubWindow(window); });
    listed_windows_.push_back(action);
  }
}

void main_Form::mnu_search_Click() { StockMenuWindow()->StartSearch(); }

void main_Form::mnu_pricelist_Click() {
  if (!state_.initial_stock.IsNone()) OpenStock(state_.initial_stock);
}

void main_Form::StepStock(int32_t step) {
  const QMdiSubWindow* front = area_->activeSubWindow();
  auto* result =
      front != nullptr ? qobject_cast<screening::result_Form*>(front->widget()) : nullptr;
  if (result != nullptr) {
    result->Step(step);
    return;
  }
  const auto listings = Windows<lists::pricelist_Form>();
  if (!listings.empty()) listings.back()->Step(step);
}

void main_Form::mnu_beforemeigara_Click() { StepStock(-1); }

void main_Form::mnu_aftermeigara_Click() { StepStock(1); }

void main_Form::mnu_help_Click() {
  const QMdiSubWindow* window = area_->activeSubWindow();
  const QString page = window != nullptr && window->widget() != nullptr
                           ? window->widget()->property("helpPage").toString()
                           : QString();
  ShowManual(page.isEmpty() ? property("helpPage").toString() : page);
}

void main_Form::mnu_contents_Click() { ShowManual(QStringLiteral("index")); }

void main_Form::mnu_about_Click() {
  screen_.Questions().Inform("ミルテ " + widgets::Utf8(QCoreApplication::applicationVersion()) +
                             "\n米国株の株価データの管理と株価分析");
}

}  // namespace orin::app
