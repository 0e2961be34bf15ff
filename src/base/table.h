#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "base/color.h"
#include "base/currency.h"
#include "base/date.h"

namespace orin::base {

/// A number that is shown as it is written in a file.
struct WrittenNumber {
  Currency value;
  std::string text;

  bool operator==(const WrittenNumber&) const = default;
};

/// A value of a table. std::monostate, like an empty text and no date, is an empty cell.
using Cell =
    std::variant<std::monostate, Currency, int64_t, Date, std::string, Color, WrittenNumber>;
bool IsEmpty(const Cell& cell);
/// Empty where there is no value.
Cell CellOf(const std::optional<Currency>& value);
/// The text as a number where it is one.
Cell CellOfWritten(std::string text);

enum class ColumnKind {
  kText,
  kCode,  // stock codes
  kNumber,
  kPercent,  // shown with "％"
  kDate,
  kColor,  // colours of the texts of other columns
};

struct Column {
  std::string heading = {};
  ColumnKind kind = ColumnKind::kText;
  int32_t decimals = 0;            // of numbers
  bool is_grouped = false;         // numbers in groups of three digits
  bool has_plus = false;           // "+" before what is above 0
  bool is_key = false;             // rows are told apart by it
  bool is_tinted = false;          // numbers have the colour of a rise or a fall by their sign
  bool is_hidden = false;          // neither shown nor copied nor saved
  std::string file_heading = {};   // in CSV files; empty: `heading`
  std::string longest_text = {};   // the longest one to be expected; empty: not known
  std::optional<size_t> ink = {};  // the column with the colours of the texts

  [[nodiscard]] bool IsNumeric() const {
    return kind == ColumnKind::kNumber || kind == ColumnKind::kPercent;
  }
};

/// Columns of texts, codes or numbers without decimals.
Column TextColumn(std::string heading);
Column CodeColumn();
Column WholeColumn(std::string heading);

enum class TextForm {
  kShown,  // for reading: "+1,234.50％"
  kPlain,  // for other programs: "1234.50"
};

/// Values under headings, made by a subsystem for a window, a file or the terminal. Texts are made
/// of the values where they are needed.
struct Table {
  std::vector<Column> columns = {};
  std::vector<std::vector<Cell>> rows = {};  // each as long as the columns
  /// The order, of a column and whether descending, of rows that are equal in the sorted column;
  /// without one they keep the order they have.
  std::optional<std::pair<size_t, bool>> order_of_equals = {};
  TextForm copied_form = TextForm::kShown;  // of rows on the clipboard

  /// The first column of codes.
  [[nodiscard]] std::optional<size_t> CodeColumn() const;
  /// The column that tells rows apart: the key, else the codes.
  [[nodiscard]] std::optional<size_t> KeyColumn() const;
  /// The first row with the value in its key column.
  [[nodiscard]] std::optional<size_t> FindRow(const Cell& key) const;
  [[nodiscard]] std::string Text(size_t row, size_t column, TextForm form = TextForm::kShown) const;
  /// -1, 0 or 1; 0 for what is no number.
  [[nodiscard]] int Sign(size_t row, size_t column) const;
  /// The text of the column that takes the most room where digits are equally wide.
  [[nodiscard]] std::string LongestText(size_t column) const;
  /// By value; empty cells stay last in both orders. Gives the place that each row had before.
  std::vector<size_t> Sort(size_t column, bool is_descending);
  /// With the headings, UTF-8.
  [[nodiscard]] std::string ToCsv(std::string_view line_end = "\r\n") const;
  /// The rows given, their fields parted by tabs, each ended by "\n".
  [[nodiscard]] std::string ToTabs(std::span<const size_t> wanted) const;
};

/// A column of texts.
Table TableOfTexts(std::string heading, const std::vector<std::string>& texts);

}  // namespace orin::base
