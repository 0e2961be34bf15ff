#include "screening/ui/market_count.h"

#include <QElapsedTimer>
#include <algorithm>
#include <utility>

#include "analysis/evaluation.h"
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
  const base::DayIndex first(std::max(1, question.last.Value() - question.days + 1));
  auto evaluation = analysis::Evaluation::OfText(store, question.condition,
                                                 {.days = {first, question.last},
                                                  .second_stock = question.second_stock,
                                                  .adjust_splits = question.adjust_splits,
                                                  .keyword_days = question.keyword_days});
  if (!evaluation) {
    Q_EMIT Failed(Text(evaluation.error().message));
    return;
  }
  if (question.second_stock && evaluation->NeedsSecondStock()) {
    problem_ = evaluation->SecondStockProblem();
  }
  if (evaluation->ProgramOf().IsValue()) {
    Q_EMIT Failed(QStringLiteral("比較のない式は値なので、銘柄を選びません。"));
    return;
  }
  scanner_.emplace(std::move(*evaluation), question.market);
  for (int32_t day = first.Value(); day <= question.last.Value(); ++day) {
    counts_.dates.push_back(store.Days().DateOf(base::DayIndex(day)));
  }
  counts_.counts.assign(counts_.dates.size(), 0);
  timer_.start();
}

void MarketCount::Stop() {
  timer_.stop();
  scanner_.reset();
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
  if (has_more || !scanner_) return;
  Stop();
  Q_EMIT Finished();
}

}  // namespace orin::screening
