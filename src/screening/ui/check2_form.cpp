#include "screening/ui/check2_form.h"

#include <QBoxLayout>
#include <QCloseEvent>
#include <algorithm>
#include <utility>

#include "base/paths.h"
#include "settings/settings_places.h"
#include "widgets/qt_text.h"

// What the window shows; the group is changed in check2_form_group.cpp, the run is in
// check2_form_run.cpp.

namespace orin::screening {

namespace fs = std::filesystem;
using widgets::PathOf;
using widgets::Text;

namespace {

constexpr int kCountAfterChoice = 300;  // ms without another choice

}  // namespace

check2_Form::check2_Form(const shell::ProgramState& state, base::Messages& messages,
                         Surroundings surroundings)
    : state_(state),
      messages_(messages),
      surroundings_(std::move(surroundings)),
      group_label_(new QLabel(this)),
      list_(new GroupList(this)),
      own_date_(new QCheckBox(
          QStringLiteral("分析ファイルの日付のかわりに、この日付で分析する(&T)："), this)),
      date_(new TradingDayEdit(this)),
      first_file_(new QSpinBox(this)),
      first_file_text_(new QLabel(this)),
      count_label_(new QLabel(this)),
      chart_(new DayCountsChart(this)),
      start_(nullptr) {
  setWindowTitle(QStringLiteral("株価分析"));
  setProperty("helpPage", QStringLiteral("screening"));
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(MakeGroupBar());
  layout->addWidget(list_, 1);
  layout->addWidget(MakeEntryButtons());
  layout->addWidget(MakeDayPanel());
  layout->addWidget(MakeRunBar());
  setFocusProxy(list_);

  connect(list_, &GroupList::Ticked, this, [this](int place, bool is_ticked) {
    Change([&](settings::AnalysisGroup& group) {
      group.entries.at(static_cast<size_t>(place)).check = is_ticked;
    });
  });
  connect(list_, &GroupList::EntryChanged, this, [this] {
    EnableButtons();
    CountSoon();
  });
  connect(list_, &GroupList::EditWanted, this, &check2_Form::mnu_edit_Click);
  connect(own_date_, &QCheckBox::toggled, this, &check2_Form::CountSoon);
  connect(date_, &TradingDayEdit::DayChanged, this, &check2_Form::CountSoon);
  connect(first_file_, &QSpinBox::valueChanged, this, &check2_Form::FirstFile_Changed);
  connect(chart_, &DayCountsChart::DateChosen, this, [this](base::Date date) {
    date_->ShowDay(date);
    own_date_->setChecked(true);
  });
  count_timer_.setSingleShot(true);
  count_timer_.setInterval(kCountAfterChoice);
  connect(&count_timer_, &QTimer::timeout, this, &check2_Form::CountCurrent);
  connect(&count_, &MarketCount::Finished, this, [this] {
    state_.CompareStore();
    const DayCounts& counts = count_.Counts();
    chart_->Show(counts);
    count_label_->setText(QStringLiteral("この条件で選ばれる銘柄の数（%1日間）\n%2")
                              .arg(counts.dates.size())
                              .arg(Text(count_.Problem()))
                              .trimmed());
  });
  connect(&count_, &MarketCount::Failed, this, [this](const QString& sentence) {
    chart_->Clear();
    count_label_->setText(sentence);
  });
  Reload();
}

QPushButton* check2_Form::AddButton(QLayout* layout, const QString& text, const QString& tip,
                                    void (check2_Form::*handler)()) {
  auto* button = new QPushButton(text, this);
  button->setToolTip(tip);
  button->setAutoDefault(false);
  connect(button, &QPushButton::clicked, this, handler);
  layout->addWidget(button);
  return button;
}

QWidget* check2_Form::MakeGroupBar() {
  auto* panel = new QWidget(this);
  auto* layout = new QHBoxLayout(panel);
  layout->setContentsMargins(0, 0, 0, 0);
  group_label_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  layout->addWidget(group_label_, 1);
  AddButton(layout, QStringLiteral("グループファイル(&G)…"),
            QStringLiteral("使う株価分析グループファイルを選びます"),
            &check2_Form::mnu_group_Click);
  AddButton(layout, QStringLiteral("名前をつけて保存(&A)…"),
            QStringLiteral("このグループを別のファイルに保存し、それを使います"),
            &check2_Form::mnu_savegroup_Click);
  return panel;
}

QWidget* check2_Form::MakeEntryButtons() {
  auto* panel = new QWidget(this);
  auto* layout = new QHBoxLayout(panel);
  layout->setContentsMargins(0, 0, 0, 0);
  AddButton(layout, QStringLiteral("ファイルを選ぶ(&F)…"),
            QStringLiteral("選んだ行の分析ファイルを指定します"), &check2_Form::mnu_pick_Click);
  AddButton(layout, QStringLiteral("新しく作る(&N)…"),
            QStringLiteral("新しい分析ファイルを条件エディターで作ります"),
            &check2_Form::mnu_new_Click);
  file_buttons_ = {
      AddButton(layout, QStringLiteral("編集(&E)…"),
                QStringLiteral("選んだ行の分析ファイルを条件エディターで開きます（Enter）"),
                &check2_Form::mnu_edit_Click),
      AddButton(layout, QStringLiteral("外す(&D)"),
                QStringLiteral("選んだ行をグループから外します。ファイルは残ります"),
                &check2_Form::mnu_remove_Click),
      AddButton(layout, QStringLiteral("上へ(&U)"), QStringLiteral("選んだ行を一つ上へ動かします"),
                &check2_Form::mnu_up_Click),
      AddButton(layout, QStringLiteral("下へ(&W)"), QStringLiteral("選んだ行を一つ下へ動かします"),
                &check2_Form::mnu_down_Click),
      AddButton(layout, QStringLiteral("日付ファイルを作る(&Y)"),
                QStringLiteral("分析する日付を analysisday.txt に書きます"),
                &check2_Form::mnu_analysisday_Click)};
  layout->addStretch();
  return panel;
}

QWidget* check2_Form::MakeDayPanel() {
  auto* panel = new QWidget(this);
  auto* layout = new QHBoxLayout(panel);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* left = new QVBoxLayout;
  auto* day_bar = new QHBoxLayout;
  date_->setAccessibleName(QStringLiteral("分析する日付"));
  day_bar->addWidget(own_date_);
  day_bar->addWidget(date_);
  day_bar->addStretch();
  left->addLayout(day_bar);
  auto* file_bar = new QHBoxLayout;
  auto* file_label = new QLabel(QStringLiteral("読み込む先頭ファイルの番号(&B)："), panel);
  file_label->setBuddy(first_file_);
  file_bar->addWidget(file_label);
  file_bar->addWidget(first_file_);
  file_bar->addStretch();
  left->addLayout(file_bar);
  first_file_text_->setWordWrap(true);
  left->addWidget(first_file_text_);
  left->addStretch();
  auto* right = new QVBoxLayout;
  count_label_->setWordWrap(true);
  right->addWidget(count_label_);
  right->addWidget(chart_);
  right->addStretch();
  layout->addLayout(left, 3);
  layout->addLayout(right, 2);
  return panel;
}

QWidget* check2_Form::MakeRunBar() {
  auto* panel = new QWidget(this);
  auto* layout = new QHBoxLayout(panel);
  layout->setContentsMargins(0, 0, 0, 0);
  start_ = AddButton(layout, QStringLiteral("分析開始(&R)"),
                     QStringLiteral("印のついた分析ファイルを順に実行します（F5）"),
                     &check2_Form::Command1_Click);
  start_->setDefault(true);
  layout->addStretch();
  AddButton(layout, QStringLiteral("結果リストを開く(&O)…"),
            QStringLiteral("前に書かれた結果リストを表示します"), &check2_Form::mnu_openlist_Click);
  return panel;
}

fs::path check2_Form::GroupFile() const {
  return NativeSetting(state_.places, state_.settings.common.analysis_group_file);
}

shell::AnalysisGroupFiles check2_Form::Files() const {
  return shell::FilesOfGroup(state_.settings.analysis_group, GroupFile(),
                             state_.places.program_directory);
}

fs::path check2_Form::CurrentFile() const { return Files().all.at(list_->CurrentEntry()); }

std::optional<base::Date> check2_Form::ChosenDate() const {
  return own_date_->isChecked() ? date_->Day() : std::nullopt;
}

void check2_Form::ReleaseStore() {
  is_store_released_ = true;
  count_.Stop();
}

void check2_Form::Reload() {
  is_store_released_ = false;
  if (state_.store) date_->SetDays(state_.store->Days());
  ShowFirstFile();
  ShowGroup();
  EnableButtons();
}

bool check2_Form::DependsOnChange(const settings::Settings& before,
                                  const settings::Settings& after) const {
  return before.common != after.common || before.analysis_group != after.analysis_group ||
         before.chart_action.adjusts_for_splits != after.chart_action.adjusts_for_splits;
}

void check2_Form::ShowGroup() {
  group_label_->setText(QStringLiteral("株価分析グループ：%1").arg(PathOf(GroupFile())));
  list_->ShowGroup(state_.settings.analysis_group, Files());
  EnableButtons();
  CountSoon();
}

void check2_Form::EnableButtons() {
  const auto& group = state_.settings.analysis_group;
  const bool has_file = !group.entries.at(list_->CurrentEntry()).file.empty();
  for (QPushButton* button : file_buttons_) button->setEnabled(has_file);
  start_->setEnabled(state_.store.has_value() && !IsRunning());
}

bool check2_Form::Save(const settings::Settings& changed) {
  const auto saved = surroundings_.save(changed);
  if (!saved) messages_.Warn(saved.error().message);
  return saved.has_value();
}

std::string check2_Form::FirstFileText(const store::MasterHeader& header, int32_t setting) const {
  const auto first_file = FirstFileOfRun(header, setting);
  if (!first_file) return first_file.error().message;
  const auto text = ExplainFirstFile(*state_.store, first_file->value_or(header.first_file));
  return text ? *text : std::string();
}

void check2_Form::ShowFirstFile() {
  is_filling_ = true;
  first_file_text_->clear();
  first_file_->setEnabled(state_.store.has_value());
  if (state_.store) {
    const store::MasterHeader& header = state_.store->Master().Header();
    const int32_t setting = state_.settings.common.first_price_file;
    // A setting out of the range is shown as it is.
    first_file_->setRange(std::min<int>(0, setting), std::max<int>(header.current_file, setting));
    // The box shows this text for its least number, which a wrong setting can be.
    first_file_->setSpecialValueText(setting < 0 ? QString() : QStringLiteral("すべて"));
    first_file_->setValue(setting);
    first_file_text_->setText(Text(FirstFileText(header, setting)));
  }
  is_filling_ = false;
}

void check2_Form::FirstFile_Changed(int number) {
  if (is_filling_ || !state_.store) return;
  const store::MasterHeader& header = state_.store->Master().Header();
  const int32_t shown = state_.settings.common.first_price_file;
  // A step passes over the numbers between 0 and the first file.
  if (shown == 0 && number == 1) number = header.first_file;
  if (shown == header.first_file && number == shown - 1) number = 0;
  const auto option = number == 0 ? std::nullopt : std::optional<int32_t>(number);
  if (const auto allowed = FirstFileOfRun(header, 0, option); !allowed) {
    messages_.Warn(allowed.error().message);
    ShowFirstFile();
    return;
  }
  settings::Settings changed = state_.settings;
  changed.common.first_price_file = number;
  Save(changed);
  ShowFirstFile();
}

void check2_Form::CountSoon() {
  count_.Stop();
  count_timer_.start();
}

void check2_Form::CountCurrent() {
  chart_->Clear();
  count_label_->clear();
  const fs::path file = CurrentFile();
  if (file.empty() || !state_.store || is_store_released_ || IsRunning()) return;
  const auto analysis = ReadAnalysisFile(file);
  if (!analysis) {
    count_label_->setText(Text(analysis.error().message));
    return;
  }
  const auto date = ChosenDate();
  const auto day = FindDay(*state_.store, date ? date : analysis->date, base::PathText(file));
  if (!day) {
    count_label_->setText(Text(day.error().message));
    return;
  }
  count_label_->setText(QStringLiteral("選ばれる銘柄を数えています。"));
  count_.Start(*state_.store, {.condition = analysis->condition,
                               .market = analysis->market,
                               .second_stock = analysis->second_stock,
                               .last = *day,
                               .adjust_splits = state_.settings.chart_action.adjusts_for_splits,
                               .keyword_days = DaysOfGroupOnEachDay(*state_.store, Files().all,
                                                                    list_->CurrentEntry(), date)});
}

void check2_Form::closeEvent(QCloseEvent* event) {
  if (!IsRunning()) {
    count_.Stop();
    event->accept();
    return;
  }
  job_->Stop();
  is_stopping_to_close_ = true;
  event->ignore();
}

}  // namespace orin::screening
