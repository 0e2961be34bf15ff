#include "screening/signal_scan.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace orin::screening {

namespace {

constexpr std::string_view kStage = "ミルテ（条件の成り立つ日）";
// All days of so many stocks take well under the tenth of a second.
constexpr size_t kScannedPerReport = 8;

}  // namespace

SignalScanner::SignalScanner(analysis::Evaluation evaluation, MarketChoice market)
    : evaluation_(std::move(evaluation)), market_(market) {}

bool SignalScanner::Advance(size_t stocks, const StockSignals& deliver) {
  const auto all = evaluation_.Store().Master().Stocks();
  const size_t end = std::min(all.size(), next_ + stocks);
  for (; next_ < end; ++next_) {
    if (!Matches(market_, all[next_])) continue;
    evaluation_.LoadNext(all, next_);
    evaluation_.Truths(truths_);
    deliver(all[next_], truths_);
  }
  return next_ < all.size();
}

int64_t SignalScanner::Total() const {
  return static_cast<int64_t>(evaluation_.Store().Master().Stocks().size());
}

base::Status ScanSignals(analysis::Evaluation evaluation, MarketChoice market,
                         base::Progress& progress, const StockSignals& deliver) {
  SignalScanner scanner(std::move(evaluation), market);
  do {
    if (!progress.Report(kStage, scanner.Done(), scanner.Total())) {
      return base::Fail("条件の成り立つ日を調べるのを中止しました。");
    }
  } while (scanner.Advance(kScannedPerReport, deliver));
  static_cast<void>(progress.Report(kStage, scanner.Total(), scanner.Total()));
  return {};
}

}  // namespace orin::screening
