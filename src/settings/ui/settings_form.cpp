#include "settings/ui/settings_form.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QScreen>
#include <QShortcut>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "settings/ui/settings_search.h"
#include "widgets/manual_form.h"
#include "widgets/qt_text.h"

namespace orin::settings {

namespace {

constexpr const char* kSettingsCaption = "ミルテ（設定）";
constexpr size_t kHitsAtOnce = 40;

constexpr const char* kLossQuestion =
    "変更を保存せずに閉じますか？\n"
    "はい：変更を捨てて閉じます。\n"
    "いいえ：設定に戻ります。\n";
constexpr const char* kResetQuestion =
    "すべての設定を既定値に戻しますか？\n"
    "はい：すべての分類の設定を既定値にします（OK か適用を押すと保存します）。\n"
    "いいえ：今の設定のままにします。\n";

}  // namespace

settings_Form::settings_Form(const Settings& current, const SettingsPlaces& places,
                             base::Messages& messages, SaveFunction save)
    : draft_(current, places),
      places_(places),
      messages_(messages),
      save_(std::move(save)),
      search_(new QLineEdit),
      groups_(new QListWidget),
      title_(new QLabel),
      preview_(new SettingsPreview),
      pages_(new QStackedWidget),
      group_pages_(draft_.Groups().size(), nullptr) {
  setWindowTitle(widgets::Text(kSettingsCaption));
  setModal(true);
  setProperty("helpPage", QStringLiteral("settings"));
  widgets::OpenManualWithF1(this);
  auto* sides = new QHBoxLayout;
  sides->addWidget(MakeLeftSide());
  sides->addWidget(MakeRightSide(), 1);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(sides, 1);
  layout->addWidget(MakeButtons());
  FillGroups();

  const QSize wanted(fontMetrics().averageCharWidth() * 150, fontMetrics().height() * 42);
  resize(wanted.boundedTo(screen()->availableSize() * 0.92));
  connect(search_, &QLineEdit::textChanged, this, &settings_Form::search_Change);
  connect(groups_, &QListWidget::currentRowChanged, this, &settings_Form::group_Click);
  // The group that is current already, while hits are shown.
  connect(groups_, &QListWidget::itemClicked, this,
          [this](const QListWidgetItem* item) { group_Click(groups_->row(item)); });
  connect(qApp, &QApplication::focusChanged, this,
          [this](const QWidget*, const QWidget* now) { TakeFocus(now); });
  connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, search_,
          [this] { search_->setFocus(Qt::ShortcutFocusReason); });
  groups_->setCurrentRow(0);
  groups_->setFocus();
  ShowState();
}

settings_Form::~settings_Form() {
  // A field that is left tells of it, which needs the field and the draft whole.
  if (QWidget* field = focusWidget()) field->clearFocus();
  disconnect(qApp, nullptr, this, nullptr);
  delete pages_;
}

QWidget* settings_Form::MakeLeftSide() {
  auto* side = new QWidget;
  auto* layout = new QVBoxLayout(side);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* search_label = new QLabel(QStringLiteral("検索(&F)"));
  search_label->setBuddy(search_);
  search_->setObjectName(QStringLiteral("search"));
  search_->setAccessibleName(QStringLiteral("設定の検索"));
  search_->setPlaceholderText(QStringLiteral("名前、説明、キー"));
  search_->setClearButtonEnabled(true);
  auto* groups_label = new QLabel(QStringLiteral("分類(&G)"));
  groups_label->setBuddy(groups_);
  groups_->setObjectName(QStringLiteral("groups"));
  groups_->setAccessibleName(QStringLiteral("設定の分類"));
  for (QWidget* widget : {static_cast<QWidget*>(search_label), static_cast<QWidget*>(search_),
                          static_cast<QWidget*>(groups_label), static_cast<QWidget*>(groups_)}) {
    layout->addWidget(widget);
  }
  return side;
}

QWidget* settings_Form::MakeRightSide() {
  auto* side = new QWidget;
  auto* layout = new QVBoxLayout(side);
  layout->setContentsMargins(0, 0, 0, 0);
  QFont large;  // of it weight and size alone
  large.setBold(true);
  large.setPointSizeF(font().pointSizeF() * 1.3);
  title_->setFont(large);
  title_->setTextFormat(Qt::PlainText);
  title_->setObjectName(QStringLiteral("title"));
  layout->addWidget(title_);
  layout->addWidget(preview_);
  layout->addWidget(pages_, 1);
  return side;
}

QWidget* settings_Form::MakeButtons() {
  auto* box = new QDialogButtonBox;
  const auto add = [&](const char* text, QDialogButtonBox::ButtonRole role, auto handler) {
    QPushButton* button = box->addButton(QString::fromUtf8(text), role);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, handler);
    return button;
  };
  group_default_button_ = add("この分類を既定値に戻す(&D)", QDialogButtonBox::ResetRole,
                              &settings_Form::group_default_Click);
  add("すべて既定値に戻す(&A)…", QDialogButtonBox::ResetRole, &settings_Form::all_default_Click);
  QPushButton* ok = add("OK", QDialogButtonBox::ActionRole, &settings_Form::ok_Click);
  ok->setObjectName(QStringLiteral("ok"));
  ok->setDefault(true);
  add("キャンセル", QDialogButtonBox::RejectRole, &settings_Form::reject);
  apply_button_ = add("適用(&P)", QDialogButtonBox::ApplyRole, &settings_Form::apply_Click);
  return box;
}

void settings_Form::FillGroups() {
  for (const SettingsGroup& group : draft_.Groups()) groups_->addItem(widgets::Text(group.title));
  const int scroll_bar = groups_->style()->pixelMetric(QStyle::PM_ScrollBarExtent);
  // Room for the mark of a wrong group.
  const int width = groups_->sizeHintForColumn(0) + scroll_bar +
                    groups_->fontMetrics().horizontalAdvance(QStringLiteral("　！"));
  groups_->setMinimumWidth(width);
  groups_->parentWidget()->setMaximumWidth(width + 2 * groups_->frameWidth());
}

void settings_Form::ShowGroup(std::string_view section) {
  const auto groups = draft_.Groups();
  const auto group = std::ranges::find(groups, section, &SettingsGroup::section);
  if (group == groups.end()) return;
  search_->clear();
  groups_->setCurrentRow(static_cast<int>(group - groups.begin()));
}

SettingsPage* settings_Form::PageOf(size_t group) {
  if (group_pages_[group] == nullptr) {
    std::vector<EntryPlace> places;
    for (size_t i = 0; i < draft_.Groups()[group].entries.size(); ++i) {
      places.push_back({group, i});
    }
    group_pages_[group] = new SettingsPage(draft_, {places_, messages_}, places, false);
    pages_->addWidget(group_pages_[group]);
    Watch(group_pages_[group]);
  }
  return group_pages_[group];
}

void settings_Form::Watch(SettingsPage* page) {
  connect(page, &SettingsPage::Changed, this, &settings_Form::TakeChange);
}

void settings_Form::ShowPage(SettingsPage* page, const QString& title) {
  page->Refresh();
  title_->setText(title);
  pages_->setCurrentWidget(page);
  group_default_button_->setEnabled(!IsSearching());
}

bool settings_Form::IsSearching() const { return hits_page_ != nullptr; }

void settings_Form::group_Click(int group) {
  if (group < 0) return;
  if (IsSearching()) {
    const QSignalBlocker silence(search_);
    search_->clear();
    hits_page_->deleteLater();
    hits_page_ = nullptr;
  }
  const auto place = static_cast<size_t>(group);
  ShowPage(PageOf(place), widgets::Text(draft_.Groups()[place].title));
  ShowPreview({});
}

void settings_Form::search_Change(const QString& text) {
  if (hits_page_ != nullptr) hits_page_->deleteLater();
  hits_page_ = nullptr;
  if (text.trimmed().isEmpty()) {
    group_Click(groups_->currentRow());
    return;
  }
  auto places = FindSettings(draft_.Groups(), text);
  hits_page_ = new SettingsPage(draft_, {places_, messages_}, {}, true);
  pages_->addWidget(hits_page_);
  Watch(hits_page_);
  const QString title = places.empty()
                            ? QStringLiteral("「%1」に当たる設定はありません").arg(text.trimmed())
                            : QStringLiteral("検索結果：%1件").arg(places.size());
  ShowMoreHits(hits_page_, std::move(places));
  preview_->hide();
  ShowPage(hits_page_, title);
}

void settings_Form::ShowMoreHits(SettingsPage* page, std::vector<EntryPlace> places) {
  const size_t shown = page->Rows();
  const size_t count = std::min(kHitsAtOnce, places.size() - shown);
  page->Add(std::span(places).subspan(shown, count));
  const size_t left = places.size() - page->Rows();
  if (left == 0) return;
  auto* more = new QPushButton(QStringLiteral("残りの%1件の続きを表示(&N)").arg(left));
  more->setAutoDefault(false);
  page->AddNote(more);
  connect(more, &QPushButton::clicked, page, [this, page, more, all = std::move(places)] {
    const size_t first = page->Rows();
    more->hide();
    more->deleteLater();
    ShowMoreHits(page, all);
    page->GoTo(all[first]);
  });
}

void settings_Form::GoTo(EntryPlace place) {
  search_->clear();
  groups_->setCurrentRow(static_cast<int>(place.group));
  PageOf(place.group)->GoTo(place);
}

void settings_Form::TakeChange(size_t group) {
  MarkGroup(group);
  ShowState();
  if (!IsSearching()) ShowPreview({});
}

void settings_Form::TakeFocus(const QWidget* now) {
  const auto* page = qobject_cast<SettingsPage*>(pages_->currentWidget());
  if (IsSearching() || page == nullptr || now == nullptr) return;
  if (const auto place = page->PlaceOf(now)) ShowPreview(draft_.Entry(*place).heading);
}

void settings_Form::ShowPreview(const std::string& heading) {
  const auto group = static_cast<size_t>(groups_->currentRow());
  preview_->Show(draft_.Current(), draft_.Groups()[group], heading);
}

void settings_Form::MarkGroup(size_t group) {
  QListWidgetItem* item = groups_->item(static_cast<int>(group));
  const QString title = widgets::Text(draft_.Groups()[group].title);
  const bool is_wrong = draft_.HasProblem(group);
  item->setText(is_wrong ? title + QStringLiteral("　！") : title);
  item->setForeground(is_wrong ? QBrush(ProblemColor(palette())) : QBrush());
  item->setToolTip(is_wrong ? QStringLiteral("直す必要のある設定があります") : QString());
}

void settings_Form::ShowState() { apply_button_->setEnabled(draft_.IsChanged()); }

bool settings_Form::Save() {
  if (const auto wrong = draft_.FirstProblem()) {
    GoTo(*wrong);
    return false;
  }
  if (!draft_.IsChanged()) return true;
  const auto saved = save_(draft_.Current());
  if (!saved) {
    messages_.Warn(saved.error().message, kSettingsCaption);
    return false;
  }
  draft_.MarkSaved();
  ShowState();
  return true;
}

void settings_Form::ok_Click() {
  if (Save()) accept();
}

void settings_Form::apply_Click() { static_cast<void>(Save()); }

void settings_Form::group_default_Click() {
  const auto group = static_cast<size_t>(groups_->currentRow());
  draft_.ResetGroup(group);
  PageOf(group)->Refresh();
  TakeChange(group);
}

void settings_Form::all_default_Click() {
  if (!messages_.AskYesNo(kResetQuestion, kSettingsCaption, base::Answer::kNo)) return;
  draft_.ResetAll();
  qobject_cast<SettingsPage*>(pages_->currentWidget())->Refresh();
  for (size_t group = 0; group < draft_.Groups().size(); ++group) MarkGroup(group);
  ShowState();
  if (!IsSearching()) ShowPreview({});
}

void settings_Form::reject() {
  if (draft_.IsChanged() && !messages_.AskYesNo(kLossQuestion, kSettingsCaption, base::Answer::kNo))
    return;
  QDialog::reject();
}

void settings_Form::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape && IsSearching()) {
    search_->clear();
    return;
  }
  QDialog::keyPressEvent(event);
}

void settings_Form::changeEvent(QEvent* event) {
  QDialog::changeEvent(event);
  if (event->type() != QEvent::PaletteChange) return;
  for (size_t group = 0; group < draft_.Groups().size(); ++group) MarkGroup(group);
}

void settings_Form::resizeEvent(QResizeEvent* event) {
  QDialog::resizeEvent(event);
  // In a low window the fields matter more than how they look.
  preview_->setMaximumHeight(std::max(preview_->minimumSizeHint().height(), height() * 3 / 10));
}

}  // namespace orin::settings
