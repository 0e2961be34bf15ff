#include "screening/ui/analysis_fields_panel.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QPushButton>
#include <QVBoxLayout>
#include <utility>

#include "base/paths.h"
#include "screening/screening_run.h"
#include "screening/ui/trading_day_edit.h"
#include "widgets/qt_text.h"

namespace orin::screening {

namespace fs = std::filesystem;
using widgets::Text;
using widgets::Utf8;

AnalysisFieldsPanel::AnalysisFieldsPanel(const shell::ProgramState& state, base::Messages& messages,
                                         QWidget* owner)
    : QWidget(owner),
      state_(state),
      messages_(messages),
      title_(new QLineEdit(this)),
      directory_(new QLineEdit(this)),
      date_(new QLineEdit(this)),
      market_(new QComboBox(this)),
      second_(new QLineEdit(this)),
      faults_(new QLabel(this)) {
  auto* grid = new QGridLayout(this);
  grid->setContentsMargins(0, 0, 0, 0);
  const auto add_label = [&](const QString& text, QWidget* buddy, int row, int column) {
    auto* label = new QLabel(text, this);
    label->setBuddy(buddy);
    grid->addWidget(label, row, column);
  };
  const auto add_button = [&](const QString& text, const QString& name, int row, int column,
                              void (AnalysisFieldsPanel::*handler)()) {
    auto* button = new QPushButton(text, this);
    button->setAutoDefault(false);
    button->setAccessibleName(name);
    button->setToolTip(name);
    connect(button, &QPushButton::clicked, this, handler);
    grid->addWidget(button, row, column);
  };
  add_label(QStringLiteral("タイトル(&L)："), title_, 0, 0);
  grid->addWidget(title_, 0, 1);
  add_label(QStringLiteral("分析結果格納場所(&R)："), directory_, 0, 3);
  grid->addWidget(directory_, 0, 4);
  add_button(QStringLiteral("選ぶ…"), QStringLiteral("結果リストのディレクトリを選びます"), 0, 5,
             &AnalysisFieldsPanel::Directory_Click);
  add_label(QStringLiteral("分析日付(&D)："), date_, 1, 0);
  date_->setPlaceholderText(QStringLiteral("空なら最新の日"));
  grid->addWidget(date_, 1, 1);
  add_button(QStringLiteral("暦…"), QStringLiteral("分析日付をカレンダーで選びます"), 1, 2,
             &AnalysisFieldsPanel::Calendar_Click);
  add_label(QStringLiteral("分析上場市場(&G)："), market_, 1, 3);
  grid->addWidget(market_, 1, 4);
  add_label(QStringLiteral("第二銘柄コード(&2)："), second_, 2, 0);
  second_->setPlaceholderText(QStringLiteral("第二銘柄の項目を使うときだけ"));
  grid->addWidget(second_, 2, 1);
  faults_->setWordWrap(true);
  grid->addWidget(faults_, 2, 3, 1, 3);
  grid->setColumnStretch(1, 1);
  grid->setColumnStretch(4, 1);
  for (QLineEdit* box : {title_, directory_, date_, second_}) {
    connect(box, &QLineEdit::textChanged, this, &AnalysisFieldsPanel::Changed);
  }
  connect(market_, &QComboBox::currentIndexChanged, this, &AnalysisFieldsPanel::Changed);
  connect(this, &AnalysisFieldsPanel::Changed, this, &AnalysisFieldsPanel::Check);
}

void AnalysisFieldsPanel::Show(const AnalysisFields& fields) {
  shown_ = fields;
  {
    const QSignalBlocker silence(this);
    title_->setText(Text(fields.title));
    directory_->setText(Text(fields.result_directory));
    date_->setText(Text(fields.date));
    second_->setText(Text(fields.second_stock));
    market_->clear();
    // Without a value all stocks are looked at, whether the file says so or not.
    market_->addItem(QStringLiteral("（指定なし：全銘柄）"), QString());
    for (const MarketChoice choice : MarketChoices()) {
      market_->addItem(Text(NameOf(choice)), Text(NameOf(choice)));
    }
    const QString market = Text(fields.market);
    if (market_->findData(market) < 0) market_->addItem(market, market);
    market_->setCurrentIndex(market_->findData(market));
  }
  Check();
}

AnalysisFields AnalysisFieldsPanel::Fields() const {
  // The blanks of the file are its own, those that were typed are slips.
  const auto value = [](const QLineEdit* box, const std::string& shown) {
    return box->text() == Text(shown) ? shown : Utf8(box->text().trimmed());
  };
  AnalysisFields fields;
  fields.title = value(title_, shown_.title);
  fields.result_directory = value(directory_, shown_.result_directory);
  fields.date = value(date_, shown_.date);
  fields.market = Utf8(market_->currentData().toString());
  fields.second_stock = value(second_, shown_.second_stock);
  return fields;
}

void AnalysisFieldsPanel::Check() {
  const AnalysisFields fields = Fields();
  QStringList faults;
  AnalysisFile analysis;
  analysis.result_directory = fields.result_directory;
  const auto directory =
      FindResultDirectory(analysis, "この分析ファイル", state_.places.program_directory);
  if (!directory) faults.append(Text(directory.error().message));
  const auto date = base::Date::Parse(fields.date);
  if (!fields.date.empty() && !date) {
    faults.append(QStringLiteral("分析日付は yyyy/mm/dd の形で書いて下さい。"));
  } else if (date && state_.store && state_.store->Days().Find(*date).IsNone()) {
    faults.append(QStringLiteral("分析日付 %1 は取引日ではありません。").arg(Text(fields.date)));
  }
  if (!fields.market.empty() && !ParseMarketChoice(fields.market)) {
    faults.append(
        QStringLiteral("「%1」という分析上場市場はありません。").arg(Text(fields.market)));
  }
  if (!fields.second_stock.empty()) {
    const auto code = store::StockCode::Parse(fields.second_stock);
    if (!code) {
      faults.append(Text(code.error().message));
    } else if (state_.store && state_.store->Master().Find(*code).IsNone()) {
      faults.append(
          QStringLiteral("第二銘柄「%1」は登録されていません。").arg(Text(fields.second_stock)));
    }
  }
  faults_->setText(faults.join('\n'));
}

void AnalysisFieldsPanel::Directory_Click() {
  const auto chosen = messages_.ChooseFile(
      {.caption = "分析結果格納場所",
       .start = base::NativePath(Utf8(directory_->text()), state_.places.program_directory),
       .choice = base::FileChoice::kDirectory});
  if (chosen) directory_->setText(widgets::PathOf(*chosen));
}

void AnalysisFieldsPanel::Calendar_Click() {
  if (!state_.store || state_.store->Days().Count() == 0) return;
  QDialog dialog(this);
  dialog.setWindowTitle(QStringLiteral("分析日付"));
  auto* day = new TradingDayEdit(&dialog);
  day->SetDays(state_.store->Days());
  if (const auto date = base::Date::Parse(Utf8(date_->text()))) day->ShowDay(*date);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
  connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  auto* layout = new QVBoxLayout(&dialog);
  layout->addWidget(new QLabel(QStringLiteral("取引日を選んで下さい。"), &dialog));
  layout->addWidget(day);
  layout->addWidget(buttons);
  if (dialog.exec() == QDialog::Accepted) date_->setText(Text(day->Day()->ToText()));
}

}  // namespace orin::screening
