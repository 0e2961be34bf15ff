#include "painting/picture_encoding.h"

#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgGenerator>
#include <cmath>

#include "painting/picture_painter.h"

namespace orin::painting {

using chart::DrawList;
using chart::PictureFormat;

namespace {

constexpr double kPixelsPerInch = 96;
constexpr double kPointsPerInch = 72;

bool WritePng(const DrawList& picture, double scale, QIODevice& file) {
  QImage image(picture.width, picture.height, QImage::Format_RGB32);
  if (image.isNull()) return false;
  const int per_meter = static_cast<int>(std::lround(kPixelsPerInch * scale / 0.0254));
  QPainter painter(&image);
  if (!painter.isActive()) return false;
  PaintPicture(painter, picture);
  painter.end();
  image.setDotsPerMeterX(per_meter);
  image.setDotsPerMeterY(per_meter);
  return image.save(&file, "PNG");
}

bool WriteSvg(const DrawList& picture, double scale, QIODevice& file) {
  QSvgGenerator svg;
  svg.setOutputDevice(&file);
  svg.setResolution(static_cast<int>(std::lround(kPixelsPerInch * scale)));
  svg.setSize(QSize(picture.width, picture.height));
  svg.setViewBox(QRect(0, 0, picture.width, picture.height));
  QPainter painter;
  if (!painter.begin(&svg)) return false;
  PaintPicture(painter, picture);
  return painter.end();
}

bool WritePdf(const DrawList& picture, double scale, QIODevice& file) {
  QPdfWriter pdf(&file);
  pdf.setResolution(static_cast<int>(std::lround(kPixelsPerInch * scale)));
  const double points = kPointsPerInch / (kPixelsPerInch * scale);
  pdf.setPageSize(QPageSize(QSizeF(picture.width * points, picture.height * points),
                            QPageSize::Point, QString(), QPageSize::ExactMatch));
  pdf.setPageMargins(QMarginsF(0, 0, 0, 0));
  return PaintPage(pdf, picture);
}

}  // namespace

std::optional<QByteArray> EncodePicture(const DrawList& picture, double scale,
                                        PictureFormat format) {
  QByteArray bytes;
  QBuffer file(&bytes);
  if (!file.open(QIODevice::WriteOnly)) return std::nullopt;
  const bool is_written = format == PictureFormat::kPng   ? WritePng(picture, scale, file)
                          : format == PictureFormat::kSvg ? WriteSvg(picture, scale, file)
                                                          : WritePdf(picture, scale, file);
  file.close();
  if (!is_written) return std::nullopt;
  return bytes;
}

chart::PictureSize PageSize(const QPagedPaintDevice& page) {
  return {page.width(), page.height(), page.logicalDpiX() / kPixelsPerInch};
}

bool PaintPage(QPagedPaintDevice& page, const DrawList& picture) {
  QPainter painter;
  if (!painter.begin(&page)) return false;
  PaintPicture(painter, picture);
  return painter.end();
}

}  // namespace orin::painting
