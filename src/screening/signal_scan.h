#pragma once

#include <cstdint>
#include <functional>
#include <span>

#include "analysis/program.h"
#include "analysis/stock_context.h"
#include "base/ordinal.h"
#include "base/progress.h"
#include "base/result.h"
#include "screening/market_choice.h"
#include "store/stock_store.h"

namespace orin::screening {

/// What is looked at: the stocks of a market on the days first..last of the store's calendar.
struct SignalScan {
  MarketChoice market = MarketChoice::kAll;
  base::DayIndex first = {};
  base::DayIndex last = {};
  const store::StockRecord* second = nullptr;  // the second stock, null where there is none
  bool adjust_splits = true;
};

/// Receives the days of one stock: a place for each day from the first on, not 0 where the
/// condition is true. `stock` is a record of the store's master; the span holds during the call.
using StockSignals =
    std::function<void(const store::StockRecord& stock, std::span<const uint8_t> truths)>;

/// Evaluates a condition on each day of each stock of the market, stocks in record order. What it
/// holds is one stock's days and no more. No day is evaluated with the prices of a trade, and a
/// bare operand is true on none. Stops with a failure, and what was delivered stays delivered,
/// when `progress` says so.
base::Status ScanSignals(const store::StockStore& store, const analysis::Program& program,
                         const SignalScan& scan, base::Progress& progress,
                         const StockSignals& deliver);

}  // namespace orin::screening
