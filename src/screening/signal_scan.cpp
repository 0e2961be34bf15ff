#include "screening/signal_scan.h"

#include <vector>

#include "analysis/evaluator.h"

namespace orin::screening {

namespace {

constexpr std::string_view kStage = "ミルテ（条件の成り立つ日）";
// All days of so many stocks take well under the tenth of a second.
constexpr size_t kStocksPerReport = 8;

}  // namespace

base::Status ScanSignals(const store::StockStore& store, const analysis::Program& program,
                         const SignalScan& scan, base::Progress& progress,
                         const StockSignals& deliver) {
  const auto beside = analysis::Companions::Load(store, program.Needs());
  if (!beside) return base::Forward(beside);
  analysis::StockContext context(store, program.Needs(), scan.first, scan.last, scan.second,
                                 scan.adjust_splits);
  context.SetBeside(&*beside);
  analysis::Evaluator evaluator(program);
  std::vector<uint8_t> truths;
  const auto stocks = store.Master().Stocks();
  const auto total = static_cast<int64_t>(stocks.size());
  for (size_t place = 0; place < stocks.size(); ++place) {
    if (place % kStocksPerReport == 0 &&
        !progress.Report(kStage, static_cast<int64_t>(place), total)) {
      return base::Fail("条件の成り立つ日を調べるのを中止しました。");
    }
    if (!Matches(scan.market, stocks[place])) continue;
    context.LoadNext(stocks, place);
    evaluator.EvaluateConditionRange(context, scan.first, scan.last, truths);
    deliver(stocks[place], truths);
  }
  static_cast<void>(progress.Report(kStage, total, total));
  return {};
}

}  // namespace orin::screening
