#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
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
  size_t before = 0;  // characters of the text before the place it is about
};

/// An item call such as "移動平均(25,-1)" bound to its catalogue entry; immutable.
class ItemCall {
 public:
  /// `text` is an operand without blanks at its ends. Arguments are integers, "-" allowed, with
  /// or without blanks around them; in the place of the offset a keyword may stand, "+" or "-"
  /// and an integer behind it. A keyword alone is a number. Parameters beyond their limits and
  /// offsets above 0 can be bound, but such a call never has a value. 買い値 and the like may
  /// stand without "(0)". `explain` false leaves the fault empty: the search for similar names
  /// takes longer than all else.
  static tl::expected<ItemCall, ItemFault> Bind(std::string_view text, bool explain = true);

  /// The sentence about a call that has no value on any day, whatever the series; else nullopt.
  [[nodiscard]] std::optional<std::string> WhyNever() const;
  /// 1 to 11 for Ａｂｓ() to Ｔａｎ(), which are numbers and no more; nullopt for other items.
  [[nodiscard]] std::optional<int32_t> FunctionNumber() const;
  /// Without a second stock the call has no value.
  [[nodiscard]] bool ReadsSecondStock() const;
  [[nodiscard]] bool IsBuyPrice() const;
  [[nodiscard]] bool IsSellPrice() const;

  /// What must be loaded for the call to give the value that the whole history would give.
  [[nodiscard]] History Needs() const;
  /// The values at the days first..last into `out`, which is reset to that many places. The value
  /// at a day depends on no later day; a place without a value stays invalid.
  void Evaluate(StockContext& context, base::DayIndex first, base::DayIndex last,
                base::ValueColumn& out) const;

  [[nodiscard]] int32_t Offset() const { return item_.offset; }
  [[nodiscard]] const BoundItem& Bound() const { return item_; }
  /// Whether the calls differ in their day offset alone and count days, so that the value of one
  /// is that of the other as many days away.
  [[nodiscard]] bool IsShiftOf(const ItemCall& other) const;
  /// An order in which the calls that are shifts of each other follow one another, newest first.
  static bool IsListedBefore(const ItemCall& a, const ItemCall& b);

  bool operator==(const ItemCall&) const = default;

 private:
  /// Whether the value would come from after the examined day, whichever that is.
  [[nodiscard]] bool IsAlwaysLater() const;

  explicit ItemCall(const BoundItem& item) : item_(item) {}

  BoundItem item_;
};

/// The value of one item call on one day; fails for a text that is no item call.
Value ItemValue(std::string_view item_call, StockContext& context, base::DayIndex day);

}  // namespace orin::analysis
