#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

#include "analysis/evaluation.h"
#include "base/progress.h"
#include "base/result.h"
#include "screening/market_choice.h"
#include "store/stock_store.h"

namespace orin::screening {

/// Receives the days of one stock: a place for each day from the first on, not 0 where the
/// condition is true. `stock` is a record of the store's master; the span holds during the call.
using StockSignals =
    std::function<void(const store::StockRecord& stock, std::span<const uint8_t> truths)>;

/// A scan that goes on a few stocks at a time, for whoever has other things to do in between.
class SignalScanner {
 public:
  /// The condition is the first expression of the evaluation; it is evaluated on each of the
  /// evaluation's days for each stock of the market.
  SignalScanner(analysis::Evaluation evaluation, MarketChoice market);

  /// Goes on with the next `stocks` records of the master. Whether any are left.
  bool Advance(size_t stocks, const StockSignals& deliver);
  [[nodiscard]] int64_t Done() const {
    return static_cast<int64_t>(next_);
  }                                     // records of the master
  [[nodiscard]] int64_t Total() const;  // likewise

 private:
  analysis::Evaluation evaluation_;
  MarketChoice market_;
  std::vector<uint8_t> truths_;
  size_t next_ = 0;
};

/// Scans all stocks of the market, in record order. It holds one stock's days and no more. No day
/// is evaluated with the prices of a trade, and a bare operand is true on no day. Stops with a
/// failure, and what was delivered stays delivered, when `progress` says so.
base::Status ScanSignals(analysis::Evaluation evaluation, MarketChoice market,
                         base::Progress& progress, const StockSignals& deliver);

}  // namespace orin::screening
