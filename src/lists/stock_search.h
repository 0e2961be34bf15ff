#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/ordinal.h"
#include "store/companion_formats.h"
#include "store/stock_master.h"

namespace orin::lists {

/// Finds stocks as the user types. A value: made anew when the master changes.
class StockSearch {
 public:
  StockSearch() = default;
  StockSearch(const store::StockMaster& master, std::span<const store::IndexEntry> index);

  /// The best matches first, at most `most`: the code itself, codes that begin with the text,
  /// names and readings that do (or a word of which does), then texts that contain it. Case,
  /// half and full width, and hiragana or katakana do not count; several words must all match.
  /// An empty text finds nothing.
  [[nodiscard]] std::vector<base::MasterRecord> Find(std::string_view typed, size_t most) const;

 private:
  struct Target {
    base::MasterRecord record;
    std::string code;     // folded
    std::string name;     // folded
    std::string company;  // folded
    std::string reading;  // folded
  };
  std::vector<Target> targets_;
};

}  // namespace orin::lists
