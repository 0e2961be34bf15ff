#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/ordinal.h"
#include "store/splits.h"
#include "store/stock_master.h"

namespace orin::lists {

/// Rows of text under headings, as a window shows them.
struct Table {
  std::vector<std::string> headings;
  std::vector<std::vector<std::string>> rows;  // each as long as the headings

  /// The column that holds stock codes: the first one headed 銘柄コード.
  [[nodiscard]] std::optional<size_t> CodeColumn() const;
  /// Whether every text of the column that is not empty is a number, and one is.
  [[nodiscard]] bool IsNumeric(size_t column) const;
  /// Rows in the order of a column: by value where it is numeric, else by text; equal ones keep
  /// their order, empty texts come last.
  /// Gives the place that each row had before.
  std::vector<size_t> Sort(size_t column, bool is_descending);
  /// With the headings, UTF-8; numbers without groups and plus signs.
  [[nodiscard]] std::string ToCsv(std::string_view line_end = "\r\n") const;
};

/// A CSV text with a heading line. Rows are brought to the heading's length.
Table TableFromCsv(std::string_view csv);

/// The given stocks of the master.
Table TableOfMaster(const store::StockMaster& master,
                    const std::vector<base::MasterRecord>& records);
Table TableOfSplits(const store::SplitList& splits);
/// Sentences under one heading.
Table TableOfSentences(std::string heading, const std::vector<std::string>& sentences);
/// A result list or any other list of stocks: "T:" and "D:" lines give the caption, the others
/// begin with a code and go on in the columns of result lists.
struct ListedStocks {
  std::string title;
  std::string date;
  Table table;
};
ListedStocks TableOfList(std::string_view utf8);

}  // namespace orin::lists
