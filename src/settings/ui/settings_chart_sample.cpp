#include "settings/ui/settings_chart_sample.h"

#include <QPainterPath>
#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

#include "settings/ui/settings_color_editor.h"
#include "widgets/qt_text.h"

namespace orin::settings {

namespace {

constexpr int kBars = 44;
constexpr double kLowest = 78;  // of the price scale
constexpr double kHighest = 122;

// Begin of the keys whose lines a chart draws over its candles.
constexpr std::array<std::string_view, 5> kPriceStems = {"day", "week", "month", "ichimoku",
                                                         "bollinger"};
constexpr std::string_view kVolumeStem = "dekidakaidou";
constexpr std::string_view kVolumeKey = "dekidakachart_color";

double SampleClose(int bar) { return 100 + 11 * std::sin(bar * 0.29) + 4 * std::sin(bar * 0.93); }

double SampleVolume(int bar) { return 0.25 + 0.5 * std::abs(std::sin(bar * 1.7 + 1)); }

/// A smoother wave that stays apart from those of the lines before it.
double SampleValue(size_t line, int bar) {
  const auto order = static_cast<double>(line);
  return 100 + (12 - order) * std::sin((bar - 2.5 * (order + 1)) * 0.27) + (order - 1) * 1.5;
}

/// Turns bars and prices into places on the screen.
struct Scale {
  QRectF pane;

  [[nodiscard]] double X(double bar) const {
    return pane.left() + (bar + 0.5) * pane.width() / kBars;
  }
  [[nodiscard]] double Y(double price) const {
    return pane.bottom() - (price - kLowest) / (kHighest - kLowest) * pane.height();
  }
};

QPen LinePen(base::Color color, const QRectF& pane) {
  return QPen(ScreenColor(color), std::max(1.5, pane.height() / 90));
}

void PaintGrid(QPainter& painter, const QRectF& pane, base::Color color, int rows) {
  painter.setPen(QPen(ScreenColor(color), 1));
  painter.drawRect(pane);
  painter.setPen(QPen(ScreenColor(color), 1, Qt::DotLine));
  for (int i = 1; i < rows; ++i) {
    const double y = std::round(pane.top() + pane.height() * i / rows) + 0.5;
    painter.drawLine(QPointF(pane.left(), y), QPointF(pane.right(), y));
  }
}

void PaintCandles(QPainter& painter, const Scale& scale, const ChartCommonColorSettings& colors) {
  const double width = std::max(2.0, std::floor(scale.pane.width() / kBars * 0.6));
  for (int bar = 0; bar < kBars; ++bar) {
    const double open = SampleClose(bar - 1);
    const double close = SampleClose(bar);
    const QColor color = ScreenColor(close >= open ? colors.rise : colors.fall);
    const double x = std::round(scale.X(bar));
    painter.fillRect(
        QRectF(x, scale.Y(std::max(open, close) + 2), 1,
               scale.Y(std::min(open, close) - 2) - scale.Y(std::max(open, close) + 2)),
        color);
    const double top = scale.Y(std::max(open, close));
    painter.fillRect(QRectF(x - std::floor(width / 2), top, width,
                            std::max(1.0, scale.Y(std::min(open, close)) - top)),
                     color);
  }
}

void PaintLines(QPainter& painter, const Scale& scale, const std::vector<SampleLine>& lines) {
  painter.setRenderHint(QPainter::Antialiasing);
  for (size_t line = 0; line < lines.size(); ++line) {
    QPainterPath path(QPointF(scale.X(0), scale.Y(SampleValue(line, 0))));
    for (int bar = 1; bar < kBars; ++bar) {
      path.lineTo(scale.X(bar), scale.Y(SampleValue(line, bar)));
    }
    painter.setPen(LinePen(lines[line].color, scale.pane));
    painter.drawPath(path);
  }
  painter.setRenderHint(QPainter::Antialiasing, false);
}

/// The names of the lines, each in its colour, from the left of `row` on; what does not fit is
/// left out.
void PaintNames(QPainter& painter, QRectF row, const std::vector<SampleLine>& lines) {
  for (const SampleLine& line : lines) {
    const double width = painter.fontMetrics().horizontalAdvance(line.name + QStringLiteral("　"));
    if (width > row.width()) return;
    painter.setPen(ScreenColor(line.color));
    painter.drawText(row, Qt::AlignLeft | Qt::AlignVCenter, line.name);
    row.setLeft(row.left() + width);
  }
}

/// The names of the lines one below the other.
void PaintNamesBelow(QPainter& painter, const QRectF& area, const std::vector<SampleLine>& lines) {
  const QFontMetrics metrics = painter.fontMetrics();
  QRectF row(area.topLeft(), QSizeF(area.width(), metrics.height()));
  for (const SampleLine& line : lines) {
    if (row.bottom() > area.bottom() + 1) return;
    painter.setPen(ScreenColor(line.color));
    painter.drawText(row, Qt::AlignLeft | Qt::AlignVCenter,
                     metrics.elidedText(line.name, Qt::ElideRight, static_cast<int>(row.width())));
    row.translate(0, metrics.height());
  }
}

void PaintVolume(QPainter& painter, const QRectF& pane, const VolumeChart& volume) {
  const Scale scale{pane};
  const double width = std::max(2.0, std::floor(pane.width() / kBars * 0.6));
  for (int bar = 0; bar < kBars; ++bar) {
    const double height = SampleVolume(bar) * pane.height();
    painter.fillRect(QRectF(std::round(scale.X(bar)) - std::floor(width / 2),
                            pane.bottom() - height, width, height),
                     ScreenColor(volume.color));
  }
  PaintLines(painter, scale, {{{}, volume.averages[0].color}, {{}, volume.averages[1].color}});
}

void PaintCursor(QPainter& painter, const Scale& scale, const ChartCommonColorSettings& colors) {
  painter.setPen(QPen(ScreenColor(colors.cross_hair), 1));
  const double x = std::round(scale.X(kBars * 0.62)) + 0.5;
  const double y = std::round(scale.Y(SampleClose(kBars / 2))) + 0.5;
  painter.drawLine(QPointF(x, scale.pane.top()), QPointF(x, scale.pane.bottom()));
  painter.drawLine(QPointF(scale.pane.left(), y), QPointF(scale.pane.right(), y));
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(LinePen(colors.trend_lines, scale.pane));
  painter.drawLine(QPointF(scale.X(2), scale.Y(84)), QPointF(scale.X(kBars - 3), scale.Y(97)));
  painter.setRenderHint(QPainter::Antialiasing, false);
}

/// The list of values beside the chart.
void PaintList(QPainter& painter, const QRectF& area, const ChartCommonColorSettings& colors) {
  constexpr std::array kRows = {"始値 101.5", "高値 108.2", "安値  99.8", "終値 107.0"};
  const double height = painter.fontMetrics().height() * 1.15;
  QRectF row(area.left(), area.top(), area.width(), height);
  painter.fillRect(row, ScreenColor(colors.heading_ground));
  painter.setPen(ScreenColor(colors.heading_text));
  painter.drawText(row, Qt::AlignCenter, QStringLiteral("2025/01/31"));
  painter.setPen(ScreenColor(colors.text));
  for (const char* text : kRows) {
    row.translate(0, height);
    if (row.bottom() > area.bottom()) return;
    painter.drawText(row, Qt::AlignCenter, QString::fromUtf8(text));
  }
}

std::vector<SampleLine> CreditLines(const ChartCommonColorSettings& colors) {
  return {{QStringLiteral("売り残"), colors.credit_sales},
          {QStringLiteral("買い残"), colors.credit_purchases}};
}

bool IsPriceLine(const std::string& key) {
  return std::ranges::any_of(kPriceStems,
                             [&key](std::string_view stem) { return key.starts_with(stem); });
}

/// "移動平均１の色" as the name of a line; of a mere "色" the heading is.
QString LineName(const SettingEntry& entry) {
  const QString name = widgets::Text(entry.label);
  const QString ending = QStringLiteral("の色");
  if (name.endsWith(ending)) return name.chopped(ending.size());
  return name == QStringLiteral("色") ? widgets::Text(entry.heading) : name;
}

}  // namespace

ChartSample MakeChartSample(const Settings& settings, const SettingsGroup& group,
                            const std::string& heading) {
  ChartSample sample{settings.chart_common_color, settings.chart_display.volume, {}, {}, {}};
  if (group.section == "ChartCommonColor") {
    sample.title = widgets::Text(group.title);
    sample.sub_lines = CreditLines(sample.colors);
    return sample;
  }
  sample.title = widgets::Text(heading);
  for (const SettingEntry& entry : group.entries) {
    const bool is_volume = entry.key.starts_with(kVolumeStem) || entry.key == kVolumeKey;
    if (entry.kind != SettingKind::kColor || entry.heading != heading || is_volume) continue;
    const base::Color color =
        base::Color::FromNumber(QString::fromStdString(entry.text(settings)).toInt());
    (IsPriceLine(entry.key) ? sample.price_lines : sample.sub_lines)
        .push_back({LineName(entry), color});
  }
  return sample;
}

void PaintChartSample(QPainter& painter, const QRectF& area, const ChartSample& sample) {
  painter.fillRect(area, ScreenColor(sample.colors.ground));
  const QFontMetricsF metrics(painter.font());
  const double line = metrics.height();
  const double list_width = metrics.horizontalAdvance(QStringLiteral("2025/01/31000"));
  const QRectF inner = area.adjusted(line / 2, line * 1.4, -line / 2, -line / 2);
  const QRectF chart = inner.adjusted(0, 0, -list_width - line / 2, 0);
  const QRectF main(chart.topLeft(), QSizeF(chart.width(), std::floor(chart.height() * 0.62)));
  const QRectF sub(QPointF(chart.left(), main.bottom() + line / 3), chart.bottomRight());

  const QRectF title_row(chart.left(), area.top() + line * 0.2, inner.width(), line);
  painter.setPen(ScreenColor(sample.colors.text));
  const QString title = QStringLiteral("見本：%1　").arg(sample.title);
  painter.drawText(title_row, Qt::AlignLeft | Qt::AlignVCenter, title);
  PaintNames(painter, title_row.adjusted(metrics.horizontalAdvance(title), 0, 0, 0),
             sample.price_lines);

  PaintGrid(painter, main, sample.colors.lines, 4);
  const Scale scale{main};
  PaintCandles(painter, scale, sample.colors);
  PaintLines(painter, scale, sample.price_lines);
  PaintCursor(painter, scale, sample.colors);
  PaintList(painter, {chart.right() + line / 2, main.top(), list_width, main.height()},
            sample.colors);

  PaintGrid(painter, sub, sample.colors.sub_chart_lines, 2);
  const QRectF name_row(sub.left() + line / 4, sub.top(), sub.width(), line);
  if (sample.sub_lines.empty()) {
    PaintVolume(painter, sub, sample.volume);
    painter.setPen(ScreenColor(sample.colors.sub_chart_text));
    painter.drawText(name_row, Qt::AlignLeft | Qt::AlignVCenter, QStringLiteral("出来高"));
    return;
  }
  PaintLines(painter, {sub}, sample.sub_lines);
  PaintNamesBelow(painter, {chart.right() + line / 2, sub.top(), list_width, sub.height()},
                  sample.sub_lines);
  painter.setPen(ScreenColor(sample.colors.sub_chart_text));
  painter.drawText(name_row, Qt::AlignLeft | Qt::AlignVCenter, QStringLiteral("サブチャート"));
}

}  // namespace orin::settings
