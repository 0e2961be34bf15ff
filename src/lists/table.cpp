#include "lists/table.h"

#include <algorithm>
#include <utility>

#include "base/csv.h"
#include "base/currency.h"
#include "base/shown_number.h"
#include "base/text.h"

namespace orin::lists {

namespace {

std::optional<base::Currency> NumberIn(std::string_view text) {
  const std::string plain = base::PlainNumber(text);
  const auto number = base::Currency::Parse(base::TrimBlanks(plain));
  if (!number) return std::nullopt;
  return *number;
}

void AppendLine(std::string& csv, const std::vector<std::string>& fields,
                std::string_view line_end) {
  for (size_t i = 0; i < fields.size(); ++i) {
    if (i > 0) csv += ',';
    csv += base::CsvField(fields[i]);
  }
  csv += line_end;
}

/// The first `columns` columns of the text are taken off it, without blanks around them.
std::string TakeColumns(std::string_view& text, size_t columns) {
  size_t end = 0;
  while (end < text.size()) {
    size_t next = end + 1;
    while (next < text.size() && (static_cast<unsigned char>(text[next]) & 0xc0) == 0x80) ++next;
    if (base::Columns(text.substr(0, next)) > columns) break;
    end = next;
  }
  const std::string taken(base::TrimBlanks(text.substr(0, end)));
  text.remove_prefix(end);
  return taken;
}

std::string TakeWord(std::string_view& text) {
  text = base::TrimBlanks(text);
  const size_t end = std::min(text.find(' '), text.size());
  const std::string word(text.substr(0, end));
  text.remove_prefix(end);
  return word;
}

/// The columns of a line of a result list.
std::vector<std::string> FieldsOfLine(std::string_view line) {
  std::vector<std::string> fields = {TakeColumns(line, 8)};
  for (const size_t width : {17UL, 9UL}) fields.push_back(TakeColumns(line, width));
  // A price may be wider than its column.
  for (int price = 0; price < 2; ++price) fields.push_back(TakeWord(line));
  for (std::string& field : fields) {
    if (field == "-") field.clear();
  }
  return fields;
}

}  // namespace

std::optional<size_t> Table::CodeColumn() const {
  const auto place = std::ranges::find(headings, "銘柄コード");
  if (place == headings.end()) return std::nullopt;
  return static_cast<size_t>(place - headings.begin());
}

bool Table::IsNumeric(size_t column) const {
  bool has_number = false;
  for (const auto& row : rows) {
    if (row[column].empty()) continue;
    if (!NumberIn(row[column])) return false;
    has_number = true;
  }
  return has_number;
}

std::vector<size_t> Table::Sort(size_t column, bool is_descending) {
  const bool is_numeric = IsNumeric(column);
  struct Key {
    std::string_view text;
    base::Currency number;
    size_t place = 0;
  };
  std::vector<Key> keys;
  keys.reserve(rows.size());
  for (const auto& row : rows) {
    const auto number = is_numeric ? NumberIn(row[column]) : std::nullopt;
    keys.push_back({row[column], number.value_or(base::Currency()), keys.size()});
  }
  const auto is_less = [is_numeric](const Key& a, const Key& b) {
    return is_numeric ? a.number < b.number : a.text < b.text;
  };
  std::ranges::stable_sort(keys, [&](const Key& a, const Key& b) {
    if (a.text.empty() || b.text.empty()) return !a.text.empty() && b.text.empty();
    return is_descending ? is_less(b, a) : is_less(a, b);
  });
  std::vector<size_t> places;
  std::vector<std::vector<std::string>> sorted;
  places.reserve(rows.size());
  sorted.reserve(rows.size());
  for (const Key& key : keys) places.push_back(key.place);
  for (const size_t place : places) sorted.push_back(std::move(rows[place]));
  rows = std::move(sorted);
  return places;
}

std::string Table::ToCsv(std::string_view line_end) const {
  std::vector<bool> is_numeric;
  for (size_t column = 0; column < headings.size(); ++column) {
    is_numeric.push_back(IsNumeric(column));
  }
  std::string csv;
  AppendLine(csv, headings, line_end);
  for (const auto& row : rows) {
    std::vector<std::string> fields = row;
    for (size_t column = 0; column < fields.size(); ++column) {
      if (is_numeric[column]) fields[column] = base::PlainNumber(fields[column]);
    }
    AppendLine(csv, fields, line_end);
  }
  return csv;
}

Table TableFromCsv(std::string_view csv) {
  Table table;
  for (const std::string_view line : base::SplitLines(csv)) {
    auto fields = base::CsvFields(line);
    if (table.headings.empty()) {
      table.headings = std::move(fields);
      continue;
    }
    fields.resize(table.headings.size());
    table.rows.push_back(std::move(fields));
  }
  return table;
}

Table TableOfMaster(const store::StockMaster& master,
                    const std::vector<base::MasterRecord>& records) {
  Table table{{"レコード", "銘柄コード", "銘柄レコード", "上場コード", "種別コード", "業種コード",
               "銘柄ランク", "銘柄名"},
              {}};
  for (const base::MasterRecord record : records) {
    const store::StockRecord& stock = master.Stock(record);
    table.rows.push_back({std::to_string(record.Value()), std::string(stock.code.Text()),
                          std::to_string(stock.slot.Value()), std::to_string(stock.listing),
                          std::to_string(stock.kind), std::to_string(stock.sector),
                          std::to_string(stock.rank), stock.name});
  }
  return table;
}

Table TableOfSplits(const store::SplitList& splits) {
  Table table{{"銘柄コード", "銘柄名", "分割倍率", "権利付最終日"}, {}};
  for (const store::SplitEvent& event : splits.Events()) {
    table.rows.push_back({std::string(event.code.Text()), event.name, event.ratio_text,
                          event.last_day_with_rights.ToText()});
  }
  return table;
}

Table TableOfSentences(std::string heading, const std::vector<std::string>& sentences) {
  Table table{{std::move(heading)}, {}};
  for (const std::string& sentence : sentences) table.rows.push_back({sentence});
  return table;
}

ListedStocks TableOfList(std::string_view utf8) {
  ListedStocks list;
  list.table.headings = {"銘柄コード", "銘柄名", "市場", "終値", "前日比"};
  for (std::string_view line : base::SplitLines(utf8)) {
    const std::string_view mark = line.substr(0, 2);
    if (base::EqualsIgnoreCase(mark, "T:")) {
      list.title = line.substr(2);
    } else if (base::EqualsIgnoreCase(mark, "D:")) {
      list.date = line.substr(2);
    } else if (!base::TrimBlanks(line).empty()) {
      list.table.rows.push_back(FieldsOfLine(line));
    }
  }
  return list;
}

}  // namespace orin::lists
