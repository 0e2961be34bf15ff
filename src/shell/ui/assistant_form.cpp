#include "shell/ui/assistant_form.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>
#include <system_error>
#include <utility>

#include "widgets/job_progress.h"
#include "widgets/manual_form.h"
#include "widgets/qt_text.h"

namespace orin::shell {

namespace {

constexpr const char* kAssistantCaption = "ミルテ（最初の準備）";

QRadioButton* AddChoice(QVBoxLayout* layout, const QString& title, const QString& explanation) {
  auto* choice = new QRadioButton(title);
  choice->setAccessibleDescription(explanation);
  layout->addWidget(choice);
  auto* text = new QLabel(explanation);
  text->setWordWrap(true);
  text->setIndent(choice->fontMetrics().height() * 3 / 2);
  layout->addWidget(text);
  return choice;
}

}  // namespace

assistant_Form::assistant_Form(store::StoreLocation location, settings::SettingsPlaces places,
                               base::FileSystem& files, base::Messages& messages)
    : location_(std::move(location)),
      places_(std::move(places)),
      files_(files),
      messages_(messages),
      directory_(new QLineEdit(this)),
      browse_button_(new QPushButton(QStringLiteral("参照(&B)…"), this)) {
  setWindowTitle(widgets::Text(kAssistantCaption));
  setProperty("helpPage", QStringLiteral("first_start"));
  auto* layout = new QVBoxLayout(this);
  layout->setSpacing(fontMetrics().height() / 2);
  auto* heading =
      new QLabel(QStringLiteral("株価データがまだありません。どのように始めますか？"), this);
  heading->setWordWrap(true);
  heading->setMinimumWidth(fontMetrics().averageCharWidth() * 60);
  layout->addWidget(heading);

  demo_ = AddChoice(layout, QStringLiteral("見本市場で試す(&D)"),
                    QStringLiteral("付属の株価（米国株４０銘柄と３つの指数、２０２０年１月まで）と"
                                   "株価分析ファイルで、すぐに使い始めます。"));
  csv_ = AddChoice(
      layout, QStringLiteral("ＣＳＶファイルを取り込む(&C)"),
      QStringLiteral(
          "銘柄コード.csv（見出しは 年月日,始値,高値,安値,終値,出来高）のあるフォルダを"
          "指定します。取引日の暦になる ^DJI.csv が必要です。銘柄の一覧 stocks.csv があれば、"
          "銘柄名と市場も登録します。"));
  auto* row = new QHBoxLayout;
  row->addSpacing(fontMetrics().height() * 3 / 2);
  directory_->setAccessibleName(QStringLiteral("ＣＳＶファイルのフォルダ"));
  directory_->setPlaceholderText(QStringLiteral("ＣＳＶファイルのフォルダ"));
  row->addWidget(directory_);
  row->addWidget(browse_button_);
  layout->addLayout(row);
  empty_ = AddChoice(layout, QStringLiteral("空の株価データを作る(&E)"),
                     QStringLiteral("銘柄も株価もない状態から始め、あとで株価を取り込みます。"));
  auto* place = new QLabel(
      QStringLiteral("株価データの場所：%1").arg(widgets::PathOf(location_.system_directory)),
      this);
  place->setTextInteractionFlags(Qt::TextSelectableByMouse);
  place->setWordWrap(true);
  layout->addSpacing(fontMetrics().height() / 2);
  layout->addWidget(place);

  auto* buttons = new QDialogButtonBox(this);
  make_button_ = buttons->addButton(QStringLiteral("始める(&S)"), QDialogButtonBox::AcceptRole);
  buttons->addButton(QStringLiteral("あとで"), QDialogButtonBox::RejectRole);
  layout->addWidget(buttons);
  connect(buttons, &QDialogButtonBox::accepted, this, &assistant_Form::Make_Click);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(browse_button_, &QPushButton::clicked, this, &assistant_Form::Directory_Click);
  connect(csv_, &QRadioButton::toggled, this, &assistant_Form::ShowChoices);
  connect(directory_, &QLineEdit::textChanged, this, &assistant_Form::ShowChoices);
  demo_->setChecked(true);
  demo_->setFocus();
  make_button_->setDefault(true);
  widgets::OpenManualWithF1(this);
  ShowChoices();
}

void assistant_Form::ShowChoices() {
  const bool is_csv = csv_->isChecked();
  directory_->setEnabled(is_csv);
  browse_button_->setEnabled(is_csv);
  make_button_->setEnabled(!is_csv || !directory_->text().trimmed().isEmpty());
}

void assistant_Form::Directory_Click() {
  const auto directory = messages_.ChooseFile({.caption = "ＣＳＶファイルのフォルダ",
                                               .start = widgets::PathFrom(directory_->text()),
                                               .choice = base::FileChoice::kDirectory});
  if (directory) directory_->setText(widgets::PathOf(*directory));
}

base::Result<acquire::MarketSource> assistant_Form::ChosenSource() const {
  if (empty_->isChecked()) return acquire::MarketSource{};
  if (demo_->isChecked()) {
    const std::filesystem::path demo = widgets::SharedDirectory() / "demo";
    const auto copied = acquire::CopyDemoFiles(demo, places_.program_directory, files_);
    if (!copied) return base::Forward(copied);
    return acquire::MarketSource{demo / "brand", demo / "stocks.csv"};
  }
  acquire::MarketSource source;
  source.quotes = widgets::PathFrom(directory_->text().trimmed());
  std::error_code failure;
  const std::filesystem::path list = *source.quotes / "stocks.csv";
  if (std::filesystem::exists(list, failure)) source.stock_list = list;
  return source;
}

void assistant_Form::Make_Click() {
  const auto source = ChosenSource();
  if (!source) {
    messages_.Warn(source.error().message, kAssistantCaption);
    return;
  }
  base::Result<acquire::MarketSummary> summary;
  {
    widgets::JobProgress progress(this, widgets::Text(kAssistantCaption));
    summary = acquire::SetUpMarket(location_, *source, files_, progress);
  }
  if (!summary) {
    messages_.Warn(summary.error().message, kAssistantCaption);
    return;
  }
  Tell(*summary);
  accept();
}

void assistant_Form::Tell(const acquire::MarketSummary& summary) {
  if (summary.stopped) {
    messages_.Inform("取り込みを途中で中止しました。ＣＳＶ株価更新で続きから取り込めます。",
                     kAssistantCaption);
  } else if (!summary.problems.empty()) {
    messages_.Warn(std::to_string(summary.stocks) + "銘柄を取り込みました。" +
                       std::to_string(summary.problems.size()) +
                       "件の問題があります（最初の問題：" + summary.problems.front() + "）。",
                   kAssistantCaption);
  }
}

}  // namespace orin::shell
