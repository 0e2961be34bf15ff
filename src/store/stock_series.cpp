#include "store/stock_series.h"

#include <array>
#include <utility>

#include "store/period_bars.h"

namespace orin::store {

namespace {

struct PeriodWords {
  std::string_view name;
  std::string_view change;
};

constexpr std::array kPeriodWords = {PeriodWords{"日足", "前日比"}, PeriodWords{"週足", "前週比"},
                                     PeriodWords{"月足", "前月比"}};

const PeriodWords& WordsOf(BarPeriod period) {
  return kPeriodWords.at(static_cast<size_t>(period));
}

}  // namespace

std::string_view PeriodName(BarPeriod period) { return WordsOf(period).name; }

std::string_view ChangeName(BarPeriod period) { return WordsOf(period).change; }

base::BarColumns LoadPeriod(const StockStore& store, const StockRecord& stock, BarPeriod period,
                            bool is_adjusted, base::DayIndex last) {
  const Calendar& days = store.Days();
  base::BarColumns daily;
  if (days.Count() == 0) return daily;
  if (is_adjusted) {
    store.LoadAdjustedBars(stock, base::DayIndex(1), last, daily);
  } else {
    store.LoadBars(stock.slot, base::DayIndex(1), last, daily);
  }
  return ToPeriod(std::move(daily), days, period, last);
}

base::BarColumns ToPeriod(base::BarColumns daily, const Calendar& days, BarPeriod period,
                          base::DayIndex last) {
  if (period == BarPeriod::kDay) return daily;
  PeriodBars periods;
  periods.Build(base::BarsView(daily), period == BarPeriod::kWeek ? days.Weeks() : days.Months());
  const base::BarsView bars = periods.AsOf(last);
  base::BarColumns columns;
  for (int32_t t = bars.First(); t <= bars.Count(); ++t) {
    columns.Append(
        {bars.DateOf(t), bars.Open(t), bars.High(t), bars.Low(t), bars.Close(t), bars.Volume(t)});
  }
  return columns;
}

base::BarColumns LoadPeriod(const StockStore& store, const StockRecord& stock, BarPeriod period,
                            bool is_adjusted) {
  return LoadPeriod(store, stock, period, is_adjusted, store.Days().Last());
}

}  // namespace orin::store
