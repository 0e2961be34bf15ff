#include "screening/ui/day_counts_chart.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>
#include <algorithm>
#include <utility>

#include "widgets/look.h"
#include "widgets/qt_text.h"

namespace orin::screening {

using widgets::Text;

namespace {

constexpr double kGapShare = 0.25;  // of a bar's place

}  // namespace

DayCountsChart::DayCountsChart(QWidget* owner) : QWidget(owner) {
  setMouseTracking(true);
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  setAccessibleName(QStringLiteral("日ごとの選ばれた銘柄の数"));
  setToolTip(
      QStringLiteral("日ごとの選ばれた銘柄の数です。クリックするか、左右のキーで選んでEnterを押すと"
                     "、その日を分析日"
                     "付にします"));
}

void DayCountsChart::Show(DayCounts counts) {
  const int bars = static_cast<int>(counts.counts.size());
  // The newest day stays marked while counts come in.
  if (counts.dates != counts_.dates) marked_ = bars - 1;
  counts_ = std::move(counts);
  Mark(marked_);
}

void DayCountsChart::Clear() { Show({}); }

QSize DayCountsChart::sizeHint() const {
  return {fontMetrics().averageCharWidth() * 60, fontMetrics().height() * 6};
}

QSize DayCountsChart::minimumSizeHint() const {
  return {fontMetrics().averageCharWidth() * 30, fontMetrics().height() * 5};
}

QRectF DayCountsChart::PlotArea() const {
  const double line = fontMetrics().height();
  const double edge = line / 4;
  return QRectF(rect()).adjusted(edge, line * 1.25, -edge, -line * 1.25);
}

int DayCountsChart::BarAt(double x) const {
  const QRectF plot = PlotArea();
  const auto bars = static_cast<int>(counts_.counts.size());
  if (bars == 0 || x < plot.left() || x >= plot.right()) return -1;
  return std::clamp(static_cast<int>((x - plot.left()) * bars / plot.width()), 0, bars - 1);
}

void DayCountsChart::Mark(int bar) {
  marked_ = bar;
  const auto place = static_cast<size_t>(bar);
  setAccessibleDescription(bar < 0 ? QString()
                                   : QStringLiteral("%1 %2銘柄")
                                         .arg(Text(counts_.dates[place].ToText()))
                                         .arg(counts_.counts[place]));
  update();
}

void DayCountsChart::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.fillRect(rect(), palette().base());
  const auto bars = static_cast<int>(counts_.counts.size());
  const QRectF plot = PlotArea();
  painter.setPen(palette().color(QPalette::Mid));
  painter.drawLine(plot.bottomLeft(), plot.bottomRight());
  if (bars == 0) return;
  const int most = std::max(1, *std::ranges::max_element(counts_.counts));
  const double place = plot.width() / bars;
  const bool is_dark = widgets::IsDark(palette());
  for (int i = 0; i < bars; ++i) {
    const double height = plot.height() * counts_.counts[static_cast<size_t>(i)] / most;
    const QRectF bar(plot.left() + place * (i + kGapShare / 2), plot.bottom() - height,
                     place * (1 - kGapShare), height);
    const QColor color = palette().color(QPalette::Highlight);
    painter.fillRect(bar, i == marked_ ? color : color.lighter(is_dark ? 70 : 150));
  }
  painter.setPen(palette().color(QPalette::Text));
  const QRectF top(plot.left(), 0, plot.width(), plot.top());
  const QRectF bottom(plot.left(), plot.bottom(), plot.width(), height() - plot.bottom());
  if (marked_ >= 0) {
    const auto at = static_cast<size_t>(marked_);
    painter.drawText(
        top, Qt::AlignLeft | Qt::AlignVCenter,
        QStringLiteral("%1　%2銘柄").arg(Text(counts_.dates[at].ToText())).arg(counts_.counts[at]));
  }
  painter.drawText(top, Qt::AlignRight | Qt::AlignVCenter, QStringLiteral("最大 %1").arg(most));
  painter.drawText(bottom, Qt::AlignLeft | Qt::AlignVCenter, Text(counts_.dates.front().ToText()));
  painter.drawText(bottom, Qt::AlignRight | Qt::AlignVCenter, Text(counts_.dates.back().ToText()));
  if (hasFocus()) {
    painter.setPen(QPen(palette().color(QPalette::Highlight), 1, Qt::DotLine));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
  }
}

void DayCountsChart::mouseMoveEvent(QMouseEvent* event) {
  const int bar = BarAt(event->position().x());
  if (bar >= 0 && bar != marked_) Mark(bar);
}

void DayCountsChart::mousePressEvent(QMouseEvent* event) {
  const int bar = BarAt(event->position().x());
  if (bar < 0 || event->button() != Qt::LeftButton) return;
  Mark(bar);
  Q_EMIT DateChosen(counts_.dates[static_cast<size_t>(bar)]);
}

void DayCountsChart::leaveEvent(QEvent* event) {
  Mark(static_cast<int>(counts_.counts.size()) - 1);
  QWidget::leaveEvent(event);
}

void DayCountsChart::keyPressEvent(QKeyEvent* event) {
  const auto last = static_cast<int>(counts_.counts.size()) - 1;
  switch (event->key()) {
    case Qt::Key_Left:
      if (last >= 0) Mark(std::max(0, marked_ - 1));
      return;
    case Qt::Key_Right:
      if (last >= 0) Mark(std::min(last, marked_ + 1));
      return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (marked_ >= 0) Q_EMIT DateChosen(counts_.dates[static_cast<size_t>(marked_)]);
      return;
    default:
      QWidget::keyPressEvent(event);
  }
}

}  // namespace orin::screening
