#include "settings/ui/settings_line_editors.h"

#include <QStyle>
#include <QStyleOptionSpinBox>
#include <QToolButton>
#include <QWheelEvent>
#include <algorithm>
#include <optional>

#include "widgets/qt_text.h"

namespace orin::settings {

namespace {

constexpr int kShortLine = 18;  // characters

void ShowIn(QLineEdit* line, const QString& text) {
  const QSignalBlocker silence(line);
  if (line->text() == text) return;
  line->setText(text);
  line->setCursorPosition(0);
}

/// The number typed, in half or full width.
std::optional<qint64> NumberIn(const QString& text) {
  bool is_number = false;
  const qint64 number =
      text.normalized(QString::NormalizationForm_KC).trimmed().toLongLong(&is_number);
  return is_number ? std::optional(number) : std::nullopt;
}

bool IsNarrow(SettingKind kind) {
  return kind == SettingKind::kRate || kind == SettingKind::kTime ||
         kind == SettingKind::kStockCode;
}

}  // namespace

CheckEditor::CheckEditor(const SettingEntry& entry)
    : SettingEditor(entry), box_(new QCheckBox(widgets::Text(entry.label).replace('&', "&&"))) {
  Adopt(box_);
  connect(box_, &QCheckBox::toggled, this,
          [this](bool is_on) { Q_EMIT Edited(is_on ? QStringLiteral("1") : QStringLiteral("0")); });
}

void CheckEditor::ShowText(const QString& text) {
  const QSignalBlocker silence(box_);
  box_->setChecked(text == QStringLiteral("1"));
}

NumberBox::NumberBox(int minimum, int maximum) : minimum_(minimum), maximum_(maximum) {
  setFocusPolicy(Qt::StrongFocus);
}

QSize NumberBox::sizeHint() const {
  const auto digits =
      std::max({QString::number(minimum_).size(), QString::number(maximum_).size(), qsizetype{4}});
  const QFontMetrics metrics = fontMetrics();
  const QSize content(metrics.horizontalAdvance(QString(digits + 1, '0')), metrics.height());
  QStyleOptionSpinBox option;
  initStyleOption(&option);
  const QSize hint = QAbstractSpinBox::sizeHint();
  const QSize size = style()->sizeFromContents(QStyle::CT_SpinBox, &option, content, this);
  return {size.width() + metrics.averageCharWidth() * 3, hint.height()};
}

void NumberBox::stepBy(int steps) {
  const auto number = NumberIn(lineEdit()->text());
  const qint64 next = number ? *number + steps : minimum_;
  lineEdit()->setText(QString::number(std::clamp<qint64>(next, minimum_, maximum_)));
  selectAll();
  Q_EMIT Stepped();
}

QAbstractSpinBox::StepEnabled NumberBox::stepEnabled() const {
  const auto number = NumberIn(lineEdit()->text());
  StepEnabled enabled;
  if (!number || *number < maximum_) enabled |= StepUpEnabled;
  if (!number || *number > minimum_) enabled |= StepDownEnabled;
  return enabled;
}

void NumberBox::wheelEvent(QWheelEvent* event) {
  if (hasFocus()) {
    QAbstractSpinBox::wheelEvent(event);
  } else {
    event->ignore();
  }
}

NumberEditor::NumberEditor(const SettingEntry& entry)
    : SettingEditor(entry),
      box_(new NumberBox(static_cast<int>(entry.minimum), static_cast<int>(entry.maximum))) {
  Adopt(box_);
  connect(box_->Line(), &QLineEdit::textEdited, this, &SettingEditor::Edited);
  connect(box_, &NumberBox::Stepped, this, [this] { Q_EMIT Edited(box_->Line()->text()); });
  connect(box_, &QAbstractSpinBox::editingFinished, this, &SettingEditor::EditingFinished);
}

void NumberEditor::ShowText(const QString& text) { ShowIn(box_->Line(), text); }

ChoiceBox::ChoiceBox() {
  setFocusPolicy(Qt::StrongFocus);
  setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  setMinimumContentsLength(kShortLine / 2);
}

void ChoiceBox::wheelEvent(QWheelEvent* event) {
  if (hasFocus()) {
    QComboBox::wheelEvent(event);
  } else {
    event->ignore();
  }
}

ChoiceEditor::ChoiceEditor(const SettingEntry& entry) : SettingEditor(entry), box_(new ChoiceBox) {
  for (const SettingChoice& choice : entry.choices) {
    box_->addItem(widgets::Text(choice.text), QString::number(choice.value));
  }
  Adopt(box_);
  connect(box_, &QComboBox::currentIndexChanged, this,
          [this](int index) { Q_EMIT Edited(box_->itemData(index).toString()); });
}

void ChoiceEditor::ShowText(const QString& text) {
  const QSignalBlocker silence(box_);
  box_->setCurrentIndex(box_->findData(text));
}

LineEditor::LineEditor(const SettingEntry& entry) : SettingEditor(entry), line_(new QLineEdit) {
  Adopt(line_);
  if (entry.kind == SettingKind::kTime) line_->setPlaceholderText(QStringLiteral("hh:mm:ss"));
  if (IsNarrow(entry.kind)) {
    line_->setMaximumWidth(line_->fontMetrics().averageCharWidth() * kShortLine * 3 / 2);
  }
  connect(line_, &QLineEdit::textEdited, this, &SettingEditor::Edited);
  connect(line_, &QLineEdit::editingFinished, this, &SettingEditor::EditingFinished);
}

void LineEditor::ShowText(const QString& text) { ShowIn(line_, text); }

bool LineEditor::IsWide() const { return !IsNarrow(Entry().kind); }

SecretEditor::SecretEditor(const SettingEntry& entry) : SettingEditor(entry), line_(new QLineEdit) {
  Adopt(line_);
  line_->setEchoMode(QLineEdit::Password);
  auto* show = new QToolButton;
  show->setText(QStringLiteral("表示"));
  show->setCheckable(true);
  show->setFocusPolicy(Qt::StrongFocus);
  show->setToolTip(QStringLiteral("隠している文字を表示します"));
  Append(show, QStringLiteral("表示"));
  connect(show, &QToolButton::toggled, this, [this](bool is_shown) {
    line_->setEchoMode(is_shown ? QLineEdit::Normal : QLineEdit::Password);
  });
  connect(line_, &QLineEdit::textEdited, this, &SettingEditor::Edited);
  connect(line_, &QLineEdit::editingFinished, this, &SettingEditor::EditingFinished);
}

void SecretEditor::ShowText(const QString& text) { ShowIn(line_, text); }

}  // namespace orin::settings
