#pragma once

#include <QPainter>

#include "chart/draw_list.h"

namespace orin::painting {

/// Paints a picture: one of its pixels is one unit of the painter. On a screen of more than 100 %
/// the painter must count device pixels, or nothing is crisp.
void PaintPicture(QPainter& painter, const chart::DrawList& picture);
/// Items alone, over a picture painted before.
void PaintItems(QPainter& painter, const std::vector<chart::DrawItem>& items);

}  // namespace orin::painting
