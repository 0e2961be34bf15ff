#include "analysis/stock_context.h"

#include <algorithm>
#include <utility>

namespace orin::analysis {

using base::BarColumns;
using base::BarsView;
using base::DayIndex;

namespace {

constexpr DayIndex kFirstDay(1);

/// The first of the `count` days up to `day`.
DayIndex FirstOfDays(DayIndex day, int32_t count) {
  return std::max(kFirstDay, DayIndex(day.Value() - count + 1));
}

/// The first day of the first of the `count` periods up to the one that holds `day`.
DayIndex FirstOfPeriods(const store::PeriodIndex& periods, DayIndex day, int32_t count) {
  return periods.FirstDay(std::max(1, periods.PeriodOf(day) - count + 1));
}

DayIndex FirstNeeded(const store::Calendar& calendar, const History& needs, DayIndex examined) {
  if (examined < kFirstDay || examined > calendar.Last()) return kFirstDay;
  // One first day for all three: weeks and months are made from the daily bars at hand.
  DayIndex first = FirstOfDays(examined, std::max(needs.daily, 1));
  if (needs.weekly > 0) {
    first = std::min(first, FirstOfPeriods(calendar.Weeks(), examined, needs.weekly));
  }
  if (needs.monthly > 0) {
    first = std::min(first, FirstOfPeriods(calendar.Months(), examined, needs.monthly));
  }
  return first;
}

}  // namespace

History History::Union(const History& other) const {
  return {std::max(daily, other.daily),
          std::max(weekly, other.weekly),
          std::max(monthly, other.monthly),
          std::max(second, other.second),
          fields | other.fields,
          credit || other.credit,
          companies || other.companies,
          rankings || other.rankings};
}

StockContext::StockContext(const store::StockStore& store, const History& needs, DayIndex first,
                           DayIndex last, const store::StockRecord* second, bool adjust)
    : store_(&store),
      adjust_(adjust),
      needs_(needs),
      last_(last),
      has_second_(second != nullptr),
      second_stock_(second) {
  // Weekly and monthly bars are made from all that a bar has.
  if (needs.weekly > 0 || needs.monthly > 0) needs_.fields = base::PriceFields::kAll;
  first_loaded_ = FirstNeeded(store.Days(), needs, first);
  if (second != nullptr && needs.second > 0) {
    const DayIndex first_second = FirstOfDays(first, needs.second);
    LoadSeries(*second, first_second, second_);
    second_view_ = BarsView(second_, first_second.Value());
  }
}

StockContext::StockContext(const BarColumns& daily, const BarColumns* second)
    : last_(static_cast<int32_t>(daily.Size())),
      own_calendar_(daily.dates),
      daily_view_(daily),
      has_second_(second != nullptr) {
  if (second != nullptr) second_view_ = BarsView(*second);
  weekly_.Build(daily_view_, own_calendar_->Weeks());
  monthly_.Build(daily_view_, own_calendar_->Months());
}

const store::Calendar& StockContext::Days() const {
  return own_calendar_ ? *own_calendar_ : store_->Days();
}

void StockContext::Load(const store::StockRecord& stock) {
  stock_ = &stock;
  LoadSeries(stock, first_loaded_, daily_);
  daily_view_ = BarsView(daily_, first_loaded_.Value());
  if (needs_.weekly > 0) weekly_.Build(daily_view_, store_->Days().Weeks());
  if (needs_.monthly > 0) monthly_.Build(daily_view_, store_->Days().Months());
  if (needs_.credit) store_->LoadCreditBalances(stock.slot, first_loaded_, last_, credit_);
}

void StockContext::LoadNext(std::span<const store::StockRecord> stocks, size_t place) {
  if (place < ahead_begin_ || place >= ahead_end_) {
    ahead_begin_ = place;
    ahead_end_ = std::min(place + store::StockStore::kReadAhead, stocks.size());
    store_->ReadAhead(stocks.subspan(place, ahead_end_ - place), first_loaded_, last_);
  }
  Load(stocks[place]);
}

base::Result<Companions> Companions::Load(const store::StockStore& store, const History& needs) {
  Companions loaded;
  if (needs.companies) {
    auto companies = store::CompanyTable::Load(store.Location());
    if (!companies) return base::Forward(companies);
    loaded.companies = std::move(*companies);
  }
  if (needs.rankings) {
    loaded.rankings = store::RankingFiles::Open(store.Location());
    const auto& problems = loaded.rankings.Problems();
    if (!problems.empty()) return base::Fail(problems.front());
  }
  return loaded;
}

void StockContext::LoadSeries(const store::StockRecord& stock, DayIndex first,
                              BarColumns& bars) const {
  if (adjust_) {
    store_->LoadAdjustedBars(stock, first, last_, bars, needs_.fields);
  } else {
    store_->LoadBars(stock.slot, first, last_, bars, needs_.fields);
  }
}

}  // namespace orin::analysis
