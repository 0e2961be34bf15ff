#include "screening/signal_scan.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "analysis/evaluator.h"

namespace orin::screening {

namespace {

constexpr std::string_view kStage = "ミルテ（条件の成り立つ日）";
// All days of so many stocks take well under the tenth of a second.
constexpr size_t kScannedPerReport = 8;

}  // namespace

struct SignalScanner::State {
  State(const store::StockStore& opened, const analysis::Program& program, const SignalScan& wanted,
        analysis::Companions companions)
      : store(opened),
        scan(wanted),
        beside(std::move(companions)),
        context(opened, program.Needs(), wanted.first, wanted.last, wanted.second,
                wanted.adjust_splits),
        evaluator(program) {
    context.SetBeside(&beside);
  }

  const store::StockStore& store;
  SignalScan scan;
  analysis::Companions beside;
  analysis::StockContext context;
  analysis::Evaluator evaluator;
  std::vector<uint8_t> truths;
  size_t next = 0;
};

SignalScanner::SignalScanner(std::unique_ptr<State> state) : state_(std::move(state)) {}
SignalScanner::~SignalScanner() = default;

base::Result<std::unique_ptr<SignalScanner>> SignalScanner::Make(const store::StockStore& store,
                                                                 const analysis::Program& program,
                                                                 const SignalScan& scan) {
  auto beside = analysis::Companions::Load(store, program.Needs());
  if (!beside) return base::Forward(beside);
  return std::unique_ptr<SignalScanner>(
      new SignalScanner(std::make_unique<State>(store, program, scan, std::move(*beside))));
}

bool SignalScanner::Advance(size_t stocks, const StockSignals& deliver) {
  State& s = *state_;
  const auto all = s.store.Master().Stocks();
  const size_t end = std::min(all.size(), s.next + stocks);
  for (; s.next < end; ++s.next) {
    if (!Matches(s.scan.market, all[s.next])) continue;
    s.context.LoadNext(all, s.next);
    s.evaluator.EvaluateConditionRange(s.context, s.scan.first, s.scan.last, s.truths);
    deliver(all[s.next], s.truths);
  }
  return s.next < all.size();
}

int64_t SignalScanner::Done() const { return static_cast<int64_t>(state_->next); }

int64_t SignalScanner::Total() const {
  return static_cast<int64_t>(state_->store.Master().Stocks().size());
}

base::Status ScanSignals(const store::StockStore& store, const analysis::Program& program,
                         const SignalScan& scan, base::Progress& progress,
                         const StockSignals& deliver) {
  const auto scanner = SignalScanner::Make(store, program, scan);
  if (!scanner) return base::Forward(scanner);
  SignalScanner& going = **scanner;
  do {
    if (!progress.Report(kStage, going.Done(), going.Total())) {
      return base::Fail("条件の成り立つ日を調べるのを中止しました。");
    }
  } while (going.Advance(kScannedPerReport, deliver));
  static_cast<void>(progress.Report(kStage, going.Total(), going.Total()));
  return {};
}

}  // namespace orin::screening
