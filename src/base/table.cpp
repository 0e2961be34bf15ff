#include "base/table.h"

#include <algorithm>
#include <type_traits>

#include "base/csv.h"
#include "base/shown_number.h"
#include "base/text.h"

namespace orin::base {

namespace {

/// × 10000; nullopt for what is no number.
std::optional<Int128> NumberIn(const Cell& cell) {
  if (const auto* value = std::get_if<Currency>(&cell)) return value->Raw();
  if (const auto* whole = std::get_if<int64_t>(&cell)) return Int128{*whole} * Currency::kScale;
  if (const auto* written = std::get_if<WrittenNumber>(&cell)) return written->value.Raw();
  return std::nullopt;
}

/// Of cells that are not empty. Numbers stand before all else.
bool IsLess(const Cell& a, const Cell& b) {
  if (const auto* text = std::get_if<std::string>(&a)) {
    if (const auto* other = std::get_if<std::string>(&b)) return *text < *other;
  }
  const auto left = NumberIn(a);
  const auto right = NumberIn(b);
  if (left && right) return *left < *right;
  if (left || right) return left.has_value();
  if (a.index() != b.index()) return a.index() < b.index();
  const auto* date = std::get_if<Date>(&a);
  return date != nullptr && *date < std::get<Date>(b);
}

/// "#rrggbb"
std::string ColorText(Color color) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string text = "#";
  for (const uint8_t channel : {color.red, color.green, color.blue}) {
    text += kDigits[channel >> 4];
    text += kDigits[channel & 15];
  }
  return text;
}

std::string TextOf(const Column& column, const Cell& cell, TextForm form) {
  const bool is_plain = form == TextForm::kPlain;
  const NumberFormat format{column.decimals, column.is_grouped && !is_plain,
                            column.has_plus && !is_plain};
  std::string text = std::visit(
      [&](const auto& value) -> std::string {
        using Value = std::decay_t<decltype(value)>;
        if constexpr (std::is_same_v<Value, std::monostate>) {
          return {};
        } else if constexpr (std::is_same_v<Value, Currency>) {
          return FormatNumber(value, format);
        } else if constexpr (std::is_same_v<Value, int64_t>) {
          return FormatWhole(value, format);
        } else if constexpr (std::is_same_v<Value, Date>) {
          return value.IsNone() ? std::string() : value.ToText();
        } else if constexpr (std::is_same_v<Value, std::string>) {
          return value;
        } else if constexpr (std::is_same_v<Value, Color>) {
          return ColorText(value);
        } else {
          return is_plain && value.text.starts_with('+') ? value.text.substr(1) : value.text;
        }
      },
      cell);
  if (column.kind == ColumnKind::kPercent && !is_plain && NumberIn(cell)) text += "％";
  return text;
}

std::optional<size_t> PlaceOf(const std::vector<Column>& columns, const auto& is_wanted) {
  const auto found = std::ranges::find_if(columns, is_wanted);
  if (found == columns.end()) return std::nullopt;
  return static_cast<size_t>(found - columns.begin());
}

/// The places of the rows in the order of a column.
void SortPlaces(std::vector<size_t>& places, const std::vector<std::vector<Cell>>& rows,
                size_t column, bool is_descending) {
  struct Key {
    const Cell* cell;
    bool is_empty;
    size_t place;
  };
  std::vector<Key> keys;
  keys.reserve(places.size());
  for (const size_t place : places) {
    const Cell& cell = rows[place][column];
    keys.push_back({&cell, IsEmpty(cell), place});
  }
  std::ranges::stable_sort(keys, [&](const Key& a, const Key& b) {
    if (a.is_empty || b.is_empty) return !a.is_empty && b.is_empty;
    return is_descending ? IsLess(*b.cell, *a.cell) : IsLess(*a.cell, *b.cell);
  });
  std::ranges::transform(keys, places.begin(), &Key::place);
}

}  // namespace

bool IsEmpty(const Cell& cell) {
  if (const auto* text = std::get_if<std::string>(&cell)) return text->empty();
  if (const auto* date = std::get_if<Date>(&cell)) return date->IsNone();
  return std::holds_alternative<std::monostate>(cell);
}

Cell CellOf(const std::optional<Currency>& value) { return value ? Cell(*value) : Cell(); }

Cell CellOfWritten(std::string text) {
  const std::string_view trimmed = TrimBlanks(text);
  const auto number = Currency::Parse(trimmed.substr(trimmed.starts_with('+') ? 1 : 0));
  if (!number) return text;
  return WrittenNumber{*number, std::move(text)};
}

Column TextColumn(std::string heading) { return {.heading = std::move(heading)}; }

Column CodeColumn() { return {.heading = "銘柄コード", .kind = ColumnKind::kCode}; }

Column WholeColumn(std::string heading) {
  return {.heading = std::move(heading), .kind = ColumnKind::kNumber};
}

std::optional<size_t> Table::CodeColumn() const {
  return PlaceOf(columns, [](const Column& column) { return column.kind == ColumnKind::kCode; });
}

std::optional<size_t> Table::KeyColumn() const {
  const auto key = PlaceOf(columns, [](const Column& column) { return column.is_key; });
  return key ? key : CodeColumn();
}

std::optional<size_t> Table::FindRow(const Cell& key) const {
  const auto column = KeyColumn();
  if (!column) return std::nullopt;
  const auto found =
      std::ranges::find_if(rows, [&](const auto& row) { return row[*column] == key; });
  if (found == rows.end()) return std::nullopt;
  return static_cast<size_t>(found - rows.begin());
}

std::string Table::Text(size_t row, size_t column, TextForm form) const {
  return TextOf(columns[column], rows[row][column], form);
}

int Table::Sign(size_t row, size_t column) const {
  const Int128 number = NumberIn(rows[row][column]).value_or(0);
  return number < 0 ? -1 : number > 0 ? 1 : 0;
}

std::string Table::LongestText(size_t column) const {
  std::string longest;
  size_t most = 0;
  const auto take = [&](std::string text) {
    const size_t taken = Columns(text);
    if (taken <= most) return;
    most = taken;
    longest = std::move(text);
  };
  const ColumnKind kind = columns[column].kind;
  if (!columns[column].IsNumeric()) {
    for (size_t row = 0; row < rows.size(); ++row) {
      take(Text(row, column));
      // Dates are equally long.
      if (kind == ColumnKind::kDate && most > 0) break;
    }
    return longest;
  }
  // Of the numbers on either side of zero the one farthest from it is the longest.
  std::optional<size_t> least;
  std::optional<size_t> greatest;
  for (size_t row = 0; row < rows.size(); ++row) {
    const Cell& cell = rows[row][column];
    if (IsEmpty(cell)) continue;
    if (!least || IsLess(cell, rows[*least][column])) least = row;
    if (!greatest || IsLess(rows[*greatest][column], cell)) greatest = row;
  }
  if (least) take(Text(*least, column));
  if (greatest) take(Text(*greatest, column));
  return longest;
}

std::vector<size_t> Table::Sort(size_t column, bool is_descending) {
  std::vector<size_t> places;
  for (size_t row = 0; row < rows.size(); ++row) places.push_back(row);
  if (order_of_equals) {
    SortPlaces(places, rows, order_of_equals->first, order_of_equals->second);
  }
  SortPlaces(places, rows, column, is_descending);
  std::vector<std::vector<Cell>> sorted;
  sorted.reserve(rows.size());
  for (const size_t place : places) sorted.push_back(std::move(rows[place]));
  rows = std::move(sorted);
  return places;
}

std::string Table::ToCsv(std::string_view line_end) const {
  std::string csv;
  const auto append_line = [&](const auto& text_of) {
    bool is_first = true;
    for (size_t column = 0; column < columns.size(); ++column) {
      if (columns[column].is_hidden) continue;
      if (!is_first) csv += ',';
      is_first = false;
      csv += CsvField(text_of(column));
    }
    csv += line_end;
  };
  append_line([&](size_t column) {
    const Column& shown = columns[column];
    return shown.file_heading.empty() ? shown.heading : shown.file_heading;
  });
  for (size_t row = 0; row < rows.size(); ++row) {
    append_line([&](size_t column) { return Text(row, column, TextForm::kPlain); });
  }
  return csv;
}

std::string Table::ToTabs(std::span<const size_t> wanted) const {
  std::string text;
  for (const size_t row : wanted) {
    bool is_first = true;
    for (size_t column = 0; column < columns.size(); ++column) {
      if (columns[column].is_hidden) continue;
      if (!is_first) text += '\t';
      is_first = false;
      text += Text(row, column, copied_form);
    }
    text += '\n';
  }
  return text;
}

Table TableOfTexts(std::string heading, const std::vector<std::string>& texts) {
  Table table;
  table.columns = {TextColumn(std::move(heading))};
  for (const std::string& text : texts) table.rows.push_back({text});
  return table;
}

}  // namespace orin::base
