#pragma once

#include <QWidget>

#include "screening/ui/market_count.h"

namespace orin::screening {

/// Counts of days as a small bar chart with the dates of its ends and the number of the day
/// pointed at; a click or the return key on a bar chooses its day.
class DayCountsChart final : public QWidget {
  Q_OBJECT

 public:
  explicit DayCountsChart(QWidget* owner = nullptr);

  void Show(DayCounts counts);
  void Clear();
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 Q_SIGNALS:
  void DateChosen(base::Date date);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  [[nodiscard]] QRectF PlotArea() const;
  [[nodiscard]] int BarAt(double x) const;  // -1: none
  void Mark(int bar);

  DayCounts counts_;
  int marked_ = -1;
};

}  // namespace orin::screening
