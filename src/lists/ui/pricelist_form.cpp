#include "lists/ui/pricelist_form.h"

#include <QAction>
#include <QEvent>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <vector>

#include "store/file_names.h"
#include "store/name_index.h"
#include "widgets/qt_text.h"

namespace orin::lists {

using widgets::CurrentRow;
using widgets::Text;
using widgets::Utf8;

namespace {

constexpr std::array kPeriods = {BarPeriod::kDay, BarPeriod::kWeek, BarPeriod::kMonth};
constexpr std::array kPeriodKeys = {"Ctrl+1", "Ctrl+2", "Ctrl+3"};
constexpr std::array kPeriodLetters = {"D", "W", "M"};

BarPeriod FirstPeriod(int32_t setting) {
  return kPeriods.at(static_cast<size_t>(std::clamp(setting, 0, 2)));
}

}  // namespace

pricelist_Form::pricelist_Form(const shell::ProgramState& state, base::Messages& messages)
    : state_(state),
      messages_(messages),
      period_(FirstPeriod(state.settings.window.first_listing)),
      view_(new widgets::TableView(QStringLiteral("株価一覧"), widgets::ColumnFit::kRoomy, this)),
      heading_(new QLabel(this)),
      newest_(new QLabel(this)),
      code_box_(new QLineEdit(this)),
      periods_(new QButtonGroup(this)) {
  setProperty("helpPage", QStringLiteral("price_listing"));
  heading_->setTextInteractionFlags(Qt::TextSelectableByMouse);

  auto* bar = new QHBoxLayout;
  MakePeriodButtons(bar);
  bar->addStretch();
  auto* code_label = new QLabel(QStringLiteral("コード(&O)："), this);
  code_label->setBuddy(code_box_);
  code_box_->setMaxLength(static_cast<int>(store::StockCode::kWidth));
  code_box_->setToolTip(QStringLiteral("銘柄コードを入れてEnterを押すと、その銘柄を表示します"));
  connect(code_box_, &QLineEdit::returnPressed, this, &pricelist_Form::Code_Entered);
  bar->addWidget(code_label);
  bar->addWidget(code_box_);

  view_->AllowSorting(PriceColumn::kDate, Qt::DescendingOrder);
  view_->AllowSaving(messages, *state.files);
  MakeActions();
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(heading_);
  layout->addWidget(newest_);
  layout->addLayout(bar);
  layout->addWidget(view_);
  setFocusProxy(view_);
}

void pricelist_Form::MakePeriodButtons(QBoxLayout* layout) {
  for (size_t i = 0; i < kPeriods.size(); ++i) {
    auto* button = new QPushButton(Text(PeriodName(kPeriods[i])), this);
    button->setCheckable(true);
    button->setShortcut(QKeySequence(QLatin1String(kPeriodKeys.at(i))));
    button->setToolTip(QLatin1String(kPeriodKeys.at(i)));
    periods_->addButton(button, static_cast<int>(i));
    layout->addWidget(button);
  }
  connect(periods_, &QButtonGroup::idClicked, this,
          [this](int id) { ShowPeriod(kPeriods.at(static_cast<size_t>(id))); });
}

void pricelist_Form::MakeActions() {
  const auto add = [this](const QString& text, auto handler) {
    auto* action = new QAction(text, this);
    connect(action, &QAction::triggered, this, handler);
    view_->addAction(action);
  };
  // What a tab parts is shown as the key: these keys belong to the buttons and the main window.
  for (size_t i = 0; i < kPeriods.size(); ++i) {
    const QString name = Text(PeriodName(kPeriods[i]));
    const QString keys =
        QStringLiteral("(&%1)\t%2")
            .arg(QLatin1String(kPeriodLetters.at(i)), QLatin1String(kPeriodKeys.at(i)));
    add(name + keys, [this, i] { ShowPeriod(kPeriods[i]); });
  }
  add(QStringLiteral("前の銘柄(&B)\tCtrl+PgUp"), &pricelist_Form::mnu_beforemeigara_Click);
  add(QStringLiteral("次の銘柄(&N)\tCtrl+PgDown"), &pricelist_Form::mnu_aftermeigara_Click);
}

const store::StockRecord& pricelist_Form::Record() const {
  return state_.store->Master().Stock(stock_);
}

base::Table pricelist_Form::Load(BarPeriod period) const {
  return TableOfPrices(*state_.store, Record(), period,
                       state_.settings.chart_action.adjusts_for_splits);
}

void pricelist_Form::ShowStock(base::MasterRecord stock) {
  stock_ = stock;
  code_ = Record().code;
  ShowListing(CurrentRow::kFirst);
}

void pricelist_Form::ShowPeriod(BarPeriod period) {
  period_ = period;
  ShowListing(CurrentRow::kFirst);
}

void pricelist_Form::Reload() {
  const base::MasterRecord stock =
      state_.store ? state_.store->Master().Find(code_) : base::MasterRecord();
  if (stock.IsNone()) {
    close();
    if (parentWidget() != nullptr) parentWidget()->close();
    return;
  }
  stock_ = stock;
  ShowListing(view_->currentIndex().row() > 0 ? CurrentRow::kSame : CurrentRow::kFirst);
}

bool pricelist_Form::DependsOnChange(const settings::Settings& before,
                                     const settings::Settings& after) const {
  return before.chart_action.adjusts_for_splits != after.chart_action.adjusts_for_splits;
}

void pricelist_Form::ShowListing(CurrentRow current) {
  base::Table listing = Load(BarPeriod::kDay);
  ShowHeading(listing);
  if (period_ != BarPeriod::kDay) listing = Load(period_);
  view_->SetFileName(Text(store::CodeFileStem(code_) + "_" + std::string(PeriodName(period_))));
  view_->Show(std::move(listing), current);
  FitToFont();
  MarkPeriod();
  state_.CompareStore();
}

void pricelist_Form::FitToFont() {
  QFont large = font();
  large.setPointSizeF(large.pointSizeF() * 1.3);
  large.setBold(true);
  heading_->setFont(large);
  code_box_->setMaximumWidth(fontMetrics().averageCharWidth() * 18);
}

void pricelist_Form::changeEvent(QEvent* event) {
  // The size of texts and the colours reach a window only after the settings have changed.
  if (event->type() == QEvent::FontChange) FitToFont();
  if (event->type() == QEvent::PaletteChange) MarkPeriod();
  QWidget::changeEvent(event);
}

void pricelist_Form::MarkPeriod() {
  const QPalette plain = palette();
  QPalette marked = plain;
  marked.setBrush(QPalette::Button, plain.brush(QPalette::Highlight));
  marked.setBrush(QPalette::ButtonText, plain.brush(QPalette::HighlightedText));
  for (QAbstractButton* button : periods_->buttons()) {
    const bool is_shown = periods_->id(button) == static_cast<int>(period_);
    button->setChecked(is_shown);
    button->setPalette(is_shown ? marked : QPalette());
  }
}

void pricelist_Form::ShowHeading(const base::Table& daily) {
  const store::StockRecord& stock = Record();
  const std::string code(stock.code.Text());
  setWindowTitle(Text("株価一覧（" + code + "：" + stock.name + "）"));
  heading_->setText(Text(code + "　" + stock.name));
  std::string text;
  const auto place = std::ranges::find(sequence_.codes, code_) - sequence_.codes.begin();
  const size_t count = sequence_.codes.size();
  if (static_cast<size_t>(place) < count) {
    text = sequence_.title + " " + std::to_string(place + 1) + "／" + std::to_string(count) + "　";
  }
  text += std::string(store::ListingName(stock.listing)) + "　" +
          std::string(store::SectorName(stock.sector));
  if (daily.rows.empty()) {
    newest_->setText(Text(text + "　株価がありません。"));
    return;
  }
  text += "　" + daily.Text(0, PriceColumn::kDate) + "　終値 " + daily.Text(0, PriceColumn::kClose);
  if (!base::IsEmpty(daily.rows[0][PriceColumn::kChange])) {
    text += "　前日比 " + daily.Text(0, PriceColumn::kChange) + "（" +
            daily.Text(0, PriceColumn::kChangePercent) + "）";
  }
  newest_->setText(Text(text));
}

void pricelist_Form::SetSequence(StockSequence sequence) {
  sequence_ = std::move(sequence);
  if (!stock_.IsNone()) ShowListing(CurrentRow::kFirst);
}

base::MasterRecord pricelist_Form::Neighbour(int32_t step) const {
  const store::StockMaster& master = state_.store->Master();
  const auto place = std::ranges::find(sequence_.codes, code_) - sequence_.codes.begin();
  const auto count = static_cast<std::ptrdiff_t>(sequence_.codes.size());
  if (place < count) {
    for (std::ptrdiff_t next = place + step; next >= 0 && next < count; next += step) {
      const base::MasterRecord found = master.Find(sequence_.codes[static_cast<size_t>(next)]);
      if (!found.IsNone()) return found;
    }
    return {};
  }
  const auto end = static_cast<int32_t>(master.Stocks().size()) + 2;
  for (int32_t next = stock_.Value() + step; next >= 2 && next < end; next += step) {
    // Emptied records are passed over.
    if (master.Stock(base::MasterRecord(next)).code != store::StockCode()) {
      return base::MasterRecord(next);
    }
  }
  return {};
}

void pricelist_Form::Step(int32_t step) {
  const base::MasterRecord next = Neighbour(step);
  if (!next.IsNone()) {
    ShowStock(next);
    return;
  }
  messages_.Inform(step < 0 ? "銘柄コードを先頭までサーチしました。"
                            : "銘柄コードを最後までサーチしました。");
}

void pricelist_Form::mnu_beforemeigara_Click() { Step(-1); }

void pricelist_Form::mnu_aftermeigara_Click() { Step(1); }

void pricelist_Form::Code_Entered() {
  const base::MasterRecord stock =
      store::FindTyped(state_.store->Master(), Utf8(code_box_->text().trimmed()));
  if (stock.IsNone()) {
    messages_.Warn("銘柄コードが見つかりません。");
    code_box_->selectAll();
    return;
  }
  code_box_->clear();
  ShowStock(stock);
  view_->setFocus();
}

void pricelist_Form::mnu_copy_Click() { view_->mnu_copy_Click(); }

void pricelist_Form::mnu_save_Click() { view_->mnu_save_Click(); }

}  // namespace orin::lists
