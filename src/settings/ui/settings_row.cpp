#include "settings/ui/settings_row.h"

#include <QEvent>

#include "widgets/qt_text.h"

namespace orin::settings {

namespace {

constexpr int kLabelLetters = 10;  // of a label before it is wrapped

/// A label without markup whose "&" are letters.
QLabel* PlainLabel(const QString& text, QWidget* page) {
  auto* label = new QLabel(page);
  label->setTextFormat(Qt::PlainText);
  label->setText(text);
  return label;
}

/// The tooltip of all that belongs to the entry.
QString KeyName(const SettingsGroup& group, const SettingEntry& entry) {
  return QStringLiteral("%1 の [%2] %3")
      .arg(widgets::Text(group.file), widgets::Text(entry.section), widgets::Text(entry.key));
}

}  // namespace

QColor ProblemColor(const QPalette& palette) {
  const bool is_dark = palette.color(QPalette::Window).lightness() < 128;
  return is_dark ? QColor::fromHsl(4, 255, 185) : QColor::fromHsl(0, 200, 85);
}

SentenceLabel::SentenceLabel() {
  setTextFormat(Qt::PlainText);
  setWordWrap(true);
  hide();
}

void SentenceLabel::ShowSentence(const QString& problem, const QString& caution) {
  is_problem_ = !problem.isEmpty();
  setText(is_problem_ ? problem : caution);
  setVisible(!text().isEmpty());
  Paint();
}

void SentenceLabel::changeEvent(QEvent* event) {
  QLabel::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) Paint();
}

void SentenceLabel::Paint() {
  const QPalette window = parentWidget() != nullptr ? parentWidget()->palette() : QPalette();
  const QColor color = is_problem_ ? ProblemColor(window) : window.color(QPalette::WindowText);
  if (palette().color(QPalette::WindowText) == color) return;
  QPalette own = palette();
  own.setColor(QPalette::WindowText, color);
  setPalette(own);
}

SettingRow::SettingRow(SettingsDraft& draft, EntryPlace place, const EditorContext& context,
                       QGridLayout* grid, QWidget* page)
    : QObject(page),
      draft_(draft),
      place_(place),
      editor_(MakeSettingEditor(draft.Entry(place), context)),
      reset_button_(new QToolButton),
      sentence_(new SentenceLabel) {
  const SettingEntry& entry = draft.Entry(place);
  // The entry keeps together, apart from the one above.
  grid->setRowMinimumHeight(grid->rowCount(), page->fontMetrics().height() / 2);
  const int row = grid->rowCount() + 1;
  const Qt::Alignment width = editor_->IsWide() ? Qt::Alignment() : Qt::Alignment(Qt::AlignLeft);
  const int text_column = editor_->ShowsLabel() ? 0 : 1;
  if (editor_->ShowsLabel()) {
    grid->addWidget(editor_, row, 0, 1, 2, Qt::AlignLeft);
  } else {
    QLabel* label = PlainLabel(widgets::Text(entry.label), page);
    label->setBuddy(editor_);
    const int longest = label->fontMetrics().horizontalAdvance(QString(kLabelLetters, u'あ'));
    if (label->sizeHint().width() > longest) {
      label->setWordWrap(true);
      label->setFixedWidth(longest);
    }
    label->setToolTip(KeyName(draft.Groups()[place.group], entry));
    grid->addWidget(label, row, 0);
    grid->addWidget(editor_, row, 1, width);
  }
  // The place of the button stays free, so that nothing moves when it appears.
  QSizePolicy policy = reset_button_->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  reset_button_->setSizePolicy(policy);
  reset_button_->setText(QStringLiteral("戻す"));
  reset_button_->setToolTip(QStringLiteral("既定値に戻す"));
  reset_button_->setFocusPolicy(Qt::StrongFocus);
  reset_button_->setObjectName(widgets::Text(entry.key + ".reset"));
  reset_button_->setAccessibleName(
      QStringLiteral("%1を既定値に戻す").arg(widgets::Text(entry.label)));
  grid->addWidget(reset_button_, row, 2);

  QLabel* explanation = PlainLabel(widgets::Text(entry.explanation), page);
  explanation->setWordWrap(true);
  explanation->setForegroundRole(QPalette::PlaceholderText);
  grid->addWidget(explanation, row + 1, text_column, 1, kColumns - text_column);
  sentence_->setObjectName(widgets::Text(entry.key + ".sentence"));
  grid->addWidget(sentence_, row + 2, text_column, 1, kColumns - text_column);
  editor_->setToolTip(KeyName(draft.Groups()[place.group], entry));

  connect(editor_, &SettingEditor::Edited, this, &SettingRow::Take);
  connect(editor_, &SettingEditor::EditingFinished, this, &SettingRow::Refresh);
  connect(reset_button_, &QToolButton::clicked, this, &SettingRow::Reset_Click);
  Refresh();
}

void SettingRow::Refresh() {
  editor_->ShowText(widgets::Text(draft_.TextOf(place_)));
  ShowState();
}

void SettingRow::Take(const QString& text) {
  draft_.Assign(place_, widgets::Utf8(text));
  ShowState();
  Q_EMIT Changed();
}

void SettingRow::Reset_Click() {
  // The button goes; the focus stays at the entry.
  editor_->setFocus();
  draft_.Reset(place_);
  Refresh();
  Q_EMIT Changed();
}

void SettingRow::ShowState() {
  sentence_->ShowSentence(widgets::Text(draft_.ProblemOf(place_)),
                          widgets::Text(draft_.CautionOf(place_)));
  reset_button_->setVisible(!draft_.IsDefault(place_));
}

}  // namespace orin::settings
