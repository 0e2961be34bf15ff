#include "app/main_window/main_form.h"

#include <QApplication>
#include <QCloseEvent>
#include <QScreen>
#include <QStatusBar>
#include <algorithm>
#include <system_error>
#include <utility>

#include "settings/ui/settings_form.h"
#include "store/store_lock.h"
#include "widgets/qt_text.h"

namespace orin::app {

namespace {

/// WindowState, as the settings have it.
constexpr int32_t kNormal = 0;
constexpr int32_t kMinimized = 1;
constexpr int32_t kMaximized = 2;

constexpr int32_t kTextStep = 10;  // percent
constexpr int32_t kSmallestText = 75;
constexpr int32_t kLargestText = 200;

/// At least this much of the window's top edge is on a screen.
bool IsOnScreen(const QRect& place) {
  const QRect handle(place.left(), place.top(), place.width(), 32);
  return std::ranges::any_of(QGuiApplication::screens(), [&handle](const QScreen* screen) {
    const QRect visible = screen->availableGeometry().intersected(handle);
    return visible.width() >= 64 && visible.height() >= 16;
  });
}

bool HasLiveWriter(const store::StoreLocation& location) {
  std::error_code failure;
  // Where the directory is gone, the reload says so.
  return std::filesystem::is_directory(location.system_directory, failure) &&
         !store::StoreLock::Acquire(location.system_directory);
}

}  // namespace

main_Form::main_Form(shell::ProgramState& state, shell::StartUpScreen& screen,
                     const widgets::Look& look)
    : state_(state),
      screen_(screen),
      look_(look),
      area_(new QMdiArea(this)),
      toolbar_(new QToolBar(QStringLiteral("ツールバー"), this)),
      store_label_(new QLabel(this)),
      themes_(new QActionGroup(this)) {
  setWindowTitle(widgets::Text(base::kProductName));
  setProperty("helpPage", QStringLiteral("main_window"));
  area_->setAccessibleName(QStringLiteral("ウィンドウの表示域"));
  area_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  area_->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  area_->setBackground(palette().brush(QPalette::Mid));
  setCentralWidget(area_);
  toolbar_->setMovable(false);
  toolbar_->setObjectName(QStringLiteral("Toolbar1"));
  addToolBar(toolbar_);
  statusBar()->addPermanentWidget(store_label_);
  MakeMenus();
  constexpr int kReloadAfter = 200;  // ms
  reload_timer_.setSingleShot(true);
  reload_timer_.setInterval(kReloadAfter);
  connect(&reload_timer_, &QTimer::timeout, this, &main_Form::ReloadChangedStore);
  state_.on_store_changed = [this] {
    ShowStatus(QStringLiteral("他の処理が株価データを更新したので、読み込み直します。"));
    if (!reload_timer_.isActive()) reload_timer_.start();
  };
  constexpr int kCloseAgainAfter = 100;  // ms
  close_timer_.setSingleShot(true);
  close_timer_.setInterval(kCloseAgainAfter);
  connect(&close_timer_, &QTimer::timeout, this, &main_Form::CloseWhenIdle);
}

main_Form::~main_Form() {
  state_.on_store_changed = nullptr;
  // Windows that close with this one would still tell it.
  area_->disconnect(this);
}

void main_Form::Form_Load() {
  RestorePlacement();
  toolbar_->setVisible(state_.settings.chart_action.shows_toolbar);
  statusBar()->setVisible(state_.settings.chart_action.shows_status_bar);
  ShowStore();
  if (state_.store && !state_.initial_stock.IsNone()) OpenStock(state_.initial_stock);
}

void main_Form::ShowStatus(const QString& status) { statusBar()->showMessage(status, 5000); }

void main_Form::RestorePlacement() {
  const auto& placement = state_.settings.orin;
  const int line = fontMetrics().height();
  resize(line * 60, line * 40);
  const QRect place(placement.window_left, placement.window_top, placement.window_width,
                    placement.window_height);
  if (place.width() >= 200 && place.height() >= 150 && IsOnScreen(place)) setGeometry(place);
  if (placement.window_state == kMinimized) {
    showMinimized();
  } else if (placement.window_state == kMaximized) {
    showMaximized();
  } else {
    show();
  }
}

void main_Form::KeepPlacement() {
  const QRect place = isMaximized() || isMinimized() ? normalGeometry() : geometry();
  auto& placement = state_.settings.orin;
  placement.window_state = isMinimized() ? kMinimized : isMaximized() ? kMaximized : kNormal;
  placement.window_top = place.top();
  placement.window_left = place.left();
  placement.window_width = place.width();
  placement.window_height = place.height();
}

void main_Form::closeEvent(QCloseEvent* event) {
  if (auto* job = findChild<widgets::JobProgress*>()) {
    job->Stop();
    const auto once_it_is_over =
        static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::UniqueConnection);
    connect(job, &QObject::destroyed, this, &main_Form::CloseWhenIdle, once_it_is_over);
    event->ignore();
    return;
  }
  for (QMdiSubWindow* window : area_->subWindowList()) {
    const auto* form = dynamic_cast<shell::StoreWindow*>(window->widget());
    // The user may keep the program open to save.
    if (form == nullptr || !form->HasUnsavedWork()) continue;
    if (!window->close()) {
      event->ignore();
      return;
    }
  }
  KeepPlacement();
  const auto ended = shell::ShutDown(state_);
  if (!ended) screen_.Questions().Warn(ended.error().message);
  event->accept();
}

void main_Form::CloseWhenIdle() {
  if (QApplication::activeModalWidget() == nullptr) {
    close();
  } else {
    close_timer_.start();
  }
}

QMdiSubWindow* main_Form::Add(QWidget* window) {
  window->setAttribute(Qt::WA_DeleteOnClose);
  const bool is_first = area_->subWindowList().isEmpty();
  const bool is_maximized =
      area_->activeSubWindow() != nullptr && area_->activeSubWindow()->isMaximized();
  QMdiSubWindow* sub_window = area_->addSubWindow(window);
  sub_window->setWindowIcon(windowIcon());
  // Its own key for closing would clash with that of the window menu.
  for (QAction* action : sub_window->systemMenu()->actions()) action->setShortcut({});
  if (is_first || is_maximized) {
    sub_window->showMaximized();
  } else {
    sub_window->resize(area_->size() * 3 / 4);
    sub_window->show();
  }
  window->setFocus();
  return sub_window;
}

void main_Form::Activate(QWidget* window) {
  for (QMdiSubWindow* each : area_->subWindowList()) {
    if (each->widget() == window) area_->setActiveSubWindow(each);
  }
  window->setFocus();
}

void main_Form::OpenStock(base::MasterRecord stock, const lists::StockSequence& sequence) {
  for (lists::pricelist_Form* listing : Windows<lists::pricelist_Form>()) {
    if (listing->Stock() != stock) continue;
    listing->SetSequence(sequence);
    Activate(listing);
    return;
  }
  auto* listing = new lists::pricelist_Form(state_, screen_.Questions());
  listing->SetSequence(sequence);
  listing->ShowStock(stock);
  Add(listing);
}

void main_Form::OpenCode(const QString& code, const lists::StockSequence& sequence) {
  if (!state_.store) return;
  const auto parsed = store::StockCode::Parse(widgets::Utf8(code));
  const base::MasterRecord stock =
      parsed ? state_.store->Master().Find(*parsed) : base::MasterRecord();
  if (stock.IsNone()) {
    screen_.Questions().Warn("銘柄コードが見つかりません。");
    return;
  }
  OpenStock(stock, sequence);
}

lists::meigaramenu_Form* main_Form::StockMenuWindow() {
  for (lists::meigaramenu_Form* menu : Windows<lists::meigaramenu_Form>()) {
    Activate(menu);
    return menu;
  }
  auto* menu = new lists::meigaramenu_Form(state_);
  connect(menu, &lists::meigaramenu_Form::StockChosen, this,
          [this](int record) { OpenStock(base::MasterRecord(record)); });
  Add(menu);
  return menu;
}

void main_Form::ShowStockMenu(const QString& caption) { StockMenuWindow()->ShowMenu(caption); }

void main_Form::ShowTable(const QString& caption, base::Table table, const QString& page) {
  auto* window =
      new widgets::table_Form(caption, std::move(table), screen_.Questions(), *state_.files);
  window->setProperty("helpPage", page);
  connect(window, &widgets::table_Form::CodeChosen, this,
          [this](const QString& code) { OpenCode(code); });
  Add(window);
}

void main_Form::ShowManual(const QString& page) {
  for (widgets::manual_Form* manual : Windows<widgets::manual_Form>()) {
    manual->ShowPage(page);
    Activate(manual);
    return;
  }
  auto* manual = new widgets::manual_Form;
  Add(manual);
  manual->ShowPage(page);
}

void main_Form::ShowStore() {
  const bool has_store = state_.store.has_value();
  for (QAction* action : store_actions_) action->setEnabled(has_store);
  market_action_->setEnabled(!has_store);
  if (!has_store) {
    store_label_->setText(QStringLiteral("株価データがありません"));
    return;
  }
  const auto& store = *state_.store;
  const size_t stocks = store.Master().Stocks().size();
  const QString date = store.Days().Count() > 0 ? widgets::Text(store.Days().Days().back().ToText())
                                                : QStringLiteral("株価なし");
  store_label_->setText(QStringLiteral("最新日付 %1　%2銘柄").arg(date).arg(stocks));
}

void main_Form::ReleaseStore() {
  for (auto* window : Windows<shell::StoreWindow>()) window->ReleaseStore();
}

void main_Form::ReloadWindows() {
  for (auto* window : Windows<shell::StoreWindow>()) window->Reload();
}

void main_Form::ReloadStore() {
  ReleaseStore();
  shell::LoadStore(state_, screen_);
  MakeStockMenuEntries();
  ReloadWindows();
  ShowStore();
}

void main_Form::ReloadChangedStore() {
  if (!state_.store || !state_.store->HasChangedOnDisk()) return;
  const bool is_busy = findChild<widgets::JobProgress*>() != nullptr ||
                       QApplication::activeModalWidget() != nullptr ||
                       HasLiveWriter(state_.StoreLocation());
  if (is_busy) {
    reload_timer_.start();
    return;
  }
  ReloadStore();
  // In place of the last stage of loading.
  if (state_.store) {
    ShowStatus(QStringLiteral("他の処理が株価データを更新したので、読み込み直しました。"));
  }
}

base::Status main_Form::Save(const settings::Settings& changed) {
  const auto saved =
      settings::SaveSettings(*state_.files, state_.places, state_.saved_settings, changed);
  if (saved) state_.saved_settings = changed;
  return saved;
}

void main_Form::ApplySettings(const settings::Settings& changed) {
  const settings::Settings before = std::exchange(state_.settings, changed);
  look_.Apply(static_cast<widgets::Theme>(changed.window.theme), changed.window.font_percent);
  toolbar_->setVisible(changed.chart_action.shows_toolbar);
  statusBar()->setVisible(changed.chart_action.shows_status_bar);
  ShowChecks();
  if (before.bus != changed.bus) {
    ReloadStore();
    return;
  }
  for (auto* window : Windows<shell::StoreWindow>()) {
    if (window->DependsOnChange(before, changed)) window->Reload();
  }
}

void main_Form::ShowChecks() {
  toolbar_action_->setChecked(state_.settings.chart_action.shows_toolbar);
  statusbar_action_->setChecked(state_.settings.chart_action.shows_status_bar);
  themes_->actions()[std::clamp(state_.settings.window.theme, 0, 2)]->setChecked(true);
}

void main_Form::ChangeTextSize(int32_t percent) {
  settings::Settings changed = state_.settings;
  changed.window.font_percent = std::clamp(percent, kSmallestText, kLargestText);
  ApplySettings(changed);
}

void main_Form::ChooseTheme(widgets::Theme theme) {
  settings::Settings changed = state_.settings;
  changed.window.theme = static_cast<int32_t>(theme);
  ApplySettings(changed);
}

void main_Form::mnu_larger_Click() {
  ChangeTextSize(state_.settings.window.font_percent + kTextStep);
}

void main_Form::mnu_smaller_Click() {
  ChangeTextSize(state_.settings.window.font_percent - kTextStep);
}

void main_Form::mnu_normal_Click() { ChangeTextSize(100); }

void main_Form::mnu_toolbar_Click() {
  settings::Settings changed = state_.settings;
  changed.chart_action.shows_toolbar = toolbar_action_->isChecked();
  ApplySettings(changed);
}

void main_Form::mnu_statusbar_Click() {
  settings::Settings changed = state_.settings;
  changed.chart_action.shows_status_bar = statusbar_action_->isChecked();
  ApplySettings(changed);
}

void main_Form::mnu_settings_Click() {
  settings::settings_Form form(state_.settings, state_.places, screen_.Questions(),
                               [this](const settings::Settings& changed) {
                                 const auto saved = Save(changed);
                                 if (saved) ApplySettings(changed);
                                 return saved;
                               });
  form.exec();
}

void main_Form::Fail(const std::string& stage, const std::string& sentence) {
  // A full disk that stops the job stops the log too; the message is what counts.
  static_cast<void>(state_.error_log.Append(0, stage, sentence));
  screen_.Questions().Warn(sentence, base::StageCaption(stage));
}

}  // namespace orin::app
