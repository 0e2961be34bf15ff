#pragma once

#include <QPainter>

#include "settings/menu_color_settings.h"

namespace orin::settings {

/// A small stock menu in the colours of the settings: a row for each kind of stock.
void PaintMenuSample(QPainter& painter, const QRectF& area, const MenuColorSettings& colors);

}  // namespace orin::settings
