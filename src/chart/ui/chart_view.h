#pragma once

#include <QPointF>
#include <QWidget>
#include <optional>
#include <vector>

#include "chart/chart.h"
#include "chart/layout.h"
#include "chart/readout.h"

namespace orin::chart {

/// Shows a chart in all of its area, laid out for the pixels of the screen it is on, and a cross
/// hair under the pointer.
class ChartView final : public QWidget {
  Q_OBJECT

 public:
  explicit ChartView(QWidget* owner);

  /// The source of the chart must live until another one is shown. `cross_color` is that of the
  /// cross hair.
  void Show(Chart chart, base::Color cross_color);
  /// Shows nothing.
  void Clear();

  [[nodiscard]] const std::optional<Chart>& Shown() const { return chart_; }
  /// What is told of a point of the widget; empty where there is nothing.
  [[nodiscard]] std::vector<ReadoutEntry> ReadoutOf(QPointF position) const;

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 Q_SIGNALS:
  /// The pointer has moved to this place, or has left.
  void PointerMoved(QPointF position);
  void PointerLeft();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;

 private:
  void LayOutFor(const PictureSize& size);

  std::optional<Chart> chart_;
  base::Color cross_color_;
  PictureSize size_;
  std::optional<ChartLayout> layout_;  // for size_
  std::optional<QPointF> pointer_;
};

}  // namespace orin::chart
