#pragma once

#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/bars.h"
#include "base/ordinal.h"
#include "base/result.h"
#include "base/value_column.h"
#include "store/intraday_files.h"
#include "store/stock_series.h"
#include "store/stock_store.h"
#include "store/trend_lines.h"

namespace orin::chart {

/// Stocks that are in no store, with daily bars of the same days.
struct MadeSeries {
  store::Calendar days;
  store::StockRecord stock;
  base::BarColumns bars;
  store::StockRecord second;  // of another slot
  base::BarColumns second_bars;
  std::vector<store::CreditBalance> balances;  // a place for each day
  store::TrendLines trend_lines;
};

/// The series that a chart draws, as they stood at the close of a day: whatever is computed from
/// them does not know later ones.
class ChartSource {
 public:
  /// `stock` and `second` (null: none) are of the store, which must outlive the object; `last` is
  /// one of its days. `adjust` applies the splits.
  ChartSource(const store::StockStore& store, const store::StockRecord& stock,
              const store::StockRecord* second, bool adjust, store::BarPeriod period,
              base::DayIndex last);
  /// All days of the series, which must outlive the object. Its second stock stands for every other
  /// one.
  ChartSource(const MadeSeries& series, store::BarPeriod period);

  [[nodiscard]] const store::StockRecord& Stock() const { return stock_; }
  [[nodiscard]] const store::StockRecord* Second() const { return second_; }
  [[nodiscard]] store::BarPeriod Period() const { return period_; }
  [[nodiscard]] base::DayIndex LastDay() const { return last_; }

  /// The bars of the chart. The views hold as long as the object.
  [[nodiscard]] base::BarsView Bars() { return Bars(stock_, period_); }
  /// Those of any stock and period; bar t is that of the same day, week or month in all stocks.
  [[nodiscard]] base::BarsView Bars(const store::StockRecord& stock, store::BarPeriod period);
  /// Those up to a day of the store, the last week or month ending there.
  [[nodiscard]] base::BarColumns BarsUntil(const store::StockRecord& stock, store::BarPeriod period,
                                           base::Date day) const;
  /// The stock of a code; null where the store has none.
  [[nodiscard]] const store::StockRecord* Find(std::string_view code) const;

  /// The value of an expression at the last day of every bar: place i is bar i + 1. A condition is
  /// 1 where it is true and else 0. On every day analysisdate1 is that day. Fails with a sentence
  /// where the text cannot be compiled or has an item that there is not.
  [[nodiscard]] base::Result<base::ValueColumn> Evaluate(const std::string& expression);

  /// Balances of the days; empty on other bars and where all of them are 0.
  [[nodiscard]] std::vector<store::CreditBalance> CreditBalances() const;
  [[nodiscard]] base::Result<store::TrendLines> TrendLines() const;
  [[nodiscard]] std::span<const store::SplitEvent> Splits() const;
  /// The newest day up to `last` with intraday bars of the stock.
  [[nodiscard]] base::Result<store::IntradayDay> Intraday(base::Date last) const;
  /// The first bar whose last day is that day or later; the last one + 1 for later days.
  [[nodiscard]] int32_t BarOf(base::Date date);

 private:
  [[nodiscard]] const store::Calendar& Days() const;
  [[nodiscard]] base::BarColumns LoadBars(const store::StockRecord& stock, store::BarPeriod period,
                                          base::DayIndex last) const;
  /// Place i is day i + 1.
  [[nodiscard]] base::Result<base::ValueColumn> EvaluateDays(const std::string& expression) const;

  // One of the two.
  const store::StockStore* store_ = nullptr;
  const MadeSeries* made_ = nullptr;
  const store::StockRecord& stock_;
  const store::StockRecord* second_;
  bool adjust_;
  store::BarPeriod period_;
  base::DayIndex last_;
  // Nodes of a map stay where they are, so that views of them hold.
  std::map<std::pair<int32_t, store::BarPeriod>, base::BarColumns> bars_;
};

}  // namespace orin::chart
