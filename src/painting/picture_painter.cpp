#include "painting/picture_painter.h"

#include <QFont>
#include <QPen>
#include <QPolygonF>
#include <QVarLengthArray>
#include <algorithm>
#include <array>
#include <cmath>

namespace orin::painting {

using chart::Align;
using chart::Boxes;
using chart::Clip;
using chart::DrawItem;
using chart::DrawList;
using chart::Frames;
using chart::Ink;
using chart::Label;
using chart::Line;
using chart::Marks;
using chart::MarkShape;
using chart::Point;
using chart::Rect;
using chart::Surface;

namespace {

constexpr std::array kBrushes = {Qt::SolidPattern,     Qt::BDiagPattern, Qt::FDiagPattern,
                                 Qt::DiagCrossPattern, Qt::HorPattern,   Qt::VerPattern};
constexpr std::array kPens = {Qt::SolidLine, Qt::DashLine, Qt::DotLine, Qt::DashDotLine,
                              Qt::DashDotDotLine};
// Half the height of capital letters, which Japanese letters are centred on, too.
constexpr double kMiddle = 0.37;

QColor ColorOf(const Ink& ink) {
  return {ink.color.red, ink.color.green, ink.color.blue, ink.alpha};
}

QBrush BrushOf(const Ink& ink) {
  return {ColorOf(ink), kBrushes.at(static_cast<size_t>(ink.hatch))};
}

QPen PenOf(const Ink& ink, double width) {
  return {ColorOf(ink), width, kPens.at(static_cast<size_t>(ink.dash)), Qt::FlatCap, Qt::BevelJoin};
}

QRect RectOf(const Rect& rect) { return {rect.left, rect.top, rect.width, rect.height}; }

const QStringList& Families() {
  static const QStringList families = {
      QStringLiteral("Noto Sans CJK JP"), QStringLiteral("Noto Sans JP"),
      QStringLiteral("IPAexGothic"),      QStringLiteral("IPAPGothic"),
      QStringLiteral("VL PGothic"),       QStringLiteral("sans-serif")};
  return families;
}

/// One call an item.
class ItemPainter {
 public:
  explicit ItemPainter(QPainter& painter) : painter_(painter) {
    font_.setFamilies(Families());
    painter_.setRenderHint(QPainter::TextAntialiasing);
  }

  void operator()(const Boxes& boxes) {
    painter_.setRenderHint(QPainter::Antialiasing, false);
    painter_.setPen(Qt::NoPen);
    painter_.setBrush(BrushOf(boxes.ink));
    QVarLengthArray<QRect, 256> rects;
    rects.reserve(static_cast<qsizetype>(boxes.rects.size()));
    for (const Rect& rect : boxes.rects) {
      if (!rect.IsEmpty()) rects.append(RectOf(rect));
    }
    painter_.drawRects(rects.data(), static_cast<int>(rects.size()));
  }

  void operator()(const Frames& frames) {
    painter_.setRenderHint(QPainter::Antialiasing, false);
    const QBrush brush = BrushOf(frames.ink);
    const int32_t width = frames.width;
    for (const Rect& rect : frames.rects) {
      const int32_t inner = rect.height - 2 * width;
      painter_.fillRect(rect.left, rect.top, rect.width, std::min(width, rect.height), brush);
      if (rect.height > width) {
        painter_.fillRect(rect.left, rect.Bottom() - width, rect.width, width, brush);
      }
      if (inner < 1) continue;
      painter_.fillRect(rect.left, rect.top + width, width, inner, brush);
      if (rect.width > width) {
        painter_.fillRect(rect.Right() - width, rect.top + width, width, inner, brush);
      }
    }
  }

  void operator()(const Line& line) {
    painter_.setRenderHint(QPainter::Antialiasing);
    painter_.setPen(PenOf(line.ink, line.width));
    painter_.setBrush(Qt::NoBrush);
    painter_.drawPolyline(PolygonOf(line.points));
  }

  void operator()(const Surface& surface) {
    painter_.setRenderHint(QPainter::Antialiasing);
    painter_.setPen(Qt::NoPen);
    painter_.setBrush(BrushOf(surface.ink));
    painter_.drawPolygon(PolygonOf(surface.points));
  }

  void operator()(const Marks& marks) {
    painter_.setRenderHint(QPainter::Antialiasing);
    const bool is_dot = marks.shape == MarkShape::kDot;
    painter_.setPen(is_dot ? QPen(Qt::NoPen) : PenOf(marks.ink, marks.width));
    painter_.setBrush(is_dot ? BrushOf(marks.ink) : QBrush(Qt::NoBrush));
    const double r = marks.radius;
    for (const Point& at : marks.points) {
      if (marks.shape == MarkShape::kCross) {
        painter_.drawLine(QPointF(at.x - r, at.y - r), QPointF(at.x + r, at.y + r));
        painter_.drawLine(QPointF(at.x - r, at.y + r), QPointF(at.x + r, at.y - r));
      } else {
        painter_.drawEllipse(QPointF(at.x, at.y), r, r);
      }
    }
  }

  void operator()(const Label& label) {
    const int pixels = std::max(1, static_cast<int>(std::lround(label.size)));
    if (font_.pixelSize() != pixels) {
      font_.setPixelSize(pixels);
      painter_.setFont(font_);
    }
    painter_.setPen(ColorOf(label.ink));
    const QString text = QString::fromStdString(label.text);
    double x = label.at.x;
    if (label.align != Align::kLeft) {
      const double width = painter_.fontMetrics().horizontalAdvance(text);
      x -= label.align == Align::kCenter ? width / 2 : width;
    }
    painter_.drawText(QPointF(std::round(x), std::round(label.at.y + label.size * kMiddle)), text);
  }

  void operator()(const Clip& clip) { painter_.setClipRect(RectOf(clip.rect)); }

 private:
  static QPolygonF PolygonOf(const std::vector<Point>& points) {
    QPolygonF polygon;
    polygon.reserve(static_cast<qsizetype>(points.size()));
    for (const Point& point : points) polygon.append(QPointF(point.x, point.y));
    return polygon;
  }

  QPainter& painter_;
  QFont font_;
};

}  // namespace

void PaintItems(QPainter& painter, const std::vector<DrawItem>& items) {
  painter.save();
  ItemPainter item_painter(painter);
  for (const DrawItem& item : items) std::visit(item_painter, item);
  painter.restore();
}

void PaintPicture(QPainter& painter, const DrawList& picture) {
  painter.fillRect(QRect(0, 0, picture.width, picture.height), ColorOf(picture.ground));
  PaintItems(painter, picture.items);
}

}  // namespace orin::painting
