#pragma once

#include <cstdint>
#include <functional>
#include <memory>
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

/// A scan that goes on a few stocks at a time, for whoever has other things to do in between.
class SignalScanner {
 public:
  /// Both must outlive the scanner. Fails where a companion file is damaged.
  static base::Result<std::unique_ptr<SignalScanner>> Make(const store::StockStore& store,
                                                           const analysis::Program& program,
                                                           const SignalScan& scan);
  SignalScanner(const SignalScanner&) = delete;
  SignalScanner& operator=(const SignalScanner&) = delete;
  ~SignalScanner();

  /// Goes on with the next `stocks` records of the master. Whether any are left.
  bool Advance(size_t stocks, const StockSignals& deliver);
  [[nodiscard]] int64_t Done() const;   // records of the master
  [[nodiscard]] int64_t Total() const;  // likewise

 private:
  struct State;
  explicit SignalScanner(std::unique_ptr<State> state);

  std::unique_ptr<State> state_;
};

/// Evaluates a condition on each day of each stock of the market, stocks in record order. What it
/// holds is one stock's days and no more. No day is evaluated with the prices of a trade, and a
/// bare operand is true on none. Stops with a failure, and what was delivered stays delivered,
/// when `progress` says so.
base::Status ScanSignals(const store::StockStore& store, const analysis::Program& program,
                         const SignalScan& scan, base::Progress& progress,
                         const StockSignals& deliver);

}  // namespace orin::screening
