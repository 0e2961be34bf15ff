#include "chart/layout.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "chart/text_width.h"
#include "chart/view/views.h"

namespace orin::chart {

namespace {

constexpr double kTickSpacing = 2.4;  // of the letters' height
constexpr double kDateSpacing = 4.5;
constexpr int32_t kLeastPlot = 8;  // pixels; what is lower shows nothing

bool HasOwnAxis(const Plot& plot) { return !std::holds_alternative<TimePlot>(plot.content); }

/// One pass over the panes after another, as each needs what the one before has found.
class Layouter {
 public:
  Layouter(const Chart& chart, const PictureSize& size, ChartLayout& layout)
      : chart_(chart), size_(size), style_(size.scale), layout_(layout) {}

  void Run() {
    layout_.picture.width = size_.width;
    layout_.picture.height = size_.height;
    layout_.picture.ground = {.color = chart_.colors.Ground(), .role = InkRole::kGround};
    PlacePanes();
    for (size_t i = 0; i < chart_.panes.size(); ++i) FindScales(i);
    FindWidth();
    FindDates();
    for (size_t i = 0; i < chart_.panes.size(); ++i) DrawPane(i);
    DrawDates();
  }

 private:
  [[nodiscard]] ViewContext ContextOf(size_t pane) {
    return {chart_, style_, pane == 0, layout_.picture.items};
  }

  /// From top to bottom: the panes, each a heading and a plot, and the dates.
  void PlacePanes() {
    const int32_t dates = std::min(size_.height, style_.row + style_.gap / 2);
    const std::vector<int32_t> heights =
        PaneHeights(size_.height - dates, chart_.main_percent, chart_.panes.size());
    const size_t last_of_bars = LastPaneOfBars();
    int32_t top = 0;
    for (size_t i = 0; i < chart_.panes.size(); ++i) {
      PaneLayout place;
      place.pane = {0, top, size_.width, heights[i]};
      top += heights[i];
      if (i == last_of_bars) {
        layout_.dates = {style_.gap, top, 0, dates};
        top += dates;
      }
      const Plot& plot = chart_.panes[i];
      headings_.emplace_back(ContextOf(i), plot, size_.width - 2 * style_.gap);
      const int32_t own_axis = HasOwnAxis(plot) ? style_.row : 0;
      // At least half of a pane is for its plot.
      headings_.back().Limit((heights[i] - own_axis) / 2 / std::max(1, style_.row));
      const int32_t plot_top = place.pane.top + headings_.back().Height() + style_.gap / 2;
      place.plot = {style_.gap, plot_top, 0,
                    place.pane.Bottom() - plot_top - own_axis - style_.gap / 2};
      layout_.panes.push_back(place);
    }
  }

  /// The main chart always is one.
  [[nodiscard]] size_t LastPaneOfBars() const {
    size_t last = 0;
    for (size_t i = 0; i < chart_.panes.size(); ++i) {
      if (!HasOwnAxis(chart_.panes[i])) last = i;
    }
    return last;
  }

  void FindScales(size_t i) {
    const auto find = [&](const auto& content) { return FindScale(content, layout_.panes[i]); };
    ticks_.push_back(std::visit(find, chart_.panes[i].content));
  }

  // Each gives the scale up of its content and the ticks on it, none where nothing is drawn.

  [[nodiscard]] std::vector<Tick> FindScale(const TimePlot& plot, PaneLayout& place) const {
    const auto range = RangeOf(plot, chart_.bars, chart_.view);
    place.values = ScaleUp(range.value_or(ValueRange()), plot.scale.form, place);
    place.base = PercentBase();
    if (!range) return {};
    if (!plot.scale.levels.empty()) return LabelledTicks(plot.scale.levels, plot.number);
    return ValueTicks(place.values, TickSpacing(), plot.number, place.base);
  }

  [[nodiscard]] std::vector<Tick> FindScale(const PlanePlot& plot, PaneLayout& place) const {
    const bool is_columns = plot.column_width > 0;
    const ValueRange up = is_columns ? ColumnRange(plot, ShownColumns(plot, PlaneWidth(plot)))
                                     : plot.up.extent.Range(plot.up.gap);
    place.values = ScaleUp(up, ScaleForm::kLinear, place);
    if (plot.points.empty()) return {};
    return ValueTicks(place.values, TickSpacing(), plot.up.number);
  }

  [[nodiscard]] std::vector<Tick> FindScale(const IntradayPlot& plot, PaneLayout& place) const {
    ValueExtent extent;
    for (size_t bar = 0; bar < plot.bars.Size(); ++bar) {
      extent.Add(plot.bars.high[bar].ToDouble());
      extent.Add(plot.bars.low[bar].ToDouble());
    }
    place.values = ScaleUp(extent.Range(ScaleRule().gap), ScaleForm::kLinear, place);
    if (extent.IsEmpty()) return {};
    return ValueTicks(place.values, TickSpacing(), NumberForm::kPrice);
  }

  static ValueScale ScaleUp(const ValueRange& range, ScaleForm form, const PaneLayout& place) {
    return {range, form, place.plot.top, std::max(0, place.plot.height)};
  }
  [[nodiscard]] double TickSpacing() const { return style_.text * kTickSpacing; }

  /// The close that the distances of a percent scale are taken from.
  [[nodiscard]] double PercentBase() const {
    for (int32_t t = std::max(chart_.view.first, chart_.bars.First()); t <= chart_.bars.Count();
         ++t) {
      if (chart_.bars.HasData(t) && chart_.bars.Close(t) > base::Currency()) {
        return chart_.bars.Close(t).ToDouble();
      }
    }
    return 1;
  }

  /// Before the width is known exactly: what labels take at least.
  [[nodiscard]] int32_t PlaneWidth(const PlanePlot& plot) const {
    const double pixels = plot.column_width * style_.hair;
    const double columns = (size_.width - style_.text * 6) / std::max(1.0, pixels);
    return static_cast<int32_t>(std::max(1.0, columns * plot.column_width));
  }

  /// All plots leave the same room for their texts on the right.
  void FindWidth() {
    double widest = 0;
    for (const std::vector<Tick>& ticks : ticks_) {
      for (const Tick& tick : ticks) widest = std::max(widest, TextWidth(tick.text));
    }
    const auto labels = static_cast<int32_t>(std::ceil(widest * style_.text)) + 2 * style_.gap;
    const int32_t width = std::max(0, size_.width - style_.gap - labels);
    for (size_t i = 0; i < layout_.panes.size(); ++i) {
      PaneLayout& place = layout_.panes[i];
      place.plot.width = width;
      std::visit([&](const auto& content) { PlaceAcross(content, place); },
                 chart_.panes[i].content);
    }
    layout_.dates.width = width;
  }

  void PlaceAcross(const TimePlot& /*plot*/, PaneLayout& place) const {
    place.bars = BarScale(chart_.view, place.plot.left, place.plot.width);
  }
  void PlaceAcross(const IntradayPlot& plot, PaneLayout& place) const {
    const auto bars = static_cast<int32_t>(plot.seconds.size());
    place.bars = BarScale({1, bars, 0}, place.plot.left, place.plot.width);
  }
  void PlaceAcross(const PlanePlot& plot, PaneLayout& place) const {
    place.across = AcrossScale(plot, place.plot);
  }

  /// A scale up, laid on its side: its pixels are turned round.
  [[nodiscard]] ValueScale AcrossScale(const PlanePlot& plot, const Rect& place) const {
    ValueRange range = plot.across.extent.Range(plot.across.gap);
    if (plot.column_width > 0) {
      const BarRange columns = ShownColumns(plot, PlaneWidth(plot));
      const auto room = static_cast<int32_t>(place.width / (style_.text * 1.2));
      // Few columns stay as wide as letters.
      range.low = columns.first - 0.5;
      range.high = std::max(columns.last + 0.5, columns.first - 0.5 + room);
    }
    return ValueScale::Across(range, place.left, place.width);
  }

  void FindDates() {
    const BarScale scale(chart_.view, layout_.dates.left, layout_.dates.width);
    dates_ = DateTicks(chart_.bars, scale, chart_.bar_period, style_.text * kDateSpacing);
  }

  void DrawPane(size_t i) {
    const Plot& plot = chart_.panes[i];
    const PaneLayout& place = layout_.panes[i];
    const ViewContext context = ContextOf(i);
    std::vector<DrawItem>& items = layout_.picture.items;
    items.emplace_back(Clip{place.pane});
    if (i > 0) {
      items.emplace_back(
          Boxes{FaintInk(context.GridColor()), {{0, place.pane.top, size_.width, style_.hair}}});
    }
    headings_[i].Draw(style_.gap, place.pane.top + style_.gap / 4, items);
    if (place.plot.height < kLeastPlot || place.plot.width < kLeastPlot) return;
    DrawValueAxis(context, ticks_[i], place);
    if (!HasOwnAxis(plot)) DrawDateLines(context, dates_, place);
    std::visit([&](const auto& content) { DrawContent(context, content, place); }, plot.content);
    DrawNotes(context, plot, place.plot);
  }

  void DrawDates() {
    const Rect& place = layout_.dates;
    if (place.width < kLeastPlot || place.height < style_.row) return;
    std::vector<DrawItem>& items = layout_.picture.items;
    items.emplace_back(Clip{{0, place.top, size_.width, place.height}});
    items.emplace_back(
        Boxes{FaintInk(chart_.colors.Grid()), {{0, place.top, size_.width, style_.hair}}});
    const BarScale scale(chart_.view, place.left, place.width);
    double free_from = 0;
    for (const DateTick& tick : dates_) {
      const double half = TextWidth(tick.text) * style_.text / 2;
      const double x = std::clamp(scale.X(tick.bar), half, std::max(half, size_.width - half));
      if (x - half < free_from) continue;
      free_from = x + half + style_.gap / 2.0;
      items.emplace_back(Label{TextInk(chart_.colors.Text()),
                               {x, place.top + place.height / 2.0},
                               Align::kCenter,
                               style_.text,
                               tick.text});
    }
  }

  const Chart& chart_;
  const PictureSize& size_;
  ViewStyle style_;
  ChartLayout& layout_;
  std::vector<Heading> headings_;
  std::vector<std::vector<Tick>> ticks_;
  std::vector<DateTick> dates_;
};

void AddTag(const ViewStyle& style, const Chart& chart, const std::string& text, Point at,
            Align align, std::vector<DrawItem>& items) {
  const double width = TextWidth(text) * style.text + style.gap;
  const double left = align == Align::kLeft ? at.x : at.x - width / 2;
  items.emplace_back(
      Boxes{{.color = chart.colors.Text(), .role = InkRole::kText},
            {{static_cast<int32_t>(left), static_cast<int32_t>(at.y - style.row / 2.0),
              static_cast<int32_t>(width), style.row}}});
  items.emplace_back(Label{{.color = chart.colors.Ground(), .role = InkRole::kGround},
                           {left + style.gap / 2.0, at.y},
                           Align::kLeft,
                           style.text,
                           text});
}

/// The value under the pointer with the decimals that one pixel is worth.
std::string ValueText(const Plot& plot, const PaneLayout& place, double y) {
  const double step = std::abs(place.values.ValueAt(y) - place.values.ValueAt(y + 1));
  const double round = RoundStep(std::max(step, 1e-4));
  const double value = std::round(place.values.ValueAt(y) / round) * round;
  const auto* time = std::get_if<TimePlot>(&plot.content);
  const auto* plane = std::get_if<PlanePlot>(&plot.content);
  const NumberForm form = time != nullptr    ? time->number
                          : plane != nullptr ? plane->up.number
                                             : NumberForm::kPrice;
  const std::array<double, 1> values = {value};
  return LabelledTicks(values, form).front().text;
}

}  // namespace

std::vector<int32_t> PaneHeights(int32_t height, int32_t main_percent, size_t panes) {
  if (panes == 0) return {};
  std::vector<int32_t> heights(panes, 0);
  heights[0] = height;
  if (panes == 1) return heights;
  const auto others = static_cast<int32_t>(panes - 1);
  // None of the others is lower than a quarter of the first.
  const int32_t share = std::min(std::clamp(main_percent, 10, 90), 400 / (4 + others));
  const auto main = static_cast<int32_t>(int64_t{height} * share / 100);
  // What is over goes to the upper ones, a pixel each.
  for (int32_t i = 0; i < others; ++i) {
    const int32_t rest = height - main;
    heights[static_cast<size_t>(i) + 1] = rest / others + (i < rest % others ? 1 : 0);
  }
  heights[0] = main;
  return heights;
}

std::optional<size_t> ChartLayout::PaneAt(double x, double y) const {
  for (size_t i = 0; i < panes.size(); ++i) {
    if (panes[i].plot.Contains(x, y)) return i;
  }
  return std::nullopt;
}

std::optional<int32_t> ChartLayout::BarAt(double x) const {
  if (panes.empty()) return std::nullopt;
  return panes.front().bars.BarAt(x);
}

ChartLayout LayOut(const Chart& chart, const PictureSize& size) {
  ChartLayout layout;
  Layouter(chart, size, layout).Run();
  return layout;
}

std::vector<DrawItem> CrossHair(const Chart& chart, const ChartLayout& layout,
                                const PictureSize& size, base::Color color, double x, double y) {
  std::vector<DrawItem> items;
  const auto pane = layout.PaneAt(x, y);
  if (!pane) return items;
  const ViewStyle style(size.scale);
  const PaneLayout& place = layout.panes[*pane];
  const Rect& plot = place.plot;
  const Ink ink = TextInk(color);
  items.emplace_back(DottedAcross(ink, plot, static_cast<int32_t>(y), style));
  AddTag(style, chart, ValueText(chart.panes[*pane], place, y), {plot.Right() + style.gap / 2.0, y},
         Align::kLeft, items);
  const auto bar = layout.BarAt(x);
  const bool has_date = std::holds_alternative<TimePlot>(chart.panes[*pane].content) && bar &&
                        *bar >= chart.bars.First() && *bar <= chart.bars.Count();
  if (!has_date) {
    items.emplace_back(DottedDown(ink, plot, static_cast<int32_t>(x), style));
    return items;
  }
  const double middle = place.bars.X(*bar);
  for (size_t i = 0; i < layout.panes.size(); ++i) {
    if (!std::holds_alternative<TimePlot>(chart.panes[i].content)) continue;
    items.emplace_back(DottedDown(ink, layout.panes[i].plot, static_cast<int32_t>(middle), style));
  }
  AddTag(style, chart, ShortDate(chart.bars.DateOf(*bar)),
         {middle, layout.dates.top + layout.dates.height / 2.0}, Align::kCenter, items);
  return items;
}

}  // namespace orin::chart
