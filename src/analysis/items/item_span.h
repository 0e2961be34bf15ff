#pragma once

#include <cstdint>
#include <optional>

#include "analysis/items/item_call.h"
#include "analysis/stock_context.h"
#include "base/date.h"
#include "base/ordinal.h"

namespace orin::analysis {

struct NeededBars {
  SeriesForm form = SeriesForm::kDaily;
  /// Up to the bar that is named, that one included; History::kAll: all of them; 0: none.
  int32_t count = 0;
};
/// For arguments within their limits; offset and keyword do not count.
NeededBars BarsNeeded(const BoundItem& item);

/// The bars an item call reads on a day, by their numbers; those below 1 do not exist.
struct ItemSpan {
  SeriesForm form = SeriesForm::kDaily;  // whose bars
  int64_t oldest = 1;
  int64_t examined = 1;     // the newest one read; for most items the one the offset names
  int64_t newest = 1;       // of the series on that day
  bool from_first = false;  // all bars up to the examined one

  [[nodiscard]] bool Exists() const { return oldest >= 1 && examined <= newest; }
  [[nodiscard]] int64_t Count() const { return examined - oldest + 1; }
};

/// nullopt for items that read no bars, and where the run has not set the item's keyword.
std::optional<ItemSpan> SpanOf(const ItemCall& call, const StockContext& context,
                               base::DayIndex day);

/// First and last day of a bar; the same for a daily one. The running week or month ends on the
/// day it is looked at.
struct BarDates {
  base::Date first;
  base::Date last;
};

/// A span of bars that exist.
struct DatedSpan {
  SeriesForm form = SeriesForm::kDaily;
  int64_t count = 1;
  BarDates oldest;
  BarDates examined;
  bool from_first = false;
};

/// Only for a span that exists, on a day of the calendar.
DatedSpan DatesOf(const ItemSpan& span, const StockContext& context, base::DayIndex day);

}  // namespace orin::analysis
