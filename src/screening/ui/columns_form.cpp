#include "screening/ui/columns_form.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "analysis/note_sentence.h"
#include "analysis/program.h"
#include "widgets/manual_form.h"
#include "widgets/qt_text.h"

namespace orin::screening {

using widgets::Text;
using widgets::Utf8;

columns_Form::columns_Form(const Columns& columns, QWidget* owner) : QDialog(owner) {
  setWindowTitle(QStringLiteral("結果の列"));
  setProperty("helpPage", QStringLiteral("screening"));
  widgets::OpenManualWithF1(this);
  auto* grid = new QGridLayout;
  grid->addWidget(new QLabel(QStringLiteral("見出し"), this), 0, 1);
  grid->addWidget(new QLabel(QStringLiteral("式（「移動平均乖離率(25,0)」など）"), this), 0, 2);
  for (size_t i = 0; i < rows_.size(); ++i) {
    Row& row = rows_[i];
    row = {new QLineEdit(Text(columns[i].title), this),
           new QLineEdit(Text(columns[i].expression), this), new QLabel(this)};
    const int number = static_cast<int>(i) + 1;
    auto* label = new QLabel(QStringLiteral("&%1：").arg(number), this);
    label->setBuddy(row.title);
    row.title->setAccessibleName(QStringLiteral("列%1の見出し").arg(number));
    row.title->setMinimumWidth(fontMetrics().averageCharWidth() * 16);
    row.title->setPlaceholderText(QStringLiteral("空なら式"));
    row.expression->setAccessibleName(QStringLiteral("列%1の式").arg(number));
    row.expression->setMinimumWidth(fontMetrics().averageCharWidth() * 50);
    row.note->setWordWrap(true);
    grid->addWidget(label, 2 * number - 1, 0);
    grid->addWidget(row.title, 2 * number - 1, 1);
    grid->addWidget(row.expression, 2 * number - 1, 2);
    grid->addWidget(row.note, 2 * number, 1, 1, 2);
    connect(row.expression, &QLineEdit::textChanged, this, [&row] { Check(row); });
    Check(row);
  }
  grid->setColumnStretch(2, 1);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* layout = new QVBoxLayout(this);
  auto* explanation = new QLabel(
      QStringLiteral("結果の表に、式の値の列を加えます。条件なら、成り立つ銘柄に○がつきます。"
                     "株価分析グループファイルに保存されます。"),
      this);
  explanation->setWordWrap(true);
  layout->addWidget(explanation);
  layout->addLayout(grid);
  layout->addStretch();
  layout->addWidget(buttons);
}

void columns_Form::Check(const Row& row) {
  const std::string expression = Utf8(row.expression->text().trimmed());
  QString sentence;
  if (!expression.empty()) {
    const auto program = analysis::BuildProgram(expression);
    if (!program) {
      sentence = Text(analysis::NoteSentence(program.error()));
    } else if (!program->Notes().empty()) {
      sentence = Text(analysis::NoteSentence(program->Notes().front()));
    }
  }
  row.note->setText(sentence);
  row.note->setVisible(!sentence.isEmpty());
}

columns_Form::Columns columns_Form::Chosen() const {
  Columns columns;
  for (size_t i = 0; i < rows_.size(); ++i) {
    columns[i].title = Utf8(rows_[i].title->text().trimmed());
    columns[i].expression = Utf8(rows_[i].expression->text().trimmed());
  }
  return columns;
}

}  // namespace orin::screening
