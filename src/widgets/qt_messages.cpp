#include "widgets/qt_messages.h"

#include <QApplication>
#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>
#include <array>
#include <span>
#include <utility>
#include <vector>

#include "widgets/qt_text.h"

namespace orin::widgets {

namespace {

QMessageBox::Icon IconOf(base::Icon icon) {
  constexpr std::array kIcons = {QMessageBox::Information, QMessageBox::Warning,
                                 QMessageBox::Critical, QMessageBox::Question};
  return kIcons.at(static_cast<size_t>(icon));
}

struct ButtonRow {
  base::Answer answer;
  const char* text;
  QMessageBox::ButtonRole role;
};

constexpr std::array kOkRows = {ButtonRow{base::Answer::kOk, "OK", QMessageBox::AcceptRole}};
constexpr std::array kQuestionRows = {
    ButtonRow{base::Answer::kYes, "はい(&Y)", QMessageBox::YesRole},
    ButtonRow{base::Answer::kNo, "いいえ(&N)", QMessageBox::NoRole},
    ButtonRow{base::Answer::kCancel, "キャンセル", QMessageBox::RejectRole},
};

std::span<const ButtonRow> RowsOf(base::Buttons buttons) {
  if (buttons == base::Buttons::kOk) return kOkRows;
  return std::span(kQuestionRows).first(buttons == base::Buttons::kYesNo ? 2 : 3);
}

/// The answer of a box that was closed without a button.
base::Answer AnswerOfClosing(base::Buttons buttons) {
  if (buttons == base::Buttons::kOk) return base::Answer::kOk;
  return buttons == base::Buttons::kYesNo ? base::Answer::kNo : base::Answer::kCancel;
}

QWidget* Owner() {
  QWidget* active = QApplication::activeModalWidget();
  return active != nullptr ? active : QApplication::activeWindow();
}

}  // namespace

QString DialogFilter(std::string_view filter) {
  const QStringList pieces = Text(filter).split('|', Qt::SkipEmptyParts);
  QStringList filters;
  for (qsizetype i = 0; i + 1 < pieces.size(); i += 2) {
    filters.append(pieces[i] + QStringLiteral(" (") + pieces[i + 1] + ')');
  }
  filters.append(QStringLiteral("すべてのファイル (*)"));
  return filters.join(QStringLiteral(";;"));
}

base::Answer QtMessages::Show(const base::Message& message) {
  QMessageBox box(Owner());
  box.setWindowTitle(Text(message.caption));
  box.setText(Text(message.text));
  box.setTextFormat(Qt::PlainText);
  box.setIcon(IconOf(message.icon));
  const auto rows = RowsOf(message.buttons);
  std::vector<QAbstractButton*> buttons;
  for (const ButtonRow& row : rows) {
    QPushButton* button = box.addButton(Text(row.text), row.role);
    if (row.answer == message.default_answer) box.setDefaultButton(button);
    if (row.answer == AnswerOfClosing(message.buttons)) box.setEscapeButton(button);
    buttons.push_back(button);
  }
  box.exec();
  for (size_t i = 0; i < rows.size(); ++i) {
    if (box.clickedButton() == buttons[i]) return rows[i].answer;
  }
  return AnswerOfClosing(message.buttons);
}

std::optional<std::filesystem::path> QtMessages::ChooseFile(const base::FileQuestion& question) {
  QFileDialog dialog(Owner(), Text(question.caption), {}, DialogFilter(question.filter));
  // The toolkit's own dialog speaks Japanese on every desktop.
  dialog.setOption(QFileDialog::DontUseNativeDialog);
  std::error_code failure;
  if (std::filesystem::is_directory(question.start, failure)) {
    dialog.setDirectory(PathOf(question.start));
  } else if (!question.start.empty()) {
    dialog.setDirectory(PathOf(question.start.parent_path()));
    dialog.selectFile(PathOf(question.start.filename()));
  }
  if (question.choice == base::FileChoice::kSave) {
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QString::fromStdString(question.start.extension().string()));
  } else if (question.choice == base::FileChoice::kDirectory) {
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
  } else {
    dialog.setFileMode(QFileDialog::ExistingFile);
  }
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
  return PathFrom(dialog.selectedFiles().front());
}

std::optional<std::string> QtMessages::AskText(const base::TextQuestion& question) {
  bool is_accepted = false;
  const QString text =
      QInputDialog::getText(Owner(), Text(question.caption), Text(question.text), QLineEdit::Normal,
                            Text(question.default_value), &is_accepted);
  if (!is_accepted) return std::nullopt;
  return Utf8(text);
}

}  // namespace orin::widgets
