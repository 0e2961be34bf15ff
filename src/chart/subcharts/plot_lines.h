#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

#include "chart/subcharts/sub_chart.h"

namespace orin::chart {

// What the families of sub-charts share.

/// The name of an item of the expression language on the bars of a chart: "ＲＳＩ(14,0)",
/// "週間ＲＳＩ(14,0)". Its plotted values are those of that expression.
std::string ItemCallName(store::BarPeriod period, std::string_view item,
                         std::initializer_list<int32_t> arguments);

/// The values of an indicator at all bars of the view, none where it does not accept the
/// parameters.
base::ValueColumn IndicatorColumn(const base::BarsView& bars, std::string_view indicator,
                                  std::initializer_list<int32_t> parameters);

/// A line of an indicator that is also an item, in the colour of the settings.
struct IndicatorLine {
  std::string_view indicator;
  std::string_view item;
  std::initializer_list<int32_t> parameters;
};
PlotLine LineOf(const PlotRequest& request, const IndicatorLine& indicator, std::string label,
                base::Color color, NumberForm number);

/// The note of a chart that the settings switch off.
inline constexpr const char* kSwitchedOff = "設定で表示しないことになっています。";

/// The prices beneath lines, with their scale.
void AddPrices(const PlotRequest& request, TimePlot& plot);

/// The values of an expression at the bars up to the last one in view.
base::Result<base::ValueColumn> ExpressionColumn(const PlotRequest& request,
                                                 const std::string& expression);

/// The closes of a series as a column: none on bars without data.
base::ValueColumn CloseColumn(const base::BarsView& bars);

/// As readouts have it: no decimals beyond those needed, "" for none. Percentages have at least
/// one, prices two.
std::string ShownValue(const std::optional<base::Currency>& value, NumberForm number);

/// The bars of the view that exist, from the first one of the series on.
base::BarsView BarsOfView(const PlotRequest& request);

}  // namespace orin::chart
