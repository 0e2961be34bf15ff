#pragma once

#include <QByteArray>
#include <QPagedPaintDevice>
#include <optional>

#include "chart/draw_list.h"
#include "chart/layout.h"
#include "chart/picture_format.h"

namespace orin::chart {

/// A picture as the bytes of a file. `scale` of its pixels are one of a page of 96 per inch.
/// nullopt where it is too large for the memory or the format.
std::optional<QByteArray> EncodePicture(const DrawList& picture, double scale,
                                        PictureFormat format);

/// The size for which a chart is laid out to fill a page, a printer's or a file's.
PictureSize PageSize(const QPagedPaintDevice& page);

/// Paints a picture that was laid out for the page: a pixel of it is a pixel of the device. False
/// where the device cannot begin.
bool PaintPage(QPagedPaintDevice& page, const DrawList& picture);

}  // namespace orin::chart
