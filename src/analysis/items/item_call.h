#pragma once

#include <string>
#include <string_view>
#include <tl/expected.hpp>

#include "analysis/items/item_catalogue.h"
#include "analysis/stock_context.h"
#include "analysis/value.h"
#include "base/bars.h"
#include "base/ordinal.h"

namespace orin::analysis {

/// Why a text is no item call: one Japanese sentence for whoever edits the condition.
struct ItemFault {
  std::string message;
};

/// An item call such as "移動平均(25,-1)" bound to its catalogue entry; immutable.
class ItemCall {
 public:
  /// `text` is an operand without blanks at its ends. Arguments are integers, "-" allowed, with
  /// or without blanks around them. Periods below 1 and offsets above 0 can be bound, but such
  /// a call never has a value.
  static tl::expected<ItemCall, ItemFault> Bind(std::string_view text);

  /// What must be loaded for the call to give the value that the whole history would give.
  [[nodiscard]] History Needs() const;
  /// The values at the days first..last into `out`, which is reset to that many places. The value
  /// at a day depends on no later day; a place without a value stays invalid.
  void Evaluate(StockContext& context, base::DayIndex first, base::DayIndex last,
                base::ValueColumn& out) const;

  bool operator==(const ItemCall&) const = default;

 private:
  explicit ItemCall(const BoundItem& item) : item_(item) {}

  BoundItem item_;
};

/// The value of one item call on one day; fails for a text that is no item call.
Value ItemValue(std::string_view item_call, StockContext& context, base::DayIndex day);

}  // namespace orin::analysis
