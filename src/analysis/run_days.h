#pragma once

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "base/ordinal.h"

namespace orin::analysis {

/// What a run fixes: the days that the keywords of a condition stand for.
enum class DayKeyword : uint8_t {
  kAnalysisDate,           // analysisdate1 to 7: the dates of the analysis files of a group
  kSimulationBuy,          // simulationbuy1 to 3: the latest purchases of a simulation
  kSimulationSale,         // simulationsale1 to 3: the latest sales
  kBuySellTime,            // buyselltime: the last purchase or sale of the simulated trade
  kCurrentDay,             // tcurrentday: the examined day itself, which no run sets
  kDailyAnalysisTime,      // dailyanalysistime1 to 9, of a run on intraday bars
  kDailyAnalysisInterval,  // dailyanalysisinterval1 to 9, likewise
};

/// A keyword with its number, 1 to 9; 1 for those without.
struct NumberedKeyword {
  DayKeyword keyword = DayKeyword::kCurrentDay;
  int32_t number = 1;

  auto operator<=>(const NumberedKeyword&) const = default;
};

/// The days of the store's calendar that the keywords of a run stand for; those that the run has
/// not set have none. Weekly and monthly keywords stand for the week and the month of that day.
class RunDays {
 public:
  /// Of a run with one analysis file, whose date is the examined day: analysisdate1 is that day,
  /// the other keywords are not set.
  static RunDays OfOneFile();

  /// The day on which `keyword` stands while `examined` is evaluated.
  [[nodiscard]] std::optional<base::DayIndex> Of(NumberedKeyword keyword,
                                                 base::DayIndex examined) const;
  [[nodiscard]] bool IsExaminedDay(NumberedKeyword keyword) const;

  void Set(NumberedKeyword keyword, base::DayIndex day);
  /// On each day that is evaluated, the keyword stands for that day.
  void SetExaminedDay(NumberedKeyword keyword);
  bool operator==(const RunDays&) const = default;

 private:
  struct Day {
    enum class Kind : uint8_t { kNotSet, kFixed, kExamined };
    Kind kind = Kind::kNotSet;
    base::DayIndex fixed;

    bool operator==(const Day&) const = default;
  };
  [[nodiscard]] const Day& At(NumberedKeyword keyword) const;
  [[nodiscard]] Day& At(NumberedKeyword keyword);

  static constexpr size_t kKeywords = 7;
  static constexpr size_t kNumbers = 9;
  std::array<std::array<Day, kNumbers>, kKeywords> days_;
};

}  // namespace orin::analysis
