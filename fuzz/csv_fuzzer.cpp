#include <cstdint>
#include <string_view>
#include <unordered_set>

#include "acquire/csv_history.h"
#include "acquire/stock_list.h"
#include "base/cp932.h"
#include "fuzz/require.h"

namespace {

using orin::acquire::LineProblem;
using orin::base::Bar;
using orin::base::Currency;
using orin::fuzz::Require;

void CheckProblems(const orin::acquire::LineProblems& problems, size_t size) {
  for (const LineProblem& problem : problems.Kept()) {
    const bool in_file = problem.line >= 0 && static_cast<size_t>(problem.line) <= size + 1;
    Require(in_file && !problem.message.empty(), "a problem names a line and says what is wrong");
  }
}

void CheckBar(const Bar& bar) {
  Require(bar.HasData() && bar.volume >= Currency(), "a bar that is read has data");
  Require(bar.low > Currency() && bar.low <= bar.open && bar.open <= bar.high &&
              bar.low <= bar.close && bar.close <= bar.high,
          "the prices of a bar belong to one day");
}

void CheckHistory(std::string_view text) {
  const orin::acquire::CsvHistory history = orin::acquire::ParseCsvHistory(text);
  CheckProblems(history.problems, text.size());
  Require(history.lines.size() == history.bars.size(), "each bar has its line");
  for (size_t i = 0; i < history.bars.size(); ++i) {
    CheckBar(history.bars[i]);
    Require(i == 0 || history.bars[i - 1].date < history.bars[i].date, "the dates ascend");
  }
}

void CheckStockList(std::string_view text) {
  const orin::acquire::StockList list = orin::acquire::ParseStockList(text);
  CheckProblems(list.problems, text.size());
  std::unordered_set<orin::store::StockCode, orin::store::StockCodeHash> seen;
  for (const orin::store::NewStock& stock : list.stocks) {
    Require(seen.insert(stock.code).second, "each code is listed once");
    Require(stock.listing >= 1 && stock.listing <= 3, "a listing code is known");
    Require(stock.kind >= 0 && stock.sector >= 0, "no code is negative");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const auto decoded = orin::base::DecodeText({reinterpret_cast<const char*>(data), size});
  Require(orin::base::IsValidUtf8(decoded.text), "decoded text is UTF-8");
  CheckHistory(decoded.text);
  CheckStockList(decoded.text);
  return 0;
}
