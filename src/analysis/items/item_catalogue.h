#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/stock_context.h"
#include "base/bars.h"
#include "base/ordinal.h"

namespace orin::indicators {
struct Indicator;
}

namespace orin::analysis {

/// Which series an item reads; the name's prefix tells.
enum class SeriesForm : uint8_t { kDaily, kWeekly, kMonthly, kSecond };
inline constexpr std::array kAllForms = {SeriesForm::kDaily, SeriesForm::kWeekly,
                                         SeriesForm::kMonthly, SeriesForm::kSecond};

inline constexpr size_t kMaximumItemArguments = 4;

struct ItemEntry;

/// An item with its arguments, as a family evaluates it.
struct BoundItem {
  const ItemEntry* entry = nullptr;
  const indicators::Indicator* indicator = nullptr;  // of items that rest on one
  SeriesForm form = SeriesForm::kDaily;
  std::array<int32_t, kMaximumItemArguments> arguments = {};  // without the offset
  int32_t offset = 0;

  bool operator==(const BoundItem&) const = default;
};

/// Items that are evaluated alike.
struct ItemFamily {
  /// Which argument list follows the parameters: the offset; none; or a 0 that may be left out
  /// with its parentheses.
  enum class Ending : uint8_t { kOffset, kNone, kOptionalZero };

  Ending ending;
  /// What must be loaded for the value that the whole history would give.
  History (*needs)(const BoundItem& item);
  /// Puts values into `out`, which has a place for each of the days from `first` on and no values
  /// yet. `last` is a day of the series; it may lie before `first`. The offset is 0 or less.
  void (*evaluate)(const BoundItem& item, StockContext& context, base::DayIndex first,
                   base::DayIndex last, base::ValueColumn& out);
  bool reads_second = false;  // in every form
};

/// How the names of the other forms follow from the daily name.
enum class NameRule : uint8_t {
  kByPeriod,    // 週間 and 月間 before it, and 日 inside it becomes 週 or 月
  kBare,        // 日 becomes 週 or 月, nothing before it
  kPrefixOnly,  // 日 stays
  kDailyOnly,   // there are no other forms
};

/// One row of the catalogue.
struct ItemEntry {
  std::string_view name;  // of the daily form
  const ItemFamily* family;
  /// The labels of the parameters before the offset, those that are not empty, daily form.
  std::array<std::string_view, kMaximumItemArguments> labels = {};
  std::string_view indicator = {};  // its name in the table of indicators
  int32_t number = 0;               // of the numeric-function items
  NameRule rule = NameRule::kByPeriod;

  [[nodiscard]] size_t ParameterCount() const;
  [[nodiscard]] bool HasForm(SeriesForm form) const;
};

/// All rows, in the order in which the condition editor lists them.
std::span<const ItemEntry> ItemCatalogue();

/// The name of a form the entry has, as "週間株価上昇週数".
std::string ItemName(const ItemEntry& entry, SeriesForm form);

/// The labels of all arguments, the offset's or 0's last.
std::vector<std::string> ArgumentLabels(const ItemEntry& entry, SeriesForm form);

struct FoundItem {
  const ItemEntry* entry = nullptr;  // nullptr: there is no such item
  SeriesForm form = SeriesForm::kDaily;
};

/// Exactly that name.
FoundItem FindItem(std::string_view name);

/// An item whose name differs only in the width or case of letters and digits, in blanks, or in
/// the way the form is written (週間株価上昇日数 for 週間株価上昇週数).
FoundItem FindSimilarItem(std::string_view name);

/// The sentence about a name that no item has; it suggests a similar one.
std::string UnknownItem(std::string_view name);

}  // namespace orin::analysis
