#include "screening/stock_days.h"

#include "base/cp932.h"
#include "base/csv.h"
#include "base/file_system.h"
#include "base/text.h"
#include "screening/result_sets.h"

namespace orin::screening {

namespace {

constexpr size_t kMostDayNotes = 10;

void AddNote(StockDays& to, size_t line, const std::string& what) {
  if (to.notes.size() < kMostDayNotes) to.notes.push_back(std::to_string(line) + "行目：" + what);
}

void ReadLine(StockDays& to, size_t number, std::string_view line, const store::StockStore& store) {
  const std::string_view trimmed = base::TrimBlanks(line);
  if (trimmed.empty() || trimmed.starts_with('\'')) return;
  const auto fields = base::CsvFields(trimmed);
  const auto code = store::StockCode::Parse(base::TrimBlanks(fields[0]));
  const auto date =
      fields.size() < 2 ? std::nullopt : base::Date::Parse(base::TrimBlanks(fields[1]));
  if (!code || !date) {
    AddNote(to, number, "銘柄コードと日付（yyyy/mm/dd）ではないので読み飛ばしました。");
    return;
  }
  const std::string name(code->Text());
  if (store.Master().Find(*code).IsNone()) {
    AddNote(to, number, "銘柄コード「" + name + "」が見つからないので読み飛ばしました。");
    return;
  }
  const base::DayIndex day = store.Days().Find(*date);
  if (day.IsNone()) {
    AddNote(to, number, date->ToText() + " は取引日ではないので読み飛ばしました。");
    return;
  }
  to.days[*code] = day;
}

}  // namespace

base::DayIndex StockDays::Of(const store::StockCode& code, base::DayIndex day) const {
  const auto own = days.find(code);
  return own == days.end() ? day : own->second;
}

StockDays ParseStockDays(std::string_view utf8, const store::StockStore& store) {
  StockDays days;
  size_t number = 0;
  for (const std::string_view line : base::SplitLines(utf8)) {
    ReadLine(days, ++number, line, store);
  }
  return days;
}

base::Result<StockDays> ReadStockDays(const std::filesystem::path& directory,
                                      const store::StockStore& store) {
  const std::filesystem::path path = directory / kStockDaysFile;
  std::error_code failure;
  if (!std::filesystem::exists(path, failure)) return StockDays();
  const auto bytes = base::ReadFile(path, kLargestList);
  if (!bytes) return base::Forward(bytes);
  return ParseStockDays(base::DecodeText(*bytes).text, store);
}

}  // namespace orin::screening
