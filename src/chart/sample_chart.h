#pragma once

#include <string_view>

#include "chart/chart.h"
#include "chart/draw_list.h"
#include "store/stock_series.h"

namespace orin::chart {

/// What a sample chart shows.
struct SampleChoice {
  store::BarPeriod period = store::BarPeriod::kDay;
  std::string_view sub_chart = "volume";  // its key
};

/// A chart of a stock that there is not, its bars built in, drawn like any other with the settings:
/// with a trend line, credit balances, a cross hair and, where there is room, the data list.
DrawList DrawSample(const settings::Settings& settings, const SampleChoice& choice,
                    const PictureSize& size);

}  // namespace orin::chart
