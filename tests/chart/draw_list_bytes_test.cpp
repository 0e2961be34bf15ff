#include "chart/draw_list_bytes.h"

#include <gtest/gtest.h>
#include <limits>
#include <random>

#include "base/coding.h"
#include "chart/ink_mode.h"
#include "chart_fixture.h"

namespace orin::chart {
namespace {

using store::BarPeriod;

constexpr size_t kHeader = 24;  // mark, width, height, ink and count

/// One item of every kind, each field another number.
DrawList EveryKind() {
  const Ink ink = {{1, 2, 3}, InkRole::kSeries, 4, 200, Dash::kDot, Hatch::kCross};
  DrawList picture{640, 480, {{250, 251, 252}, InkRole::kGround}, {}};
  picture.items = {Boxes{ink, {{1, 2, 3, 4}, {-5, -6, 0, -8}}},
                   Frames{ink, 2, {{9, 10, 11, 12}}},
                   Line{ink, 1.5, {{0.25, -1e6}, {3, 4}}},
                   Surface{ink, {}},
                   Marks{ink, MarkShape::kCircle, 2.5, 0.5, {{5, 6}}},
                   Label{ink, {7, 8}, Align::kCenter, 11.5, "銘柄：AAPL"},
                   Clip{{13, 14, 15, 16}}};
  return picture;
}

bool IsRead(const DrawList& picture) { return ReadDrawList(DrawListBytes(picture)).has_value(); }

TEST(DrawListBytes, EveryFieldComesBack) {
  const std::string bytes = DrawListBytes(EveryKind());
  const auto read = ReadDrawList(bytes);
  ASSERT_TRUE(read);
  EXPECT_EQ(Described(*read), Described(EveryKind()));
  EXPECT_EQ(std::get<Line>(read->items[2]).ink,
            (Ink{{1, 2, 3}, InkRole::kSeries, 4, 200, Dash::kDot, Hatch::kCross}));
  EXPECT_EQ(std::get<Line>(read->items[2]).points[0], (Point{0.25, -1e6}));
  EXPECT_EQ(std::get<Marks>(read->items[4]).width, 0.5);
  EXPECT_EQ(std::get<Frames>(read->items[1]).width, 2);
  EXPECT_EQ(std::get<Label>(read->items[5]).size, 11.5);
  EXPECT_EQ(DrawListBytes(*read), bytes);
}

TEST(DrawListBytes, ChartsOfEveryKindAndSizeAreTaken) {
  const store::StockStore store = RealMarket("bytes", 200);
  const settings::Settings settings = DefaultSettings();
  for (const BarPeriod period : {BarPeriod::kDay, BarPeriod::kWeek, BarPeriod::kMonth}) {
    ChartSource source(store, store.Master().Stock(base::MasterRecord(3)),
                       &store.Master().Stock(base::MasterRecord(2)), true, period,
                       store.Days().Last());
    ChartOptions options;
    options.sub_charts = SubChartsOf(period);
    const int32_t last = source.Bars().Count();
    const Chart chart = BuildChart(source, settings, options, {1, last, 3});
    for (const PictureSize& size : {PictureSize{1, 1, 1}, PictureSize{4000, 16'000, 4}}) {
      const DrawList picture = InMode(LayOut(chart, size).picture, InkMode::kPattern);
      const std::string bytes = DrawListBytes(picture);
      const auto read = ReadDrawList(bytes);
      ASSERT_TRUE(read);
      EXPECT_EQ(DrawListBytes(*read), bytes);
    }
  }
}

TEST(DrawListBytes, CutOrLengthenedTheyAreRefused) {
  const std::string bytes = DrawListBytes(EveryKind());
  for (size_t length = 0; length < bytes.size(); ++length) {
    EXPECT_FALSE(ReadDrawList(std::string_view(bytes).substr(0, length))) << length;
  }
  EXPECT_FALSE(ReadDrawList(bytes + '\0'));
  EXPECT_EQ(ReadDrawList("rubbish").error().message, "渡された図のデータが壊れています。");
}

TEST(DrawListBytes, CountsBeyondTheBytesReserveNoMemory) {
  std::string bytes = DrawListBytes(EveryKind());
  base::PutUint32(bytes.data() + kHeader - 4, std::numeric_limits<uint32_t>::max());
  EXPECT_FALSE(ReadDrawList(bytes));
  bytes = DrawListBytes({10, 10, {}, {Surface{}}});
  base::PutUint32(bytes.data() + bytes.size() - 4, std::numeric_limits<uint32_t>::max());
  EXPECT_FALSE(ReadDrawList(bytes));
  bytes = DrawListBytes({10, 10, {}, {Label{}}});
  base::PutUint32(bytes.data() + bytes.size() - 4, std::numeric_limits<uint32_t>::max());
  EXPECT_FALSE(ReadDrawList(bytes));
}

TEST(DrawListBytes, WhatNoPainterCanTakeIsRefused) {
  constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
  constexpr double kEndless = std::numeric_limits<double>::infinity();
  EXPECT_TRUE(IsRead({10'000, 10'000, {}, {}}));
  for (const auto& [width, height] :
       {std::pair{0, 10}, {10, 0}, {-1, 10}, {10'001, 10'000}, {2'000'000'000, 1}}) {
    EXPECT_FALSE(IsRead({width, height, {}, {}})) << width << 'x' << height;
  }
  for (const double far : {kNan, kEndless, -kEndless, 1e8}) {
    EXPECT_FALSE(IsRead({10, 10, {}, {Line{{}, 1, {{0, far}}}}})) << far;
    EXPECT_FALSE(IsRead({10, 10, {}, {Line{{}, far, {}}}})) << far;
    EXPECT_FALSE(IsRead({10, 10, {}, {Label{{}, {far, 0}, Align::kLeft, 12, "x"}}})) << far;
  }
  EXPECT_FALSE(IsRead({10, 10, {}, {Marks{{}, MarkShape::kDot, -1, 1, {}}}}));
  EXPECT_FALSE(IsRead({10, 10, {}, {Boxes{{}, {{0, 0, 2'000'000'000, 1}}}}}));
  EXPECT_FALSE(IsRead({10, 10, {}, {Label{{}, {}, static_cast<Align>(3), 12, "x"}}}));
  EXPECT_FALSE(IsRead({10, 10, {{}, static_cast<InkRole>(6)}, {}}));
}

TEST(DrawListBytes, RandomDamageIsRefusedOrStaysWithinBounds) {
  const std::string bytes = DrawListBytes(EveryKind());
  std::mt19937 random(1);
  const auto below = [&random](size_t count) {
    return std::uniform_int_distribution<size_t>(0, count - 1)(random);
  };
  int taken = 0;
  for (int i = 0; i < 20'000; ++i) {
    std::string damaged = bytes;
    for (size_t n = 1 + below(4); n > 0; --n) {
      damaged[below(damaged.size())] = static_cast<char>(below(256));
    }
    const auto read = ReadDrawList(damaged);
    if (!read) continue;
    ++taken;
    EXPECT_EQ(DrawListBytes(*read), damaged);
  }
  // Damaged colours and places within the bounds are still a picture.
  EXPECT_GT(taken, 100);
}

}  // namespace
}  // namespace orin::chart
