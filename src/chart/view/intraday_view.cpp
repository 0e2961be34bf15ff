#include <algorithm>

#include "chart/text_width.h"
#include "chart/view/views.h"

namespace orin::chart {

namespace {

constexpr double kVolumeShare = 0.25;  // of the height

/// Times that are whole hours, or half ones.
void DrawTimes(const ViewContext& context, const IntradayPlot& plot, const PaneLayout& place) {
  constexpr int32_t kHalfHour = 1800;
  const ViewStyle& style = context.style;
  Boxes lines{FaintInk(context.GridColor()), {}};
  double free_from = place.plot.left;
  for (size_t i = 0; i < plot.seconds.size(); ++i) {
    if (plot.seconds[i] % kHalfHour != 0) continue;
    const std::string text = TimeText(plot.seconds[i]);
    const double x = place.bars.X(static_cast<int32_t>(i) + 1);
    const double half = TextWidth(text) * style.text / 2;
    if (x - half < free_from || x + half > place.plot.Right()) continue;
    free_from = x + half + style.gap;
    lines.rects.push_back({static_cast<int32_t>(x), place.plot.top, style.hair, place.plot.height});
    context.items.emplace_back(Label{TextInk(context.TextColor()),
                                     {x, place.plot.Bottom() + style.row / 2.0},
                                     Align::kCenter,
                                     style.text,
                                     text});
  }
  if (!lines.rects.empty()) context.items.emplace_back(std::move(lines));
}

void DrawVolumes(const ViewContext& context, const IntradayPlot& plot, const PaneLayout& place) {
  PlotLine volume;
  volume.color = context.chart.colors.Fall();
  volume.form = LineForm::kColumns;
  volume.values.Reset(plot.bars.Size());
  ValueExtent extent;
  extent.Add(0);
  for (size_t i = 0; i < plot.bars.Size(); ++i) {
    volume.values.Set(i, plot.bars.volume[i]);
    extent.Add(plot.bars.volume[i].ToDouble());
  }
  PaneLayout lower = place;
  lower.plot.height = static_cast<int32_t>(place.plot.height * kVolumeShare);
  lower.plot.top = place.plot.Bottom() - lower.plot.height;
  lower.values = ValueScale(extent.Range(0), ScaleForm::kLinear, lower.plot.top, lower.plot.height);
  const size_t begin = context.items.size();
  DrawLines(context, std::span(&volume, 1), lower, 0);
  for (size_t i = begin; i < context.items.size(); ++i) {
    if (auto* boxes = std::get_if<Boxes>(&context.items[i])) boxes->ink.alpha = 110;
  }
}

}  // namespace

void DrawContent(const ViewContext& context, const IntradayPlot& plot, const PaneLayout& place) {
  if (plot.seconds.empty()) return;
  DrawTimes(context, plot, place);
  context.items.emplace_back(Clip{place.plot});
  DrawVolumes(context, plot, place);
  DrawPrices(context, base::BarsView(plot.bars), {}, place);
}

}  // namespace orin::chart
