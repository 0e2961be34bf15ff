#include "screening/ui/result_form.h"

#include <QBoxLayout>
#include <QPushButton>
#include <QSplitter>
#include <QStyle>
#include <utility>

#include "screening/explain_stock.h"
#include "screening/result_columns.h"
#include "screening/result_table.h"
#include "store/name_index.h"
#include "widgets/job_progress.h"
#include "widgets/qt_text.h"

namespace orin::screening {

using widgets::Text;
using widgets::Utf8;

namespace {

struct OperationRow {
  ListOperation operation;
  const char* text;  // of the menu
  const char* name;  // of what comes out
};
constexpr OperationRow kOperations[] = {
    {ListOperation::kInBoth, "両方にある銘柄(&B)", "両方にある銘柄"},
    {ListOperation::kOnlyHere, "この結果だけにある銘柄(&O)", "この結果だけにある銘柄"},
    {ListOperation::kInEither, "どちらかにある銘柄(&E)", "どちらかにある銘柄"},
};

std::vector<ResultColumn> ColumnsOf(const settings::AnalysisGroup& group) {
  std::vector<ResultColumn> columns;
  for (const auto& column : group.columns) {
    if (!column.expression.empty()) columns.push_back({column.title, column.expression});
  }
  return columns;
}

}  // namespace

result_Form::result_Form(const shell::ProgramState& state, base::Messages& messages,
                         Surroundings surroundings, ResultContent content)
    : state_(state),
      messages_(messages),
      surroundings_(std::move(surroundings)),
      content_(std::move(content)),
      heading_(new QLabel(this)),
      notes_(new QLabel(this)),
      compare_menu_(new QMenu(this)),
      view_(
          new widgets::TableView(QStringLiteral("分析結果"), widgets::ColumnFit::kContents, this)),
      code_box_(new QLineEdit(this)),
      explanation_(new ExplanationView(this)) {
  setProperty("helpPage", QStringLiteral("screening"));
  setWindowTitle(
      QStringLiteral("分析結果（%1：%2）").arg(Text(content_.title), Text(content_.date.ToText())));
  view_->AllowSorting();
  view_->AllowSaving(messages, *state.files);
  view_->SetFileName(Text(content_.title + "_" + content_.date.ToCompact()));
  notes_->setWordWrap(true);
  auto* layout = new QVBoxLayout(this);
  auto* bar = new QHBoxLayout;
  MakeHeading(bar);
  layout->addLayout(bar);
  layout->addWidget(notes_);
  auto* splitter = new QSplitter(this);
  splitter->addWidget(view_);
  splitter->addWidget(MakeExplanation());
  splitter->setStretchFactor(0, 1);
  splitter->setStretchFactor(1, 1);
  splitter->setChildrenCollapsible(false);
  layout->addWidget(splitter, 1);
  setFocusProxy(view_);
  connect(view_, &widgets::TableView::CodeChosen, this, &result_Form::StockChosen);
  connect(view_, &widgets::TableView::CurrentCodeChanged, this, [this](const QString& code) {
    if (!code.isEmpty()) Explain(code);
  });
  LoadRows();
}

void result_Form::MakeHeading(QBoxLayout* layout) {
  layout->addWidget(heading_, 1);
  const auto add = [&](const QString& text, const QString& tip) {
    auto* button = new QPushButton(text, this);
    button->setToolTip(tip);
    button->setAutoDefault(false);
    layout->addWidget(button);
    return button;
  };
  QPushButton* compare =
      add(QStringLiteral("比べる(&M)"), QStringLiteral("ほかの結果リストと比べます"));
  compare->setMenu(compare_menu_);
  connect(compare_menu_, &QMenu::aboutToShow, this, &result_Form::FillCompareMenu);
  QPushButton* columns =
      add(QStringLiteral("列(&L)…"), QStringLiteral("表に加える列を、式で決めます"));
  connect(columns, &QPushButton::clicked, this, [this] { surroundings_.edit_columns(); });
  QPushButton* save =
      add(QStringLiteral("ＣＳＶに保存(&S)…"), QStringLiteral("表の順のまま保存します（Ctrl+S）"));
  connect(save, &QPushButton::clicked, view_, &widgets::TableView::mnu_save_Click);
}

QWidget* result_Form::MakeExplanation() {
  auto* panel = new QWidget(this);
  auto* layout = new QVBoxLayout(panel);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* bar = new QHBoxLayout;
  auto* label = new QLabel(QStringLiteral("理由を調べる銘柄(&C)："), panel);
  label->setBuddy(code_box_);
  code_box_->setMaxLength(static_cast<int>(store::StockCode::kWidth));
  code_box_->setToolTip(
      QStringLiteral("選ばれなかった銘柄も、コードを入れてEnterを押すと理由を表示します"));
  connect(code_box_, &QLineEdit::returnPressed, this, &result_Form::Code_Entered);
  bar->addWidget(label);
  bar->addWidget(code_box_, 1);
  layout->addLayout(bar);
  layout->addWidget(explanation_, 1);
  return panel;
}

const store::StockStore* result_Form::Store() {
  if (!state_.store) return nullptr;
  if (!content_.first_file) return &*state_.store;
  if (!own_store_) {
    auto opened = store::StockStore::Open(
        state_.store->Location(), {store::Access::kRead, content_.first_file, &*state_.store},
        *state_.files);
    // Without it the files that are open do.
    if (!opened) return &*state_.store;
    own_store_.emplace(std::move(*opened));
  }
  return &*own_store_;
}

std::optional<store::StockCode> result_Form::SecondStock() const {
  return content_.analysis ? content_.analysis->second_stock : std::nullopt;
}

void result_Form::Reload() {
  own_store_.reset();
  LoadRows();
}

bool result_Form::DependsOnChange(const settings::Settings& before,
                                  const settings::Settings& after) const {
  return before.analysis_group.columns != after.analysis_group.columns ||
         before.chart_action.adjusts_for_splits != after.chart_action.adjusts_for_splits;
}

void result_Form::LoadRows() {
  heading_->setText(QStringLiteral("%1　%2　%3銘柄")
                        .arg(Text(content_.title), Text(content_.date.ToText()))
                        .arg(content_.codes.size()));
  const store::StockStore* store = Store();
  if (store == nullptr) {
    view_->Show({});
    explanation_->ShowSentence(QStringLiteral("株価データがありません。"));
    return;
  }
  const std::vector<ResultColumn> columns = ColumnsOf(state_.settings.analysis_group);
  std::vector<std::string> notes;
  ResultQuestion question{store->Days().Find(content_.date), columns, SecondStock(),
                          state_.settings.chart_action.adjusts_for_splits, content_.days};
  base::Result<std::vector<ResultRow>> rows;
  if (question.day.IsNone()) {
    rows = std::vector<ResultRow>();
    for (const store::StockCode& code : content_.codes) {
      ResultRow row;
      row.code = code;
      row.stock = store->Master().Find(code);
      row.columns.resize(columns.size());
      rows->push_back(std::move(row));
    }
    notes.push_back(content_.date.ToText() + " の株価データがないので、値を表示できません。");
  } else {
    widgets::JobProgress progress(window(), QStringLiteral("分析結果"));
    rows = LoadResultRows(*store, content_.codes, question, progress, notes);
  }
  QStringList sentences;
  for (const std::string& note : notes) sentences.append(Text(note));
  if (!rows) sentences.append(Text(rows.error().message));
  notes_->setText(sentences.join('\n'));
  notes_->setVisible(!sentences.isEmpty());
  view_->Show(rows ? TableOfResults(store->Master(), *rows, columns) : base::Table());
  if (view_->CurrentCode().isEmpty()) {
    explanation_->ShowSentence(content_.codes.empty() ? QStringLiteral("選ばれた銘柄はありません。")
                                                      : QString());
  } else {
    Explain(view_->CurrentCode());
  }
  state_.CompareStore();
}

void result_Form::Explain(const QString& code) {
  const store::StockStore* store = Store();
  if (store == nullptr) return;
  const auto parsed = store::StockCode::Parse(Utf8(code));
  ExplainQuestion question;
  if (parsed) question.stock = store->Master().Find(*parsed);
  if (question.stock.IsNone()) {
    explanation_->ShowSentence(QStringLiteral("%1：銘柄コードが見つかりません。").arg(code));
    return;
  }
  if (!content_.analysis) {
    explanation_->ShowSentence(
        QStringLiteral("この結果の条件がわからないので、理由を表示できません。"));
    return;
  }
  question.day = content_.own_days.Of(*parsed, store->Days().Find(content_.date));
  if (question.day.IsNone()) {
    explanation_->ShowSentence(
        QStringLiteral("%1 の株価データがありません。").arg(Text(content_.date.ToText())));
    return;
  }
  question.second_stock = content_.analysis->second_stock;
  question.adjust_splits = state_.settings.chart_action.adjusts_for_splits;
  question.days = content_.days;
  const auto explained = ExplainStock(*store, content_.analysis->condition, question);
  state_.CompareStore();
  if (!explained) {
    explanation_->ShowSentence(Text(explained.error().message));
    return;
  }
  const store::StockRecord& stock = store->Master().Stock(question.stock);
  explanation_->ShowExplanation(
      *explained, std::string(stock.code.Text()) + "（" + stock.name + "）",
      store->Days().DateOf(question.day),
      Matches(content_.analysis->market, stock)
          ? std::string()
          : "分析上場市場に含まれない銘柄なので、条件によらず選ばれません。");
}

void result_Form::Code_Entered() {
  const QString typed = code_box_->text().trimmed();
  if (typed.isEmpty() || !state_.store) return;
  const store::StockMaster& master = state_.store->Master();
  const base::MasterRecord stock = store::FindTyped(master, Utf8(typed));
  const QString code = stock.IsNone() ? typed : Text(master.Stock(stock).code.Text());
  view_->SelectCode(code);
  Explain(code);
}

std::vector<store::StockCode> result_Form::Codes() const {
  std::vector<store::StockCode> codes;
  for (const std::string& text : view_->Codes()) {
    if (const auto code = store::StockCode::Parse(text)) codes.push_back(*code);
  }
  return codes;
}

bool result_Form::Step(int32_t step) {
  const int row = view_->currentIndex().row() + step;
  if (row < 0 || row >= view_->model()->rowCount()) return false;
  view_->setCurrentIndex(view_->model()->index(row, 0));
  return true;
}

void result_Form::FillCompareMenu() {
  compare_menu_->clear();
  QAction* fresh = compare_menu_->addAction(
      QStringLiteral("新しく選ばれた銘柄（前の日付の結果にない銘柄）(&N)"));
  connect(fresh, &QAction::triggered, this, &result_Form::CombineWithPrevious);
  fresh->setEnabled(!content_.list.empty());
  compare_menu_->addSeparator();
  const auto others = surroundings_.others();
  for (const OperationRow& row : kOperations) {
    QMenu* menu = compare_menu_->addMenu(Text(row.text));
    const QString name = Text(row.name);
    for (const result_Form* other : others) {
      if (other == this) continue;
      const auto codes = other->Content().codes;
      const std::string title = other->Content().title;
      QString entry = other->windowTitle();
      connect(
          menu->addAction(entry.replace('&', QStringLiteral("&&"))), &QAction::triggered, this,
          [this, row, name, codes, title] { ShowCombination(row.operation, name, codes, title); });
    }
    menu->addSeparator();
    connect(menu->addAction(QStringLiteral("結果リストのファイル(&F)…")), &QAction::triggered, this,
            [this, row, name] { CombineWithFile(row.operation, name); });
  }
}

void result_Form::CombineWithFile(ListOperation operation, const QString& name) {
  const auto file = messages_.ChooseFile({.caption = "比べる結果リスト",
                                          .filter = "結果リスト|*.txt|",
                                          .start = content_.list.parent_path()});
  if (!file) return;
  const auto list = ReadList(*file);
  if (!list) {
    messages_.Warn(list.error().message);
    return;
  }
  ShowCombination(operation, name, list->codes, list->title);
}

void result_Form::CombineWithPrevious() {
  const auto file = PreviousResultList(content_.list);
  if (!file) {
    messages_.Inform("これより前の日付の結果リストはありません。");
    return;
  }
  const auto list = ReadList(*file);
  if (!list) {
    messages_.Warn(list.error().message);
    return;
  }
  const std::string date = list->date ? list->date->ToText() : base::PathText(file->filename());
  ShowCombination(ListOperation::kOnlyHere, QStringLiteral("新しく選ばれた銘柄"), list->codes,
                  date);
}

void result_Form::ShowCombination(ListOperation operation, const QString& name,
                                  const std::vector<store::StockCode>& other,
                                  const std::string& other_title) {
  ResultContent content = content_;
  content.codes = Combine(content_.codes, other, operation);
  content.list.clear();
  content.title += "－" + Utf8(name) + "（" + other_title + "）";
  surroundings_.show(std::move(content));
}

}  // namespace orin::screening
