#include "screening/signal_scan.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "support/store_builder.h"

namespace orin::screening {
namespace {

using base::DayIndex;
using support::FlatBar;
using support::NoBar;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

store::NewStock Stock(const std::string& code, int16_t listing) {
  store::NewStock stock;
  stock.code = support::Code(code);
  stock.listing = listing;
  return stock;
}

/// The stocks and days of a scan.
struct Wanted {
  MarketChoice market = MarketChoice::kAll;
  base::DayRange days = {DayIndex(1), DayIndex(6)};
  bool adjust_splits = true;
};

/// Six days of four stocks.
class SignalScanTest : public ::testing::Test {
 protected:
  SignalScanTest()
      : builder_(std::string("signals_") +
                 ::testing::UnitTest::GetInstance()->current_test_info()->name()) {
    builder_.Days(support::Weekdays("2020/01/06", 6))
        .Stock(Stock("^DJI", 3), {6, FlatBar(10)})
        .Stock(Stock("RISE", 1),
               {FlatBar(1), FlatBar(2), FlatBar(3), FlatBar(4), FlatBar(5), FlatBar(6)})
        .Stock(Stock("FALL", 2),
               {FlatBar(9), FlatBar(8), FlatBar(7), FlatBar(6), FlatBar(5), FlatBar(4)})
        .Stock(Stock("GAPS", 1),
               {FlatBar(1), NoBar(), FlatBar(3), FlatBar(4), NoBar(), FlatBar(9)});
  }

  /// "CODE 011010", a line a stock: its days from the first on.
  std::vector<std::string> Scan(const std::string& condition, const Wanted& wanted = {}) {
    const store::StockStore store = builder_.Open();
    analysis::EvaluationOptions options = {.days = wanted.days,
                                           .adjust_splits = wanted.adjust_splits};
    if (second_) options.second_stock = support::Code("^DJI");
    auto evaluation = analysis::Evaluation::OfText(store, condition, options);
    std::vector<std::string> lines;
    const auto scanned =
        ScanSignals(std::move(*evaluation), wanted.market, progress_,
                    [&lines](const store::StockRecord& stock, std::span<const uint8_t> truths) {
                      std::string line(stock.code.Text());
                      line += ' ';
                      for (const uint8_t truth : truths) line += truth != 0 ? '1' : '0';
                      lines.push_back(line);
                    });
    EXPECT_TRUE(scanned);
    return lines;
  }

  support::StoreBuilder builder_;
  base::SilentProgress progress_;
  bool second_ = false;
};

TEST_F(SignalScanTest, EveryDayOfEveryStockIsLookedAtInRecordOrder) {
  EXPECT_THAT(Scan("終値(0) > 終値(-1)"),
              ElementsAre("^DJI 000000", "RISE 011111", "FALL 000000", "GAPS 000100"));
}

TEST_F(SignalScanTest, RangeBeginsWithTheHistoryBeforeItsFirstDay) {
  const Wanted scan{.days = {DayIndex(4), DayIndex(5)}};
  EXPECT_THAT(Scan("終値(0) = 移動平均(3,0) + 1", scan),
              ElementsAre("^DJI 00", "RISE 11", "FALL 00", "GAPS 00"));
  EXPECT_THAT(Scan("週間終値(0) > 週間始値(0)", scan),
              ElementsAre("^DJI 00", "RISE 11", "FALL 00", "GAPS 11"));
}

TEST_F(SignalScanTest, MarketIsObserved) {
  EXPECT_THAT(Scan("終値(0) > 0", {.market = MarketChoice::kNewYork}),
              ElementsAre("RISE 111111", "GAPS 101101"));
}

TEST_F(SignalScanTest, SecondStockIsReadOnTheSameDays) {
  EXPECT_THAT(Scan("終値(0) + 5 > 第二銘柄終値(0)", {.market = MarketChoice::kNasdaq}),
              ElementsAre("FALL 000000"));
  second_ = true;
  EXPECT_THAT(Scan("終値(0) + 5 > 第二銘柄終値(0)", {.market = MarketChoice::kNasdaq}),
              ElementsAre("FALL 111100"));
}

TEST_F(SignalScanTest, KeywordOfTheAnalysisDateIsEachDayThatIsScanned) {
  EXPECT_THAT(Scan("終値(analysisdate1) > 終値(analysisdate1-1)"),
              ElementsAre("^DJI 000000", "RISE 011111", "FALL 000000", "GAPS 000100"));
  EXPECT_THAT(Scan("終値(analysisdate2) > 0", {.market = MarketChoice::kNasdaq}),
              ElementsAre("FALL 000000"));
}

TEST_F(SignalScanTest, BareOperandIsTrueOnNoDay) {
  EXPECT_THAT(Scan("終値(0)", {.market = MarketChoice::kNasdaq}), ElementsAre("FALL 000000"));
}

TEST_F(SignalScanTest, SplitsAreAppliedOnlyWhenAskedFor) {
  builder_.Split("RISE", 2, "2020/01/08");
  const auto scan = [this](bool adjust) {
    return Scan("終値(0) > 終値(-1) * 2",
                {.market = MarketChoice::kNewYork, .adjust_splits = adjust});
  };
  EXPECT_THAT(scan(true), ElementsAre("RISE 000100", "GAPS 000000"));
  EXPECT_THAT(scan(false), ElementsAre("RISE 000000", "GAPS 000000"));
}

/// Asks to stop at once.
class StoppingProgress final : public base::Progress {
 public:
  [[nodiscard]] bool Report(std::string_view, int64_t, int64_t) override { return false; }
};

TEST_F(SignalScanTest, StopsWhenAskedTo) {
  const store::StockStore store = builder_.Open();
  auto evaluation =
      analysis::Evaluation::OfText(store, "終値(0) > 0", {.days = {DayIndex(1), DayIndex(6)}});
  StoppingProgress progress;
  int delivered = 0;
  const auto scanned = ScanSignals(
      std::move(*evaluation), MarketChoice::kAll, progress,
      [&delivered](const store::StockRecord&, std::span<const uint8_t>) { ++delivered; });
  ASSERT_FALSE(scanned);
  EXPECT_THAT(scanned.error().message, HasSubstr("中止しました"));
  EXPECT_EQ(delivered, 0);
}

}  // namespace
}  // namespace orin::screening
