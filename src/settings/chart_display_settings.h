#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "base/color.h"
#include "base/currency.h"
#include "base/profile_file.h"

namespace orin::settings {

/// A line of a chart over a number of bars.
struct PeriodLine {
  bool check = false;  // it is drawn
  int32_t period = 0;  // bars
  base::Color color;

  bool operator==(const PeriodLine&) const = default;
};

/// Lines above and below the first moving average.
struct DeviationBand {
  bool check = false;
  base::Currency rate;  // distance in percent
  base::Color color;

  bool operator==(const DeviationBand&) const = default;
};

/// The lines of the main chart of one bar period.
struct MainChartLines {
  std::array<PeriodLine, 3> averages;
  DeviationBand band;

  bool operator==(const MainChartLines&) const = default;
};

struct VolumeChart {
  std::array<PeriodLine, 2> averages;
  base::Color color;  // of the volume itself

  bool operator==(const VolumeChart&) const = default;
};

struct StochasticsChart {
  bool check = false;
  int32_t k_period = 0;
  int32_t d_period = 0;
  base::Color k_color;
  base::Color d_color;

  bool operator==(const StochasticsChart&) const = default;
};

struct KagiChart {
  bool check = false;
  int32_t rate = 0;  // of a turn, percent
  base::Color color;

  bool operator==(const KagiChart&) const = default;
};

struct IchimokuLine {
  int32_t period = 0;
  base::Color color;

  bool operator==(const IchimokuLine&) const = default;
};

struct IchimokuChart {
  bool check = false;
  IchimokuLine base_line;   // 基準線
  IchimokuLine conversion;  // 転換線
  IchimokuLine leading1;    // 先行スパン１
  IchimokuLine leading2;    // 先行スパン２
  IchimokuLine lagging;     // 遅行スパン

  bool operator==(const IchimokuChart&) const = default;
};

/// A pair of Bollinger lines.
struct BollingerBand {
  bool check = false;
  base::Color color;

  bool operator==(const BollingerBand&) const = default;
};

struct BollingerChart {
  bool check = false;
  int32_t period = 0;
  base::Color color;                   // of the average
  std::array<BollingerBand, 3> bands;  // one, two and three deviations away

  bool operator==(const BollingerChart&) const = default;
};

struct PointAndFigureChart {
  bool check = false;
  int32_t rate = 0;            // size of a box, percent of the close
  int32_t reversal_boxes = 0;  // boxes of a reversal

  bool operator==(const PointAndFigureChart&) const = default;
};

/// Changes of the stock against those of another.
struct CorrelationChart {
  bool check = false;
  base::Color color;       // of axes and line
  base::Color plot_color;  // of the points
  int32_t plot_count = 0;  // points
  int32_t data_type = 0;   // bars the changes are taken over: 1 days, 2 weeks, 3 months
  int32_t average = 0;     // bars of the average that smooths the prices
  std::string stock_code;  // the other stock

  bool operator==(const CorrelationChart&) const = default;
};

/// Acceleration factors of the parabolic stop, as 0.02.
struct ParabolicChart {
  base::Currency initial;
  base::Currency step;
  base::Currency maximum;

  bool operator==(const ParabolicChart&) const = default;
};

/// A line of a chart of the user's own.
struct ExpressionLine {
  bool check = false;
  std::string label;
  std::string expression;  // empty: nothing is drawn
  base::Color color;

  bool operator==(const ExpressionLine&) const = default;
};

/// How a chart of expressions chooses its vertical scale: 0 as it is, 1 fitted to what is drawn,
/// 2 from 0 to 100, 3 from -100 to 100.
using ScaleChoice = int32_t;

/// Lines 1 and 2 belong to the first original chart, 3 and 4 to the second, 5 to 7 to the third.
struct OriginalCharts {
  struct Chart {
    bool daychart_check = false;  // the daily chart has it
    std::string title;
    ScaleChoice scale = 0;

    bool operator==(const Chart&) const = default;
  };

  std::array<Chart, 3> charts;
  std::array<ExpressionLine, 7> lines;

  bool operator==(const OriginalCharts&) const = default;
};

/// The six composite charts of a bar period, of one line each.
struct CompositeCharts {
  struct Chart {
    std::string title;
    ExpressionLine line;
    ScaleChoice scale = 0;

    bool operator==(const Chart&) const = default;
  };

  bool check = false;  // charts of this bar period have them
  std::array<Chart, 6> charts;

  bool operator==(const CompositeCharts&) const = default;
};

/// Section ChartDisplay: what charts draw, and its parameters.
struct ChartDisplaySettings {
  MainChartLines day;
  MainChartLines week;
  MainChartLines month;
  VolumeChart volume;
  std::array<PeriodLine, 2> rci;
  std::array<PeriodLine, 2> deviation;  // of the close from its moving average
  std::array<PeriodLine, 2> rsi;
  std::array<PeriodLine, 2> volume_ratio;
  StochasticsChart stochastics;
  KagiChart kagi;
  IchimokuChart ichimoku;
  PeriodLine inverse_watch;
  BollingerChart bollinger;
  PointAndFigureChart point_and_figure;
  CorrelationChart correlation;
  ParabolicChart parabolic;
  OriginalCharts original;
  CompositeCharts day_composites;
  CompositeCharts week_composites;
  CompositeCharts month_composites;

  bool operator==(const ChartDisplaySettings&) const = default;
};

ChartDisplaySettings ReadChartDisplay(const base::ProfileFile& profile);
void WriteChartDisplay(base::ProfileFile& profile, const ChartDisplaySettings& settings);

}  // namespace orin::settings
