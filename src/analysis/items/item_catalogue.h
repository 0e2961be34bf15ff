#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/run_days.h"
#include "analysis/stock_context.h"
#include "base/bars.h"
#include "base/ordinal.h"
#include "base/value_column.h"

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

/// The least and the greatest value of a parameter.
struct ArgumentLimits {
  int32_t minimum = 1;
  int32_t maximum = std::numeric_limits<int32_t>::max();
};

/// An item with its arguments, as a family evaluates it.
struct BoundItem {
  const ItemEntry* entry = nullptr;
  const indicators::Indicator* indicator = nullptr;  // of items that rest on one
  SeriesForm form = SeriesForm::kDaily;
  std::array<int32_t, kMaximumItemArguments> arguments = {};  // without the offset
  int32_t offset = 0;
  /// The bar named by the offset counts from the bar of this keyword's day, on every day; none:
  /// from the bar of the examined day.
  std::optional<NumberedKeyword> keyword = {};

  [[nodiscard]] ArgumentLimits LimitsOf(size_t parameter) const;
  [[nodiscard]] bool IsWithinLimits(size_t parameter) const;
  [[nodiscard]] bool IsWithinLimits() const;  // every parameter
  /// How many bars after the one named the value is found; 0 for most items.
  [[nodiscard]] int32_t Lead() const;
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
  /// yet. `last` is a day of the series; it may lie before `first`. Offset and lead together are
  /// 0 or less, and there is no keyword.
  void (*evaluate)(const BoundItem& item, StockContext& context, base::DayIndex first,
                   base::DayIndex last, base::ValueColumn& out);
  bool reads_second = false;                         // in every form
  int32_t (*lead)(const BoundItem& item) = nullptr;  // see BoundItem; null: 0
};

/// How the names of the other forms follow from the daily name.
enum class NameRule : uint8_t {
  kByPeriod,        // 週間 and 月間 before it, and 日 inside it becomes 週 or 月
  kBare,            // 日 becomes 週 or 月, nothing before it
  kPrefixOnly,      // 日 stays
  kPeriodsOnly,     // there are 週間 and 月間 forms alone
  kWithinPeriods,   // likewise, with 週中 and 月中 before it
  kDailyAndWeekly,  // there are no other forms than these
  kDailyOnly,       // there are no other forms
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
  std::string_view abbreviation = {};  // shown behind the name, as ＰＥＲ
  std::array<ArgumentLimits, kMaximumItemArguments> limits = {};  // of items without an indicator
  /// The first label of the weekly form where it does not follow from the daily one.
  std::string_view weekly_label = {};

  [[nodiscard]] size_t ParameterCount() const;
  [[nodiscard]] bool HasForm(SeriesForm form) const;
};

/// Rows under a heading, which groups that follow each other may share.
struct ItemGroup {
  std::string_view title;
  std::span<const ItemEntry> rows;
};
std::span<const ItemGroup> ItemGroups();

/// The rows of all groups, in the order in which the condition editor lists them.
std::span<const ItemEntry> ItemCatalogue();

/// The name of a form the entry has, as "週間株価上昇週数".
std::string ItemName(const ItemEntry& entry, SeriesForm form);

/// The name as the condition editor shows it, as "株価収益率（ＰＥＲ）".
std::string ShownName(const ItemEntry& entry, SeriesForm form);

/// The labels of all arguments, the offset's or 0's last.
std::vector<std::string> ArgumentLabels(const ItemEntry& entry, SeriesForm form);

struct FoundItem {
  const ItemEntry* entry = nullptr;  // nullptr: there is no such item
  SeriesForm form = SeriesForm::kDaily;
};

/// Exactly that name.
FoundItem FindItem(std::string_view name);

/// An item whose name differs only in the width or case of letters and digits, in blanks, or in
/// the way the form is written (週間株価上昇日数 for 週間株価上昇週数); also one by its
/// abbreviation or by the name shown.
FoundItem FindSimilarItem(std::string_view name);

/// The forms of items whose shown name contains the word, without regard to width, case, blanks
/// and the kind of kana; in the order of the catalogue.
std::vector<FoundItem> FindItemsWith(std::string_view word);

/// The sentence about a name that no item has; it suggests a similar one.
std::string UnknownItem(std::string_view name);

}  // namespace orin::analysis
