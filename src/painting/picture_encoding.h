#pragma once

#include <QByteArray>
#include <QPagedPaintDevice>
#include <optional>

#include "chart/draw_list.h"
#include "chart/picture_format.h"

namespace orin::painting {

/// A picture as the bytes of a file. `scale` of its pixels are one of a page of 96 per inch.
/// nullopt where it is too large for the memory or the format.
std::optional<QByteArray> EncodePicture(const chart::DrawList& picture, double scale,
                                        chart::PictureFormat format);

/// The size for which a chart is laid out to fill a page, a printer's or a file's.
chart::PictureSize PageSize(const QPagedPaintDevice& page);

/// Paints a picture that was laid out for the page: a pixel of it is a pixel of the device. False
/// where the device cannot begin.
bool PaintPage(QPagedPaintDevice& page, const chart::DrawList& picture);

}  // namespace orin::painting
