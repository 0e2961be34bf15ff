#include "chart/ui/chart_view.h"

#include <QMouseEvent>
#include <QPainter>
#include <cmath>
#include <utility>

#include "painting/picture_painter.h"

namespace orin::chart {

ChartView::ChartView(QWidget* owner) : QWidget(owner) {
  setMouseTracking(true);
  // Every pixel is painted.
  setAttribute(Qt::WA_OpaquePaintEvent);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void ChartView::Show(Chart chart, base::Color cross_color) {
  setAccessibleName(QString::fromStdString(chart.stock + " " + chart.period));
  chart_ = std::move(chart);
  cross_color_ = cross_color;
  layout_.reset();
  update();
}

void ChartView::Clear() {
  chart_.reset();
  layout_.reset();
  update();
}

QSize ChartView::sizeHint() const { return {900, 640}; }

QSize ChartView::minimumSizeHint() const { return {160, 120}; }

void ChartView::LayOutFor(const PictureSize& size) {
  const bool is_current = layout_ && size.width == size_.width && size.height == size_.height &&
                          size.scale == size_.scale;
  if (is_current) return;
  size_ = size;
  layout_ = LayOut(*chart_, size);
}

std::vector<ReadoutEntry> ChartView::ReadoutOf(QPointF position) const {
  if (!chart_ || !layout_) return {};
  return ReadoutAt(*chart_, *layout_, position.x() * size_.scale, position.y() * size_.scale);
}

void ChartView::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  if (!chart_) {
    painter.fillRect(rect(), palette().window());
    return;
  }
  // How many pixels of the device are one of the widget, on whatever it is painted.
  const double scale = painter.deviceTransform().m11();
  LayOutFor({static_cast<int32_t>(std::lround(width() * scale)),
             static_cast<int32_t>(std::lround(height() * scale)), scale});
  painter.scale(1 / scale, 1 / scale);
  painting::PaintPicture(painter, layout_->picture);
  if (!pointer_) return;
  painting::PaintItems(painter, CrossHair(*chart_, *layout_, size_, cross_color_,
                                          pointer_->x() * scale, pointer_->y() * scale));
}

void ChartView::mouseMoveEvent(QMouseEvent* event) {
  pointer_ = event->position();
  update();
  Q_EMIT PointerMoved(*pointer_);
}

void ChartView::leaveEvent(QEvent* event) {
  pointer_.reset();
  update();
  Q_EMIT PointerLeft();
  QWidget::leaveEvent(event);
}

}  // namespace orin::chart
