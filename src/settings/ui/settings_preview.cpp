#include "settings/ui/settings_preview.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

#include "painting/picture_painter.h"
#include "settings/ui/settings_chart_sample.h"
#include "settings/ui/settings_menu_sample.h"

namespace orin::settings {

namespace {

constexpr std::string_view kMenuSection = "MenuColor";
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
  settings_ = settings;
  choice_ = SampleFor(group, heading_);
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
  if (group_ == nullptr) return;
  if (group_->section == kMenuSection) {
    PaintMenuSample(painter, rect(), settings_.menu_color);
    return;
  }
  // How many pixels of the device are one of the widget.
  const double scale = painter.deviceTransform().m11();
  const auto pixels = [scale](int side) { return static_cast<int32_t>(std::lround(side * scale)); };
  painter.scale(1 / scale, 1 / scale);
  painting::PaintPicture(
      painter, chart::DrawSample(settings_, choice_, {pixels(width()), pixels(height()), scale}));
}

}  // namespace orin::settings
