#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <vector>

#include "analysis/run_days.h"
#include "base/bars.h"
#include "base/ordinal.h"
#include "base/result.h"
#include "store/calendar.h"
#include "store/company_table.h"
#include "store/period_bars.h"
#include "store/price_format.h"
#include "store/ranking_files.h"
#include "store/stock_store.h"

namespace orin::analysis {

/// How many bars an evaluation reads, the examined one included; 0: none of that series.
struct History {
  static constexpr int32_t kAll = std::numeric_limits<int32_t>::max();

  int32_t daily = 1;
  int32_t weekly = 0;
  int32_t monthly = 0;
  int32_t second = 0;  // daily bars of the second stock
  /// The prices that are read, of whatever series.
  base::PriceFields fields = {};
  bool credit = false;     // the credit balances of the daily bars
  bool companies = false;  // the tables of company and financial data
  bool rankings = false;   // the ranking files

  /// What both need.
  [[nodiscard]] History Union(const History& other) const;
};

/// The prices of the trade that a simulation follows, as 買い値 and 売り値 read them; without a
/// price the item fails. Single precision, as a true relation stores them.
struct TradePrices {
  std::optional<float> buy;
  std::optional<float> sell;
  // The days of the trade, as 買い日付 and 売り日付 read them.
  std::optional<base::Date> buy_date;
  std::optional<base::Date> sell_date;

  bool operator==(const TradePrices&) const = default;
};

/// What the items of a run may read beside prices; empty where nothing needs it.
struct Companions {
  store::CompanyTable companies;
  store::RankingFiles rankings;

  /// Loads what is needed. Missing files are empty tables; fails with a sentence that names a
  /// damaged one.
  static base::Result<Companions> Load(const store::StockStore& store, const History& needs);
};

/// The loaded series of the stock under analysis and of the second stock, as items read them.
/// One object serves a whole run: Load reuses its memory from stock to stock.
class StockContext {
 public:
  /// For the examined days first..last of the store's calendar. `second` is the second stock,
  /// null where there is none. The store must outlive the object. `adjust` applies the splits.
  StockContext(const store::StockStore& store, const History& needs, base::DayIndex first,
               base::DayIndex last, const store::StockRecord* second, bool adjust);
  /// For series at hand, loaded whole: `daily` and `second`, which may be null and else has the
  /// same days, must outlive it.
  StockContext(const base::BarColumns& daily, const base::BarColumns* second);
  StockContext(const StockContext&) = delete;
  StockContext& operator=(const StockContext&) = delete;
  ~StockContext() = default;

  /// Replaces the series of the stock under analysis. Only with a store.
  void Load(const store::StockRecord& stock);

  /// The stock at a place of a list that is gone through in order; faster than Load, because the
  /// bars of its neighbours come in together. Stocks may be left out.
  void LoadNext(std::span<const store::StockRecord> stocks, size_t place);

  /// Up to the last examined day; callers look no further than the day they examine.
  [[nodiscard]] base::BarsView Daily() const { return daily_view_; }
  /// The running week ends at `day`, which is one of the loaded days. There are weekly bars where
  /// History::weekly is not 0; likewise monthly ones.
  [[nodiscard]] base::BarsView WeeklyAsOf(base::DayIndex day) { return weekly_.AsOf(day); }
  [[nodiscard]] base::BarsView MonthlyAsOf(base::DayIndex day) { return monthly_.AsOf(day); }
  /// Without a second stock there are no such bars.
  [[nodiscard]] bool HasSecond() const { return has_second_; }
  [[nodiscard]] base::BarsView Second() const { return second_view_; }

  /// Set by the simulation, and by the evaluation of a condition on one day. Load leaves them.
  [[nodiscard]] TradePrices& Trade() { return trade_; }
  [[nodiscard]] const TradePrices& Trade() const { return trade_; }

  /// What the keywords of a condition stand for; set by the run before the first evaluation.
  [[nodiscard]] RunDays& KeywordDays() { return keyword_days_; }
  [[nodiscard]] const RunDays& KeywordDays() const { return keyword_days_; }

  // For items that read more than prices.

  /// The days of the series at hand or of the store.
  [[nodiscard]] const store::Calendar& Days() const;
  /// Null for series at hand; the second one also without a second stock.
  [[nodiscard]] const store::StockRecord* Stock() const { return stock_; }
  [[nodiscard]] const store::StockRecord* SecondStock() const { return second_stock_; }
  /// Null until set; what is set must outlive the object.
  [[nodiscard]] const Companions* Beside() const { return companions_; }
  void SetBeside(const Companions* companions) { companions_ = companions; }
  /// The balances of the days from Daily().First() on, where History::credit was asked for.
  [[nodiscard]] std::span<const store::CreditBalance> Credit() const { return credit_; }

 private:
  void LoadSeries(const store::StockRecord& stock, base::DayIndex first,
                  base::BarColumns& bars) const;

  const store::StockStore* store_ = nullptr;
  bool adjust_ = false;
  History needs_;
  base::DayIndex first_loaded_;
  base::DayIndex last_;
  size_t ahead_begin_ = 0;  // of the places whose bars were read ahead
  size_t ahead_end_ = 0;
  std::optional<store::Calendar> own_calendar_;  // of series at hand
  base::BarColumns daily_;
  base::BarColumns second_;
  base::BarsView daily_view_;
  base::BarsView second_view_;
  bool has_second_ = false;
  TradePrices trade_;
  RunDays keyword_days_;
  const store::StockRecord* stock_ = nullptr;
  const store::StockRecord* second_stock_ = nullptr;
  const Companions* companions_ = nullptr;
  std::vector<store::CreditBalance> credit_;
  store::PeriodBars weekly_;
  store::PeriodBars monthly_;
};

}  // namespace orin::analysis
