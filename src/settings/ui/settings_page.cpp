#include "settings/ui/settings_page.h"

#include <QVBoxLayout>
#include <algorithm>

#include "widgets/qt_text.h"

namespace orin::settings {

SettingsPage::SettingsPage(SettingsDraft& draft, const EditorContext& context,
                           std::span<const EntryPlace> places, bool shows_groups)
    : draft_(draft),
      context_(context),
      shows_groups_(shows_groups),
      content_(new QWidget),
      grid_(new QGridLayout) {
  setWidgetResizable(true);
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::NoFocus);
  auto* layout = new QVBoxLayout(content_);
  layout->addLayout(grid_);
  layout->addStretch();
  grid_->setColumnStretch(1, 1);
  grid_->setVerticalSpacing(fontMetrics().height() / 6);
  grid_->setHorizontalSpacing(fontMetrics().averageCharWidth());
  Add(places);
  setWidget(content_);
}

void SettingsPage::Add(std::span<const EntryPlace> places) {
  for (const EntryPlace place : places) {
    AddHeadings(place);
    auto* row = new SettingRow(draft_, place, context_, grid_, content_);
    connect(row, &SettingRow::Changed, this, [this, place] { Q_EMIT Changed(place.group); });
    rows_.push_back(row);
  }
}

void SettingsPage::AddNote(QWidget* note) {
  grid_->addWidget(note, grid_->rowCount(), 0, 1, SettingRow::kColumns);
}

void SettingsPage::AddHeadings(EntryPlace place) {
  const bool is_first = rows_.empty();
  const EntryPlace before = is_first ? place : rows_.back()->Place();
  const bool is_new_group = is_first || before.group != place.group;
  if (is_new_group && shows_groups_) AddTitle(widgets::Text(draft_.Groups()[place.group].title), 2);
  const std::string& heading = draft_.Entry(place).heading;
  const bool is_new_heading = is_new_group || draft_.Entry(before).heading != heading;
  if (is_new_heading && !heading.empty()) AddTitle(widgets::Text(heading), 0);
}

void SettingsPage::AddTitle(const QString& text, int more_points) {
  auto* title = new QLabel(content_);
  title->setTextFormat(Qt::PlainText);
  title->setText(text);
  QFont bold;  // of it weight and size alone
  bold.setBold(true);
  if (more_points > 0) bold.setPointSizeF(font().pointSizeF() + more_points);
  title->setFont(bold);
  if (!rows_.empty()) title->setContentsMargins(0, fontMetrics().height(), 0, 0);
  grid_->addWidget(title, grid_->rowCount(), 0, 1, SettingRow::kColumns);
}

void SettingsPage::Refresh() {
  for (SettingRow* row : rows_) row->Refresh();
}

std::optional<EntryPlace> SettingsPage::PlaceOf(const QWidget* widget) const {
  const auto row = std::ranges::find_if(
      rows_, [widget](const SettingRow* one) { return one->Editor()->isAncestorOf(widget); });
  return row != rows_.end() ? std::optional((*row)->Place()) : std::nullopt;
}

void SettingsPage::GoTo(EntryPlace place) {
  const auto row = std::ranges::find(rows_, place, &SettingRow::Place);
  if (row == rows_.end()) return;
  // A page shown for the first time has not been laid out yet.
  content_->layout()->activate();
  (*row)->Editor()->setFocus(Qt::OtherFocusReason);
  ensureWidgetVisible((*row)->Editor(), 0, fontMetrics().height() * 4);
}

}  // namespace orin::settings
