#include "settings/ui/settings_preview.h"

#include <QPainter>
#include <algorithm>

#include "settings/ui/settings_menu_sample.h"

namespace orin::settings {

namespace {

constexpr int kTextRows = 12;   // of text; the height that is good to have
constexpr int kFewestRows = 6;  // the least that still shows something

const SettingEntry* FirstColor(const SettingsGroup& group, const std::string& heading) {
  const auto entry = std::ranges::find_if(group.entries, [&heading](const SettingEntry& row) {
    return row.kind == SettingKind::kColor && (heading.empty() || row.heading == heading);
  });
  return entry != group.entries.end() ? &*entry : nullptr;
}

}  // namespace

SettingsPreview::SettingsPreview() {
  setObjectName(QStringLiteral("preview"));
  setAccessibleName(QStringLiteral("色の見本"));
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
  hide();
}

void SettingsPreview::Show(const Settings& settings, const SettingsGroup& group,
                           const std::string& heading) {
  const SettingEntry* first = FirstColor(group, {});
  if (first == nullptr) {
    hide();
    return;
  }
  if (group_ != &group) heading_ = first->heading;
  group_ = &group;
  if (FirstColor(group, heading) != nullptr && !heading.empty()) heading_ = heading;
  if (group.section == "MenuColor") {
    sample_ = settings.menu_color;
  } else {
    sample_ = MakeChartSample(settings, group, heading_);
  }
  show();
  update();
}

QSize SettingsPreview::sizeHint() const {
  return {fontMetrics().averageCharWidth() * 60, fontMetrics().height() * kTextRows};
}

QSize SettingsPreview::minimumSizeHint() const {
  return {fontMetrics().averageCharWidth() * 30, fontMetrics().height() * kFewestRows};
}

void SettingsPreview::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  if (const auto* menu = std::get_if<MenuColorSettings>(&sample_)) {
    PaintMenuSample(painter, rect(), *menu);
  } else {
    PaintChartSample(painter, rect(), std::get<ChartSample>(sample_));
  }
}

}  // namespace orin::settings
