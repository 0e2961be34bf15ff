#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "base/bars.h"
#include "base/color.h"
#include "base/currency.h"
#include "base/date.h"
#include "base/value_column.h"
#include "chart/scales.h"
#include "chart/ticks.h"
#include "indicators/volume_by_price.h"

namespace orin::chart {

// What a pane of a chart shows, in bars and prices: the models that sub-charts make. How it looks
// is decided where it is laid out.

/// A piece of a readout: "RSI14:" and "63.3".
struct ReadoutEntry {
  std::string label;
  std::string value;  // empty: there is none
  base::Color color;

  bool operator==(const ReadoutEntry&) const = default;
};

enum class LineForm : uint8_t {
  kLine,
  kDots,     // a dot at each bar
  kColumns,  // boxes from 0, or from the bottom of the pane, up to the value
};

/// A value a bar.
struct PlotLine {
  std::string label;  // in front of a value in a readout, as "RSI14:"
  std::string name;   // heading of its column of plotted values, as "ＲＳＩ(14)"
  base::Color color;
  /// Place i is the bar i + 1. It may be longer than the bars: lines that reach into the future.
  base::ValueColumn values;
  LineForm form = LineForm::kLine;
  NumberForm number = NumberForm::kPercent;
  /// It is drawn at this many times its value: a stock compared with another.
  double factor = 1;

  [[nodiscard]] std::optional<base::Currency> At(int32_t bar) const {
    const auto place = static_cast<size_t>(bar - 1);
    if (bar < 1 || place >= values.Size() || !values.Has(place)) return std::nullopt;
    return values.At(place);
  }
};

/// How a pane finds its vertical scale.
struct ScaleRule {
  enum class Kind : uint8_t {
    kFit,    // to what is in view
    kHeld,   // to the whole history: it stays as it is when the view moves
    kFixed,  // low to high
  };
  Kind kind = Kind::kFit;
  ValueRange fixed;
  bool with_zero = false;  // kFit and kHeld: 0 is in view
  bool is_flush = false;   // without free height: columns stand on the bottom
  double gap = 0.06;       // free height above and below what is drawn, as a part of it
  ScaleForm form = ScaleForm::kLinear;
  /// Lines across at these values in place of round ones.
  std::vector<double> levels;
};

enum class PriceStyle : uint8_t { kCandles, kBars, kCloseLine };

/// The prices of the bars, drawn beneath the lines.
struct PricePlot {
  PriceStyle style = PriceStyle::kCandles;
  bool has_shadows = true;  // high and low of candles
};

/// A surface between two lines: one colour where the first is above, another where it is below.
struct Cloud {
  size_t first = 0;  // numbers of lines
  size_t second = 0;
  base::Color above;
  base::Color below;
};

/// A straight line from the price on one bar to that on another; bars may lie outside the view.
struct BarSegment {
  int32_t first_bar = 0;
  base::Currency first_price;
  int32_t second_bar = 0;
  base::Currency second_price;
  base::Color color;
};

/// A bar that something happened at: a line down the pane with a text.
struct BarMark {
  int32_t bar = 0;
  std::string text;
};

/// A price that a line across the pane marks.
struct PriceMark {
  base::Currency price;
  base::Color color;
};

/// Bars across, values up.
struct TimePlot {
  std::optional<PricePlot> prices;
  std::vector<PlotLine> lines;
  /// Columns and lines in the lower part of the pane on a scale of their own, from 0.
  std::vector<PlotLine> underlay;
  std::optional<Cloud> cloud;
  /// Volume by price, drawn from the left edge; lowest first.
  std::vector<indicators::PriceBand> bands;
  base::Color band_color;
  std::vector<BarSegment> segments;
  std::vector<BarMark> bar_marks;
  std::optional<PriceMark> price_mark;
  ScaleRule scale;
  NumberForm number = NumberForm::kPercent;  // of the axis
};

/// A point of a plane with what is told of it.
struct PlanePoint {
  Point at;
  std::vector<ReadoutEntry> readout;
};

struct PlaneLine {
  base::Color color;
  uint8_t number = 0;  // of the series, for print
  bool is_thick = false;
  std::vector<Point> points;
};

struct PlaneMarks {
  base::Color color;
  uint8_t number = 0;
  MarkShape shape = MarkShape::kDot;
  std::vector<Point> points;
};

struct PlaneAxis {
  ValueExtent extent;
  NumberForm number = NumberForm::kPrice;
  double gap = 0.05;
};

/// What has no bars across: points, lines and marks on a plane of two scales.
struct PlanePlot {
  PlaneAxis across;
  PlaneAxis up;
  bool has_zero_lines = false;
  /// Across there are columns 0, 1, 2 ... instead of values; the newest are shown where not all
  /// have this many pixels. The scale up fits those shown. 0: values.
  double column_width = 0;
  /// Marks are as high as this many units up, and are drawn as columns where that is too little.
  double mark_height = 0;
  std::vector<Tick> column_ticks;  // texts under columns
  std::vector<PlaneLine> lines;
  std::vector<PlaneMarks> marks;
  std::vector<PlanePoint> points;
};

/// The bars of one day, which have nothing to do with those of the chart.
struct IntradayPlot {
  base::Date date;
  std::vector<int32_t> seconds;  // since midnight, of each bar
  base::BarColumns bars;
};

/// Plotted values as a table: of bars for TimePlot, of whatever the chart has for others.
struct PlotTable {
  std::vector<std::string> headings;
  std::vector<std::vector<std::string>> rows;
};

/// A pane: its heading and what is in it.
struct Plot {
  std::string title;                   // "【ＲＳＩチャート】"
  std::string subtitle;                // the user's own title of a chart of expressions
  std::vector<ReadoutEntry> captions;  // told whatever is pointed at
  std::vector<std::string> notes;      // why something is not drawn, a sentence each
  std::variant<TimePlot, PlanePlot, IntradayPlot> content;
  PlotTable table;  // of PlanePlot and IntradayPlot
};

}  // namespace orin::chart
