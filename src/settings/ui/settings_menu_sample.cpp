#include "settings/ui/settings_menu_sample.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "settings/ui/settings_color_editor.h"

namespace orin::settings {

namespace {

struct SampleRow {
  const char* code;
  const char* kind;
  base::Color MenuColorSettings::*color;
};

using Menu = MenuColorSettings;
constexpr std::array kSampleRows = {
    SampleRow{"MIHON", "ＮＹ市場　普通株", &Menu::nyse_common},
    SampleRow{"MIHON-A", "ＮＹ市場　その他", &Menu::nyse_other},
    SampleRow{"MIHQ", "ＮＡ市場　普通株", &Menu::nasdaq_common},
    SampleRow{"MIHQS", "ＮＡ市場　小型株", &Menu::nasdaq_small},
    SampleRow{"MIHQX", "ＮＡ市場　その他", &Menu::nasdaq_other},
    SampleRow{"MIHA", "他市場　普通株", &Menu::elsewhere_common},
    SampleRow{"MIHA-P", "他市場　その他", &Menu::elsewhere_other},
    SampleRow{"^MIHON", "市場の色の付かない行", &Menu::text},
};
constexpr double kCodeShare = 0.3;  // of the width

void PaintCells(QPainter& painter, const QRectF& row, const QString& code, const QString& kind) {
  const double blank = painter.fontMetrics().averageCharWidth();
  const double split = row.left() + std::round(row.width() * kCodeShare);
  painter.drawText(QRectF(row.topLeft(), QPointF(split, row.bottom())).adjusted(blank, 0, 0, 0),
                   Qt::AlignLeft | Qt::AlignVCenter, code);
  painter.drawText(QRectF(QPointF(split, row.top()), row.bottomRight()).adjusted(blank, 0, 0, 0),
                   Qt::AlignLeft | Qt::AlignVCenter, kind);
}

}  // namespace

void PaintMenuSample(QPainter& painter, const QRectF& area, const MenuColorSettings& colors) {
  painter.fillRect(area, ScreenColor(colors.ground));
  const double height = area.height() / (kSampleRows.size() + 1);
  QRectF row(area.left(), area.top(), area.width(), height);
  painter.fillRect(row, ScreenColor(colors.heading_ground));
  painter.setPen(ScreenColor(colors.heading_text));
  PaintCells(painter, row, QStringLiteral("コード"), QStringLiteral("銘柄（見本）"));
  for (const SampleRow& sample : kSampleRows) {
    row.translate(0, height);
    painter.setPen(ScreenColor(colors.*sample.color));
    PaintCells(painter, row, QString::fromUtf8(sample.code), QString::fromUtf8(sample.kind));
    painter.setPen(QPen(ScreenColor(colors.lines), 1));
    const double y = std::round(row.top()) + 0.5;
    painter.drawLine(QPointF(area.left(), y), QPointF(area.right(), y));
  }
  const double x = std::round(area.left() + area.width() * kCodeShare) + 0.5;
  painter.drawLine(QPointF(x, area.top()), QPointF(x, area.bottom()));
}

}  // namespace orin::settings
