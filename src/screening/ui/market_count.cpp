#include "screening/ui/market_count.h"

#include <QElapsedTimer>
#include <algorithm>
#include <utility>

#include "analysis/note_sentence.h"
#include "screening/screening_run.h"
#include "widgets/qt_text.h"

namespace orin::screening {

using widgets::Text;

namespace {

constexpr qint64 kSlice = 12;  // ms
constexpr size_t kStocksPerStep = 4;

}  // namespace

MarketCount::MarketCount(QObject* owner) : QObject(owner) {
  timer_.setInterval(0);
  connect(&timer_, &QTimer::timeout, this, &MarketCount::Go);
}

MarketCount::~MarketCount() = default;

void MarketCount::Start(const store::StockStore& store, const Question& question) {
  Stop();
  counts_ = {};
  problem_.clear();
  auto program = analysis::BuildProgram(question.condition);
  if (!program) {
    Q_EMIT Failed(Text(analysis::NoteSentence(program.error())));
    return;
  }
  if (program->IsValue()) {
    Q_EMIT Failed(QStringLiteral("比較のない式は値なので、銘柄を選びません。"));
    return;
  }
  program_ = std::move(*program);
  SignalScan scan;
  scan.market = question.market;
  scan.last = question.last;
  scan.first = base::DayIndex(std::max(1, question.last.Value() - question.days + 1));
  const SecondStock second = FindSecondStock(store, question.second_stock);
  if (program_->NeedsSecondStock()) problem_ = second.problem;
  scan.second = second.record;
  scan.adjust_splits = question.adjust_splits;
  auto scanner = SignalScanner::Make(store, *program_, scan);
  if (!scanner) {
    Q_EMIT Failed(Text(scanner.error().message));
    return;
  }
  scanner_ = std::move(*scanner);
  for (int32_t day = scan.first.Value(); day <= scan.last.Value(); ++day) {
    counts_.dates.push_back(store.Days().DateOf(base::DayIndex(day)));
  }
  counts_.counts.assign(counts_.dates.size(), 0);
  timer_.start();
}

void MarketCount::Stop() {
  timer_.stop();
  scanner_.reset();
  program_.reset();
}

void MarketCount::Go() {
  const auto count = [this](const store::StockRecord&, std::span<const uint8_t> truths) {
    for (size_t i = 0; i < truths.size(); ++i) counts_.counts[i] += truths[i] != 0 ? 1 : 0;
  };
  QElapsedTimer since;
  since.start();
  bool has_more = true;
  while (has_more && since.elapsed() < kSlice) has_more = scanner_->Advance(kStocksPerStep, count);
  Q_EMIT Advanced(static_cast<int>(scanner_->Done()), static_cast<int>(scanner_->Total()));
  // Whoever heard that may have stopped the count.
  if (has_more || scanner_ == nullptr) return;
  Stop();
  Q_EMIT Finished();
}

}  // namespace orin::screening
