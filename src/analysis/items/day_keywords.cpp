#include "analysis/items/day_keywords.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

#include "analysis/condition_text.h"
#include "analysis/operator_codes.h"

namespace orin::analysis {

using base::Currency;
using base::DayIndex;

const store::PeriodIndex* PeriodsOf(SeriesForm form, const store::Calendar& days) {
  if (form == SeriesForm::kWeekly) return &days.Weeks();
  if (form == SeriesForm::kMonthly) return &days.Months();
  return nullptr;
}

namespace {

/// Keywords of one stem, numbered first..last; 0 where no number follows the stem.
struct Stem {
  std::string_view text;
  DayKeyword keyword;
  SeriesForm form;
  int32_t first;
  int32_t last;
};

using enum DayKeyword;
using enum SeriesForm;

constexpr Stem kStems[] = {
    {"analysisdate", kAnalysisDate, kDaily, 1, 7},
    {"wanalysisdate", kAnalysisDate, kWeekly, 1, 7},
    {"manalysisdate", kAnalysisDate, kMonthly, 1, 7},
    {"simulationbuy", kSimulationBuy, kDaily, 1, 3},
    {"wsimulationbuy", kSimulationBuy, kWeekly, 1, 2},
    {"wimulationbuy", kSimulationBuy, kWeekly, 3, 3},
    {"msimulationbuy", kSimulationBuy, kMonthly, 1, 3},
    {"simulationsale", kSimulationSale, kDaily, 1, 3},
    {"wsimulationsale", kSimulationSale, kWeekly, 1, 3},
    {"msimulationsale", kSimulationSale, kMonthly, 1, 3},
    {"buyselltime", kBuySellTime, kDaily, 0, 0},
    {"tcurrentday", kCurrentDay, kDaily, 0, 0},
    {"dailyanalysistime", kDailyAnalysisTime, kDaily, 1, 9},
    {"dailyanalysisinterval", kDailyAnalysisInterval, kDaily, 1, 9},
};

int32_t BarOf(const store::PeriodIndex* periods, int32_t day) {
  return periods == nullptr ? day : periods->PeriodOf(DayIndex(day));
}

// The integer of a sign and digits, blanks between them allowed; 0 for no text.
std::optional<int32_t> ParseSigned(std::string_view text) {
  if (text.empty()) return 0;
  const bool is_negative = text.front() == '-';
  const std::string_view digits = TrimAllBlanks(text.substr(1));
  int64_t value = 0;
  const char* end = digits.data() + digits.size();
  const auto [stop, error] = std::from_chars(digits.data(), end, value);
  if (digits.empty() || error != std::errc() || stop != end || digits.front() == '-') {
    return std::nullopt;
  }
  value = is_negative ? -value : value;
  if (value > std::numeric_limits<int32_t>::max()) return std::nullopt;
  if (value < std::numeric_limits<int32_t>::min()) return std::nullopt;
  return static_cast<int32_t>(value);
}

History NeedsNothing(const BoundItem&) { return {}; }

// Every evaluation knows the examined day; the days of the others are the run's.
void EvaluateNumber(const BoundItem& item, StockContext& context, DayIndex first, DayIndex last,
                    base::ValueColumn& out) {
  const bool is_current_day = item.keyword->keyword == kCurrentDay;
  for (int32_t day = std::max(first.Value(), 1); day <= last.Value(); ++day) {
    const auto bar = is_current_day
                         ? std::optional<int64_t>(day)
                         : BarOfKeyword(*item.keyword, item.form, context, DayIndex(day));
    if (!bar) continue;
    const int64_t number = *bar + item.offset;
    out.Set(static_cast<size_t>(day - first.Value()), Currency::FromRaw(number * Currency::kScale));
  }
}

constexpr ItemFamily kNumberFamily = {ItemFamily::Ending::kNone, NeedsNothing, EvaluateNumber};
constexpr ItemEntry kNumberEntry = {"キーワード", &kNumberFamily, {}, {}, 0, NameRule::kDailyOnly};

/// The value at one bar of days, which is the same whatever later day it is seen from.
void EvaluateDay(BoundItem item, int64_t bar, StockContext& context, DayIndex first, DayIndex last,
                 base::ValueColumn& out) {
  item.offset = -item.Lead();
  const int64_t known = bar - item.offset;
  if (known > last.Value()) return;
  const DayIndex day(static_cast<int32_t>(known));
  base::ValueColumn value;
  value.Reset(1);
  item.entry->family->evaluate(item, context, day, day, value);
  if (!value.Has(0)) return;
  for (int32_t at = std::max(first, day).Value(); at <= last.Value(); ++at) {
    out.Set(static_cast<size_t>(at - first.Value()), value.At(0));
  }
}

/// The value at one week or month as each day sees it: while it runs it changes from day to day.
void EvaluatePeriod(BoundItem item, int64_t bar, const store::PeriodIndex& periods,
                    StockContext& context, DayIndex first, DayIndex last, base::ValueColumn& out) {
  base::ValueColumn values;
  for (int32_t begin = std::max(first.Value(), 1); begin <= last.Value();) {
    const int32_t period = periods.PeriodOf(DayIndex(begin));
    int32_t end = begin;
    while (end < last.Value() && periods.PeriodOf(DayIndex(end + 1)) == period) ++end;
    values.Reset(static_cast<size_t>(end - begin + 1));
    if (bar + item.Lead() <= period) {
      item.offset = static_cast<int32_t>(bar - period);
      item.entry->family->evaluate(item, context, DayIndex(begin), DayIndex(end), values);
    }
    std::copy_n(values.Data(), values.Size(), out.Data() + (begin - first.Value()));
    begin = end + 1;
  }
}

}  // namespace

std::optional<FoundKeyword> FindDayKeyword(std::string_view text) {
  int32_t number = 0;
  if (!text.empty() && text.back() >= '1' && text.back() <= '9') {
    number = text.back() - '0';
    text.remove_suffix(1);
  }
  for (const Stem& stem : kStems) {
    if (text != stem.text || number < stem.first || number > stem.last) continue;
    return FoundKeyword{{stem.keyword, std::max(number, 1)}, stem.form};
  }
  return std::nullopt;
}

std::string DayKeywordText(const FoundKeyword& found) {
  for (const Stem& stem : kStems) {
    const bool is_numbered = stem.last > 0;
    const bool holds =
        !is_numbered || (found.keyword.number >= stem.first && found.keyword.number <= stem.last);
    if (stem.keyword != found.keyword.keyword || stem.form != found.form || !holds) continue;
    const std::string number = is_numbered ? std::to_string(found.keyword.number) : "";
    return std::string(stem.text) + number;
  }
  return "";
}

std::optional<KeywordPlace> ParseKeywordPlace(std::string_view text) {
  // No keyword has the letter of an operator in it.
  const std::string typed = AsTyped(text);
  const std::string_view view = typed;
  const size_t sign = std::min(view.find_first_of("+-"), view.size());
  const auto found = FindDayKeyword(TrimAllBlanks(view.substr(0, sign)));
  const auto offset = ParseSigned(view.substr(sign));
  if (!found || !offset) return std::nullopt;
  return KeywordPlace{*found, *offset};
}

std::optional<int64_t> BarOfKeyword(NumberedKeyword keyword, SeriesForm form,
                                    const StockContext& context, DayIndex examined) {
  const auto day = context.KeywordDays().Of(keyword, examined);
  const store::Calendar& days = context.Days();
  if (!day || *day < DayIndex(1) || *day > days.Last()) return std::nullopt;
  return BarOf(PeriodsOf(form, days), day->Value());
}

BoundItem KeywordNumber(const KeywordPlace& place) {
  BoundItem item;
  item.entry = &kNumberEntry;
  item.form = place.found.form;
  item.offset = place.offset;
  item.keyword = place.found.keyword;
  return item;
}

bool IsKeywordNumber(const BoundItem& item) { return item.entry == &kNumberEntry; }

void EvaluateAtKeyword(const BoundItem& item, StockContext& context, DayIndex first, DayIndex last,
                       base::ValueColumn& out) {
  BoundItem plain = item;
  plain.keyword.reset();
  if (context.KeywordDays().IsExaminedDay(*item.keyword)) {
    if (int64_t{item.offset} + item.Lead() > 0) return;  // always a later bar
    return item.entry->family->evaluate(plain, context, first, last, out);
  }
  const auto named = BarOfKeyword(*item.keyword, item.form, context, last);
  if (!named || *named + item.offset < 1) return;
  const int64_t bar = *named + item.offset;
  const store::PeriodIndex* periods = PeriodsOf(item.form, context.Days());
  if (periods == nullptr) return EvaluateDay(plain, bar, context, first, last, out);
  EvaluatePeriod(plain, bar, *periods, context, first, last, out);
}

}  // namespace orin::analysis
