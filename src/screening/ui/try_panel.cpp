#include "screening/ui/try_panel.h"

#include <QBoxLayout>
#include <QElapsedTimer>
#include <QLabel>

#include "analysis/condition_text.h"
#include "screening/explain_stock.h"
#include "store/name_index.h"
#include "widgets/qt_text.h"

namespace orin::screening {

using widgets::Text;
using widgets::Utf8;

namespace {

constexpr qint64 kFeltByWriter = 80;  // ms

}  // namespace

TryPanel::TryPanel(const shell::ProgramState& state, QWidget* owner)
    : QWidget(owner),
      state_(state),
      code_(new QLineEdit(this)),
      date_(new TradingDayEdit(this)),
      explanation_(new ExplanationView(this)) {
  code_->setMaxLength(static_cast<int>(store::StockCode::kWidth));
  code_->setMaximumWidth(fontMetrics().averageCharWidth() * 16);
  date_->setAccessibleName(QStringLiteral("試す日付"));
  auto* code_label = new QLabel(QStringLiteral("試す銘柄(&C)："), this);
  code_label->setBuddy(code_);
  auto* button = new QPushButton(QStringLiteral("試す(&T)"), this);
  button->setToolTip(QStringLiteral("条件をこの銘柄と日付で調べ、理由を表示します（Ctrl+T）"));
  button->setAutoDefault(false);
  auto* bar = new QHBoxLayout;
  bar->addWidget(code_label);
  bar->addWidget(code_);
  bar->addWidget(date_);
  bar->addWidget(button);
  bar->addStretch();
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addLayout(bar);
  layout->addWidget(explanation_, 1);
  connect(code_, &QLineEdit::returnPressed, this, &TryPanel::Wanted);
  connect(button, &QPushButton::clicked, this, &TryPanel::Wanted);
  connect(date_, &TradingDayEdit::DayChanged, this, &TryPanel::DayChanged);
  Reload();
}

void TryPanel::Reload() {
  date_->SetDays(state_.store ? state_.store->Days() : store::Calendar());
  if (code_->text().isEmpty() && state_.store && !state_.initial_stock.IsNone()) {
    code_->setText(Text(state_.store->Master().Stock(state_.initial_stock).code.Text()));
  }
}

void TryPanel::Try(const std::string& condition, const std::string& second_stock) {
  QElapsedTimer since;
  since.start();
  has_tried_ = true;
  Explain(condition, second_stock);
  is_slow_ = since.elapsed() > kFeltByWriter;
}

void TryPanel::TryAgain(const std::string& condition, const std::string& second_stock) {
  if (!has_tried_) return;
  if (is_slow_) {
    explanation_->ShowSentence(
        QStringLiteral("内容が変わりました。「試す」（Ctrl+T）を押すと調べ直します。"));
  } else {
    Try(condition, second_stock);
  }
}

void TryPanel::Explain(const std::string& condition, const std::string& second_stock) {
  const auto day = date_->Day();
  if (!state_.store || !day) {
    explanation_->ShowSentence(QStringLiteral("株価データがありません。"));
    return;
  }
  if (analysis::TrimAllBlanks(condition).empty()) {
    explanation_->ShowSentence(QStringLiteral("条件が空です。"));
    return;
  }
  const store::StockStore& store = *state_.store;
  ExplainQuestion question;
  const std::string typed = Utf8(code_->text().trimmed());
  question.stock = store::FindTyped(store.Master(), typed);
  if (question.stock.IsNone()) {
    explanation_->ShowSentence(QStringLiteral("%1：銘柄コードが見つかりません。").arg(Text(typed)));
    return;
  }
  if (const auto second = store::StockCode::Parse(second_stock)) question.second_stock = *second;
  question.day = store.Days().Find(*day);
  question.adjust_splits = state_.settings.chart_action.adjusts_for_splits;
  const auto explained = ExplainStock(store, condition, question);
  state_.CompareStore();
  if (!explained) {
    explanation_->ShowSentence(Text(explained.error().message));
    return;
  }
  const store::StockRecord& stock = store.Master().Stock(question.stock);
  explanation_->ShowExplanation(*explained,
                                std::string(stock.code.Text()) + "（" + stock.name + "）", *day);
}

}  // namespace orin::screening
