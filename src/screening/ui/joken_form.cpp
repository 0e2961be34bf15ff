#include "screening/ui/joken_form.h"

#include <QAction>
#include <QPushButton>
#include <QSplitter>
#include <QVBoxLayout>

#include "analysis/condition_text.h"
#include "analysis/note_sentence.h"
#include "screening/ui/item_form.h"
#include "screening/ui/snippet_form.h"
#include "widgets/qt_text.h"

// The window and what is done with its condition; the file is in joken_form_file.cpp.

namespace orin::screening {

using widgets::Text;
using widgets::Utf8;

namespace {

constexpr int kCountAfterTyping = 500;  // ms after the last change

}  // namespace

joken_Form::joken_Form(const shell::ProgramState& state, base::Messages& messages)
    : state_(state),
      messages_(messages),
      fields_(new AnalysisFieldsPanel(state, messages, this)),
      editor_(new ConditionEditor(this)),
      notes_(new QListWidget(this)),
      status_(new QLabel(this)),
      try_(new TryPanel(state, this)),
      count_label_(new QLabel(this)),
      chart_(new DayCountsChart(this)) {
  setProperty("helpPage", QStringLiteral("condition_editor"));
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(MakeToolbar());
  layout->addWidget(fields_);
  auto* splitter = new QSplitter(Qt::Vertical, this);
  splitter->addWidget(MakeEditorPanel());
  splitter->addWidget(MakeLowerPanel());
  splitter->setChildrenCollapsible(false);
  splitter->setStretchFactor(0, 1);
  splitter->setStretchFactor(1, 1);
  layout->addWidget(splitter, 1);
  setFocusProxy(editor_);

  connect(fields_, &AnalysisFieldsPanel::Changed, this, [this] {
    status_->clear();
    ShowName();
    CountSoon();
  });
  connect(editor_, &QPlainTextEdit::textChanged, status_, &QLabel::clear);
  connect(editor_->document(), &QTextDocument::modificationChanged, this, &joken_Form::ShowName);
  connect(editor_, &ConditionEditor::Checked, this, [this] {
    ShowNotes();
    CountSoon();
  });
  connect(editor_, &ConditionEditor::PastedTextMended, this, [this] {
    status_->setText(
        QStringLiteral("貼り付けた文字の全角のかっこやタブなどを直しました。元に戻す（Ctrl+"
                       "Z）で貼り付けたままになります。"));
  });
  connect(notes_, &QListWidget::itemActivated, this, [this](const QListWidgetItem* item) {
    editor_->GoTo(item->data(Qt::UserRole).toULongLong());
  });
  connect(notes_, &QListWidget::itemClicked, notes_, &QListWidget::itemActivated);
  connect(try_, &TryPanel::Wanted, this, &joken_Form::mnu_try_Click);
  connect(try_, &TryPanel::DayChanged, this, &joken_Form::TryAgain);
  connect(chart_, &DayCountsChart::DateChosen, try_, &TryPanel::ShowDay);
  count_timer_.setSingleShot(true);
  count_timer_.setInterval(kCountAfterTyping);
  connect(&count_timer_, &QTimer::timeout, this, &joken_Form::TryAgain);
  connect(&count_timer_, &QTimer::timeout, this, &joken_Form::Count);
  connect(&count_, &MarketCount::Finished, this, [this] {
    state_.CompareStore();
    const DayCounts& counts = count_.Counts();
    chart_->Show(counts);
    count_label_->setText(QStringLiteral("%1 に選ばれる銘柄：%2\n%3")
                              .arg(Text(counts.dates.back().ToText()))
                              .arg(counts.counts.back())
                              .arg(Text(count_.Problem()))
                              .trimmed());
  });
  connect(&count_, &MarketCount::Failed, this, [this](const QString& sentence) {
    chart_->Clear();
    count_label_->setText(sentence);
  });
}

QWidget* joken_Form::MakeToolbar() {
  auto* bar = new QWidget(this);
  auto* layout = new QHBoxLayout(bar);
  layout->setContentsMargins(0, 0, 0, 0);
  const auto add = [&](const QString& text, const char* key, const QString& tip, auto handler) {
    auto* button = new QPushButton(text, bar);
    button->setAutoDefault(false);
    const QKeySequence keys(QLatin1String{key});
    button->setToolTip(tip + QStringLiteral("（%1）").arg(keys.toString(QKeySequence::NativeText)));
    connect(button, &QPushButton::clicked, this, handler);
    layout->addWidget(button);
    auto* action = new QAction(this);
    action->setShortcut(keys);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(action, &QAction::triggered, this, handler);
    addAction(action);
  };
  add(QStringLiteral("保存(&B)"), "Ctrl+S", QStringLiteral("分析ファイルに保存します"),
      [this] { mnu_save_Click(); });
  add(QStringLiteral("名前をつけて保存(&N)…"), "Ctrl+Shift+S",
      QStringLiteral("別の分析ファイルに保存します"), [this] { mnu_saveas_Click(); });
  add(QStringLiteral("項目を挿入(&I)…"), "Ctrl+I", QStringLiteral("分析項目を選んで挿入します"),
      [this] { mnu_item_Click(); });
  add(QStringLiteral("よく使う条件(&J)…"), "Ctrl+J",
      QStringLiteral("交差や新高値など、よく使う条件を入れます"), [this] { mnu_snippet_Click(); });
  add(QStringLiteral("元に戻す(&U)"), "Ctrl+Z", QStringLiteral("一つ前の状態に戻します"),
      [this] { editor_->undo(); });
  add(QStringLiteral("やり直す(&Y)"), "Ctrl+Y", QStringLiteral("元に戻した変更をやり直します"),
      [this] { editor_->redo(); });
  auto* try_action = new QAction(this);
  try_action->setShortcut(QKeySequence(QStringLiteral("Ctrl+T")));
  try_action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
  connect(try_action, &QAction::triggered, this, &joken_Form::mnu_try_Click);
  addAction(try_action);
  layout->addStretch();
  return bar;
}

QWidget* joken_Form::MakeEditorPanel() {
  auto* panel = new QWidget(this);
  auto* layout = new QVBoxLayout(panel);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* label = new QLabel(QStringLiteral("分析項目（条件）(&E)："), panel);
  label->setBuddy(editor_);
  notes_->setAccessibleName(QStringLiteral("書き方の注意"));
  // Always there, so that what is typed never moves.
  notes_->setFixedHeight(fontMetrics().height() * 4);
  layout->addWidget(label);
  layout->addWidget(editor_, 1);
  layout->addWidget(notes_);
  layout->addWidget(status_);
  return panel;
}

QWidget* joken_Form::MakeLowerPanel() {
  auto* panel = new QWidget(this);
  auto* layout = new QHBoxLayout(panel);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* right = new QVBoxLayout;
  count_label_->setWordWrap(true);
  right->addWidget(count_label_);
  right->addWidget(chart_);
  right->addStretch();
  layout->addWidget(try_, 3);
  layout->addLayout(right, 2);
  return panel;
}

void joken_Form::ShowNotes() {
  notes_->clear();
  for (const analysis::Note& note : editor_->Notes()) {
    auto* item = new QListWidgetItem(Text(analysis::NoteSentence(note)), notes_);
    item->setData(Qt::UserRole, static_cast<qulonglong>(note.position));
  }
}

void joken_Form::mnu_item_Click() {
  koumoku_Form form(this);
  const QTextCursor cursor = editor_->textCursor();
  if (cursor.hasSelection()) form.ShowItem(Utf8(cursor.selectedText()));
  if (form.exec() == QDialog::Accepted) editor_->InsertText(form.Call());
}

void joken_Form::mnu_snippet_Click() {
  snippet_Form form(editor_->Condition(), this);
  if (form.exec() != QDialog::Accepted) return;
  if (form.Where() == snippet_Form::Place::kAtCursor) {
    editor_->InsertText(form.Result());
  } else {
    editor_->ReplaceCondition(form.Result());
  }
}

void joken_Form::mnu_try_Click() {
  if (!is_store_released_) try_->Try(editor_->Condition(), fields_->Fields().second_stock);
}

void joken_Form::TryAgain() {
  if (!is_store_released_) try_->TryAgain(editor_->Condition(), fields_->Fields().second_stock);
}

void joken_Form::ReleaseStore() {
  is_store_released_ = true;
  count_.Stop();
}

void joken_Form::Reload() {
  is_store_released_ = false;
  try_->Reload();
  fields_->Check();
  CountSoon();
}

bool joken_Form::DependsOnChange(const settings::Settings& before,
                                 const settings::Settings& after) const {
  return before.chart_action.adjusts_for_splits != after.chart_action.adjusts_for_splits;
}

void joken_Form::CountSoon() {
  count_.Stop();
  count_timer_.start();
}

void joken_Form::Count() {
  const AnalysisFields fields = fields_->Fields();
  const std::string condition = editor_->Condition();
  chart_->Clear();
  count_label_->clear();
  if (!state_.store || is_store_released_ || state_.store->Days().Count() == 0) return;
  if (analysis::TrimAllBlanks(condition).empty()) return;
  MarketCount::Question question;
  question.condition = condition;
  question.market = ParseMarketChoice(fields.market).value_or(MarketChoice::kAll);
  if (const auto second = store::StockCode::Parse(fields.second_stock)) {
    question.second_stock = *second;
  }
  question.last = state_.store->Days().Last();
  if (const auto date = base::Date::Parse(fields.date)) {
    const base::DayIndex day = state_.store->Days().Find(*date);
    if (!day.IsNone()) question.last = day;
  }
  question.adjust_splits = state_.settings.chart_action.adjusts_for_splits;
  count_label_->setText(QStringLiteral("選ばれる銘柄を数えています。"));
  count_.Start(*state_.store, question);
}

}  // namespace orin::screening
