#include "lists/stock_tables.h"

#include <algorithm>
#include <utility>

#include "base/text.h"
#include "store/master_table.h"

namespace orin::lists {

using base::Cell;
using base::ColumnKind;

namespace {

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

/// The columns of a line of a result list; "-" stands for no value.
std::vector<Cell> CellsOfLine(std::string_view line) {
  std::vector<Cell> cells;
  const auto add = [&cells](const Cell& cell) {
    cells.push_back(cell == Cell("-") ? Cell() : cell);
  };
  for (const size_t width : {8UL, 17UL, 9UL}) add(TakeColumns(line, width));
  // A price may be wider than its column.
  for (int price = 0; price < 2; ++price) add(base::CellOfWritten(TakeWord(line)));
  return cells;
}

}  // namespace

base::Table TableOfMaster(const store::StockMaster& master,
                          const std::vector<base::MasterRecord>& records) {
  base::Table table = store::EmptyMasterTable();
  for (const base::MasterRecord record : records) {
    store::AddMasterRow(table, record.Value(), master.Stock(record));
  }
  return table;
}

base::Table TableOfSplits(const store::SplitList& splits) {
  base::Table table;
  table.columns = {base::CodeColumn(),
                   base::TextColumn("銘柄名"),
                   base::WholeColumn("分割倍率"),
                   {.heading = "権利付最終日", .kind = ColumnKind::kDate}};
  for (const store::SplitEvent& event : splits.Events()) {
    table.rows.push_back({std::string(event.code.Text()), event.name,
                          base::CellOfWritten(event.ratio_text), event.last_day_with_rights});
  }
  return table;
}

ListedStocks TableOfList(std::string_view utf8) {
  ListedStocks list;
  list.table.columns = {base::CodeColumn(), base::TextColumn("銘柄名"), base::TextColumn("市場"),
                        base::WholeColumn("終値"), base::WholeColumn("前日比")};
  for (std::string_view line : base::SplitLines(utf8)) {
    const std::string_view mark = line.substr(0, 2);
    if (base::EqualsIgnoreCase(mark, "T:")) {
      list.title = line.substr(2);
    } else if (base::EqualsIgnoreCase(mark, "D:")) {
      list.date = line.substr(2);
    } else if (!base::TrimBlanks(line).empty()) {
      list.table.rows.push_back(CellsOfLine(line));
    }
  }
  return list;
}

}  // namespace orin::lists
