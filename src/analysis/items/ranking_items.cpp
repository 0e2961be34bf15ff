#include <algorithm>
#include <optional>

#include "analysis/items/item_families.h"

namespace orin::analysis {

using base::DayIndex;
using store::RankingFile;

namespace {

enum Argument : size_t { kRanking, kMarket, kOrder };  // in the order of the labels

History RankingNeeds(const BoundItem& item) {
  History needs;
  needs.rankings = item.IsWithinLimits();
  return needs;
}

/// The file of the day, or the newest one of the week as of the day.
const RankingFile* FileFor(const BoundItem& item, const StockContext& context, int32_t day) {
  const store::Calendar& days = context.Days();
  const store::RankingFiles& files = context.Beside()->rankings;
  if (item.form == SeriesForm::kDaily) {
    const int64_t examined = int64_t{day} + item.offset;
    if (examined < 1) return nullptr;
    return files.OfDate(days.DateOf(DayIndex(static_cast<int32_t>(examined))));
  }
  const store::PeriodIndex& weeks = days.Weeks();
  const int64_t examined = int64_t{weeks.PeriodOf(DayIndex(day))} + item.offset;
  if (examined < 1) return nullptr;
  const auto week = static_cast<int32_t>(examined);
  const DayIndex last(item.offset == 0 ? day : weeks.FirstDay(week + 1).Value() - 1);
  return files.NewestOf(days.DateOf(weeks.FirstDay(week)), days.DateOf(last));
}

void EvaluateRanking(const BoundItem& item, StockContext& context, DayIndex first, DayIndex last,
                     base::ValueColumn& out) {
  if (context.Beside() == nullptr || context.Stock() == nullptr || !item.IsWithinLimits()) return;
  const bool is_weekly = item.form == SeriesForm::kWeekly;
  const store::RankingQuery query = {
      item.arguments[kRanking],
      is_weekly ? store::RankingPeriod::kWeek : store::RankingPeriod::kDay,
      item.arguments[kMarket] == 1, item.arguments[kOrder] == 1};
  for (int32_t day = std::max(first.Value(), 1); day <= last.Value(); ++day) {
    const RankingFile* file = FileFor(item, context, day);
    const auto place = file == nullptr ? std::nullopt : file->PlaceOf(context.Stock()->code, query);
    if (place) {
      out.Set(static_cast<size_t>(day - first.Value()), base::Currency::FromInt(*place));
    }
  }
}

constexpr ItemFamily kRankingItem = {ItemFamily::Ending::kOffset, RankingNeeds, EvaluateRanking};

constexpr ItemEntry kRankingRows[] = {
    {.name = "ランキング順位",
     .family = &kRankingItem,
     .labels = {"ランキング項目番号（１～７）", "検索市場（０：全市場，１：市場別）",
                "ソート順（０：昇順，１：降順）"},
     .rule = NameRule::kDailyAndWeekly,
     .limits = {{{1, store::kRankings}, {0, 1}, {0, 1}}}},
};

}  // namespace

std::span<const ItemEntry> RankingItems() { return kRankingRows; }

}  // namespace orin::analysis
