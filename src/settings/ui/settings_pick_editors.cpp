#include "settings/ui/settings_pick_editors.h"

#include <QCalendarWidget>
#include <QDate>
#include <QMenu>
#include <QWidgetAction>
#include <algorithm>

#include "base/file_system.h"
#include "widgets/qt_text.h"

namespace orin::settings {

namespace {

constexpr int kDateLength = 10;

const QString& DateForm() {
  static const QString form = QStringLiteral("yyyy/MM/dd");
  return form;
}

}  // namespace

std::string PathSettingText(const std::filesystem::path& path, SettingKind kind) {
  std::string text = base::PathText(path);
  std::ranges::replace(text, '/', '\\');
  if (kind == SettingKind::kDirectory && !text.ends_with('\\')) text += '\\';
  return text;
}

PathEditor::PathEditor(const SettingEntry& entry, const EditorContext& context)
    : SettingEditor(entry), context_(context), line_(new QLineEdit) {
  Adopt(line_);
  auto* browse = new QPushButton(QStringLiteral("参照…"));
  browse->setAutoDefault(false);
  Append(browse, QStringLiteral("参照"));
  connect(line_, &QLineEdit::textEdited, this, &SettingEditor::Edited);
  connect(line_, &QLineEdit::editingFinished, this, &SettingEditor::EditingFinished);
  connect(browse, &QPushButton::clicked, this, &PathEditor::Browse_Click);
}

void PathEditor::ShowText(const QString& text) {
  if (line_->text() != text) line_->setText(text);
}

void PathEditor::Browse_Click() {
  const bool is_directory = Entry().kind == SettingKind::kDirectory;
  const std::string text = widgets::Utf8(line_->text());
  const auto chosen = context_.messages.ChooseFile(
      {.caption = Entry().label,
       .start =
           text.empty() ? context_.places.program_directory : NativeSetting(context_.places, text),
       .choice = is_directory ? base::FileChoice::kDirectory : base::FileChoice::kOpen});
  if (!chosen) return;
  line_->setText(widgets::Text(PathSettingText(*chosen, Entry().kind)));
  Q_EMIT Edited(line_->text());
}

DateEditor::DateEditor(const SettingEntry& entry)
    : SettingEditor(entry), line_(new QLineEdit), button_(new QToolButton) {
  Adopt(line_);
  line_->setPlaceholderText(QStringLiteral("yyyy/mm/dd"));
  line_->setMinimumWidth(line_->fontMetrics().horizontalAdvance('0') * (kDateLength + 4));
  button_->setText(QStringLiteral("選ぶ…"));
  button_->setFocusPolicy(Qt::StrongFocus);
  Append(button_, QStringLiteral("カレンダー"));
  connect(line_, &QLineEdit::textEdited, this, &SettingEditor::Edited);
  connect(line_, &QLineEdit::editingFinished, this, &SettingEditor::EditingFinished);
  connect(button_, &QToolButton::clicked, this, &DateEditor::Calendar_Click);
}

void DateEditor::ShowText(const QString& text) {
  if (line_->text() != text) line_->setText(text);
}

void DateEditor::Calendar_Click() {
  QMenu menu(this);
  auto* calendar = new QCalendarWidget;
  calendar->setAccessibleName(QStringLiteral("%1のカレンダー").arg(widgets::Text(Entry().label)));
  calendar->setLocale(QLocale(QLocale::Japanese, QLocale::Japan));
  calendar->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
  const QDate date = QDate::fromString(line_->text().trimmed(), DateForm());
  if (date.isValid()) calendar->setSelectedDate(date);
  auto* action = new QWidgetAction(&menu);
  action->setDefaultWidget(calendar);
  menu.addAction(action);
  const auto take = [this, &menu](const QDate& chosen) {
    line_->setText(chosen.toString(DateForm()));
    menu.close();
    Q_EMIT Edited(line_->text());
  };
  connect(calendar, &QCalendarWidget::clicked, &menu, take);
  connect(calendar, &QCalendarWidget::activated, &menu, take);
  connect(&menu, &QMenu::aboutToShow, calendar, [calendar] { calendar->setFocus(); });
  menu.exec(button_->mapToGlobal(button_->rect().bottomLeft()));
}

}  // namespace orin::settings
