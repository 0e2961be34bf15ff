#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "chart/chart.h"
#include "chart/layout.h"
#include "settings/settings.h"
#include "store/stock_store.h"
#include "support/store_builder.h"

namespace orin::chart {

/// The settings as they are without any file.
settings::Settings DefaultSettings();

/// ^DJI (record 2), AAPL (3) and BA (4) of the demo market; the newest `days` of them. AAPL has
/// made-up bars within the last one.
store::StockStore RealMarket(std::string_view directory_name, size_t days = 1013);

/// Stocks of the bars given: record 2 ^DJI, 3 the second stock, 4 the stock.
store::StockStore MadeMarket(std::string_view directory_name, std::vector<base::Bar> stock,
                             std::vector<base::Bar> second = {});

/// Every sub-chart that is drawn on bars of this kind.
std::vector<const SubChart*> SubChartsOf(store::BarPeriod period);

/// What a picture consists of, a line an item.
std::string Described(const DrawList& picture);

/// A problem of a picture: a coordinate that no painter can take, or too many items; empty: none.
std::string ProblemOf(const DrawList& picture);

}  // namespace orin::chart
