#pragma once

#include <QWidget>
#include <string>

#include "chart/sample_chart.h"
#include "settings/settings.h"
#include "settings/settings_catalogue.h"

namespace orin::settings {

/// Shows what the colours of a group look like: a stock menu or a chart. Hidden for groups
/// without colours.
class SettingsPreview final : public QWidget {
 public:
  SettingsPreview();

  /// Where a group has several headings with colours, `heading` chooses whose lines are drawn;
  /// one without colours leaves the choice as it was.
  void Show(const Settings& settings, const SettingsGroup& group, const std::string& heading);

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const SettingsGroup* group_ = nullptr;
  std::string heading_;
  Settings settings_;
  chart::SampleChoice choice_;
};

}  // namespace orin::settings
