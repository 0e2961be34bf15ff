#pragma once

#include <QPainter>
#include <QString>
#include <string>
#include <vector>

#include "base/color.h"
#include "settings/settings.h"
#include "settings/settings_catalogue.h"

namespace orin::settings {

/// A line of the sample and its name.
struct SampleLine {
  QString name;
  base::Color color;
};

/// What the sample chart shows: invented prices in the colours of the settings, and the lines of
/// one heading of the settings window.
struct ChartSample {
  ChartCommonColorSettings colors;
  VolumeChart volume;
  QString title;
  std::vector<SampleLine> price_lines;  // over the candles
  std::vector<SampleLine> sub_lines;    // below them; none: the volume is there
};

/// With the lines of the heading that the colours of the group's entries belong to.
ChartSample MakeChartSample(const Settings& settings, const SettingsGroup& group,
                            const std::string& heading);

void PaintChartSample(QPainter& painter, const QRectF& area, const ChartSample& sample);

}  // namespace orin::settings
