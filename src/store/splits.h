#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/bars.h"
#include "base/date.h"
#include "base/result.h"
#include "store/stock_code.h"

namespace orin::store {

/// One stock split (ratio above 1) or reverse split (below 1).
struct SplitEvent {
  StockCode code;
  std::string name;
  double ratio = 1;        // new shares for one old share; above 0
  std::string ratio_text;  // as written in the file; empty: `ratio` is written
  base::Date last_day_with_rights;
};

/// "2" or "0.5": a decimal number above 0 without exponent, blanks around it dropped. Fails with a
/// sentence that shows the text.
base::Result<double> ParseSplitRatio(std::string_view text);

/// The events of 株式分割.txt.
class SplitList {
 public:
  SplitList() = default;
  explicit SplitList(std::vector<SplitEvent> events);
  /// Lines that are no event are kept and told in `problems`, one sentence each; those of an
  /// emptied entry are not told.
  static SplitList Parse(std::string_view bytes, const std::string& file_name,
                         std::vector<std::string>& problems);

  [[nodiscard]] std::span<const SplitEvent> Events() const { return events_; }
  /// The stock's events, oldest first.
  [[nodiscard]] std::span<const SplitEvent> EventsOf(const StockCode& code) const;
  /// Takes over the lines of `other` that are no event.
  void KeepUnreadLines(const SplitList& other) {
    unread_lines_ = other.unread_lines_;
    unread_problem_ = other.unread_problem_;
  }
  /// The three header lines, the event lines and the kept lines, code page 932. Fails with a
  /// sentence that names the file and the event or line where a text has a character that code
  /// page 932 lacks.
  [[nodiscard]] base::Result<std::string> Serialize() const;

 private:
  struct Range {
    size_t begin = 0;
    size_t count = 0;
  };
  std::vector<SplitEvent> events_;         // in file order
  std::vector<std::string> unread_lines_;  // in file order, code page 932, without line ends
  std::string unread_problem_;             // why a kept line cannot be written; empty: all can
  std::vector<SplitEvent> sorted_;         // by code, then by day
  std::unordered_map<StockCode, Range, StockCodeHash> by_code_;
};

/// Divides the prices of every bar up to and including the last day with rights by the ratio and
/// multiplies the volume, each in double; the volume of a no-data bar stays. A value that would
/// leave the range of Currency makes its bar a no-data bar.
void AdjustForSplit(const SplitEvent& event, base::BarColumns& bars);

}  // namespace orin::store
