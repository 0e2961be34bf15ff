#pragma once

#include <QObject>
#include <QTimer>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "analysis/program.h"
#include "base/date.h"
#include "base/ordinal.h"
#include "screening/market_choice.h"
#include "screening/signal_scan.h"
#include "store/stock_store.h"

namespace orin::screening {

/// How many stocks of the market a condition selects on a day and on the trading days before it.
struct DayCounts {
  std::vector<base::Date> dates;  // oldest first
  std::vector<int32_t> counts;    // as many
};

/// Counts in slices of a few milliseconds between which events are handled; it never blocks and
/// never waits in an event loop of its own.
class MarketCount final : public QObject {
  Q_OBJECT

 public:
  static constexpr int32_t kDays = 20;

  explicit MarketCount(QObject* owner = nullptr);
  ~MarketCount() override;

  struct Question {
    std::string condition;
    MarketChoice market = MarketChoice::kAll;
    std::optional<store::StockCode> second_stock;
    base::DayIndex last;  // the day; kDays of them, or as many as there are
    int32_t days = kDays;
    bool adjust_splits = true;
  };
  /// Gives up the count under way and begins another one. The store must outlive the count or its
  /// Stop. A text that cannot be compiled and a value give Failed at once.
  void Start(const store::StockStore& store, const Question& question);
  void Stop();
  [[nodiscard]] bool IsRunning() const { return scanner_ != nullptr; }
  /// Of the stocks looked at so far.
  [[nodiscard]] const DayCounts& Counts() const { return counts_; }
  /// A sentence where the condition reads a second stock that the master lacks, else empty.
  [[nodiscard]] const std::string& Problem() const { return problem_; }

 Q_SIGNALS:
  /// From time to time, `done` of `total` stocks.
  void Advanced(int done, int total);
  void Finished();
  void Failed(const QString& sentence);

 private:
  void Go();

  QTimer timer_;
  std::optional<analysis::Program> program_;
  std::unique_ptr<SignalScanner> scanner_;
  DayCounts counts_;
  std::string problem_;
};

}  // namespace orin::screening
