#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "analysis/items/item_catalogue.h"

namespace orin::analysis {

/// The weeks or months that the bars of a form are; null for days.
const store::PeriodIndex* PeriodsOf(SeriesForm form, const store::Calendar& days);

/// A keyword that stands for a day: "analysisdate2", "wanalysisdate1", "tcurrentday".
struct FoundKeyword {
  NumberedKeyword keyword;
  SeriesForm form = SeriesForm::kDaily;  // whose bars it counts; never kSecond

  bool operator==(const FoundKeyword&) const = default;
};

/// Exactly that spelling. One is irregular: the third weekly purchase is "wimulationbuy3".
std::optional<FoundKeyword> FindDayKeyword(std::string_view text);
/// The spelling.
std::string DayKeywordText(const FoundKeyword& found);

/// A keyword and the integer behind it, as "analysisdate2-3".
struct KeywordPlace {
  FoundKeyword found;
  int32_t offset = 0;
};

/// Reads a keyword that may be followed by a sign and digits, with or without blanks around them.
/// nullopt for anything else. Within braces the sign may have become the letter of an operator.
std::optional<KeywordPlace> ParseKeywordPlace(std::string_view text);

/// What the series of a form counts from.
inline SeriesForm CountedForm(SeriesForm form) {
  return form == SeriesForm::kSecond ? SeriesForm::kDaily : form;
}

/// The number of the bar that holds the keyword's day while `examined` is evaluated; nullopt where
/// the run has not set the keyword to a day of the calendar, and for tcurrentday.
std::optional<int64_t> BarOfKeyword(NumberedKeyword keyword, SeriesForm form,
                                    const StockContext& context, base::DayIndex examined);

/// The keyword as an operand: the number of its bar plus the offset.
BoundItem KeywordNumber(const KeywordPlace& place);
bool IsKeywordNumber(const BoundItem& item);

/// The values of an item whose bar is named by a keyword; see ItemFamily::evaluate.
void EvaluateAtKeyword(const BoundItem& item, StockContext& context, base::DayIndex first,
                       base::DayIndex last, base::ValueColumn& out);

}  // namespace orin::analysis
