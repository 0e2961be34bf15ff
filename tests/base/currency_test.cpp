#include "base/currency.h"

#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>

namespace orin::base {
namespace {

constexpr int64_t kMaximum = std::numeric_limits<int64_t>::max();
constexpr int64_t kMinimum = -kMaximum;

std::optional<int64_t> Raw(std::optional<Currency> value) {
  return value ? std::optional(value->Raw()) : std::nullopt;
}

TEST(Currency, LiteralsAreExactAndRoundedHalfToEven) {
  struct Case {
    std::string text;
    int64_t raw;
  };
  const std::string zeros(1000, '0');
  const std::array cases = {
      Case{"0", 0},
      Case{"-0", 0},
      Case{"7", 70000},
      Case{"-1.5", -15000},
      Case{".5", 5000},
      Case{"5.", 50000},
      Case{"0.00005", 0},
      Case{"0.00015", 2},
      Case{"0.00025", 2},
      Case{"-0.00015", -2},
      Case{"0.000049999999999999999999999999999999", 0},
      Case{"0.000050000000000000000000000000000001", 1},
      Case{"1.00005" + zeros, 10000},
      Case{"1.00005" + zeros + "1", 10001},
      Case{"1.00004" + std::string(1000, '9'), 10000},
      Case{zeros + "12.3456" + zeros, 123456},
      Case{"0.99995", 10000},
      Case{"922337203685477.5807", kMaximum},
      Case{"-922337203685477.5807", kMinimum},
      Case{"922337203685477.58074" + std::string(1000, '9'), kMaximum},
      Case{"-922337203685477.58074", kMinimum},
  };
  for (const Case& c : cases) EXPECT_EQ(Raw(Currency::Parse(c.text)), c.raw) << c.text;
}

TEST(Currency, TextThatIsNoLiteralOrLeavesTheRangeIsRefused) {
  const std::string nines(1000, '9');
  for (const std::string& text : {std::string(),
                                  std::string("-"),
                                  std::string("."),
                                  std::string("-."),
                                  std::string("+1"),
                                  std::string("1.2.3"),
                                  std::string("1e3"),
                                  std::string(" 1"),
                                  std::string("1 "),
                                  std::string("１"),
                                  std::string("--1"),
                                  std::string("0x1"),
                                  std::string("1\0", 2),
                                  std::string("922337203685477.58075"),
                                  std::string("922337203685477.5808"),
                                  std::string("-922337203685477.5808"),
                                  std::string("922337203685478"),
                                  nines,
                                  "-" + nines,
                                  nines + ".5",
                                  std::string("92233720368547758070000")}) {
    EXPECT_FALSE(Currency::Parse(text).has_value()) << text;
  }
}

/// The literal of raw / 10^decimals.
std::string Literal(int64_t raw, size_t decimals) {
  std::string digits = std::to_string(raw < 0 ? -raw : raw);
  if (digits.size() <= decimals) digits.insert(0, decimals + 1 - digits.size(), '0');
  digits.insert(digits.size() - decimals, ".");
  return (raw < 0 ? "-" : "") + digits;
}

TEST(Currency, LiteralsOfEveryLengthRoundLikeTheirFraction) {
  std::mt19937_64 random(20200110);
  for (int i = 0; i < 20000; ++i) {
    const auto raw = static_cast<int64_t>(random()) >> (random() % 60 + 1);
    const size_t decimals = random() % 19;
    Int128 numerator = raw;
    Int128 denominator = 1;
    for (size_t d = 0; d < 4; ++d) numerator *= 10;
    for (size_t d = 0; d < decimals; ++d) denominator *= 10;
    const Int128 expected = DivideHalfToEven(numerator, denominator);
    const auto value = Currency::Parse(Literal(raw, decimals));
    if (expected > kMaximum || expected < kMinimum) {
      EXPECT_FALSE(value.has_value()) << Literal(raw, decimals);
    } else {
      EXPECT_EQ(Raw(value), static_cast<int64_t>(expected)) << Literal(raw, decimals);
    }
  }
}

TEST(Currency, TextOfEveryValueReadsBackAsTheValue) {
  EXPECT_EQ(Currency::FromRaw(-5000).ToText(), "-0.5000");
  EXPECT_EQ(Currency::FromRaw(1).ToText(), "0.0001");
  EXPECT_EQ(Currency::FromRaw(kMinimum).ToText(), "-922337203685477.5807");
  std::mt19937_64 random(7);
  for (int i = 0; i < 2000; ++i) {
    const auto raw = static_cast<int64_t>(random()) >> (random() % 63);
    EXPECT_EQ(Raw(Currency::Parse(Currency::FromRaw(raw).ToText())), raw);
  }
}

TEST(Currency, ProductsAreExactIn128BitsAndRoundedHalfToEven) {
  struct Case {
    int64_t a;
    int64_t b;
    std::optional<int64_t> product;
  };
  constexpr std::array cases = {
      Case{15000, 15000, 22500},
      Case{1, 5000, 0},  // 0.00005
      Case{3, 5000, 2},  // 0.00015
      Case{-3, 5000, -2},
      Case{5, 5000, 2},  // 0.00025
      Case{1, 5001, 1},
      Case{1, 4999, 0},
      Case{-1, 4999, 0},
      Case{kMaximum, 10000, kMaximum},
      Case{kMinimum, 10000, kMinimum},
      Case{kMinimum, -10000, kMaximum},
      Case{kMaximum, 10001, std::nullopt},
      Case{kMaximum, kMaximum, std::nullopt},
      Case{kMinimum, kMinimum, std::nullopt},
      Case{303700049997, 303700049990, 9223372036605439935},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(Raw(Currency::FromRaw(c.a).Times(Currency::FromRaw(c.b))), c.product)
        << c.a << " * " << c.b;
    EXPECT_EQ(Raw(Currency::FromRaw(c.b).Times(Currency::FromRaw(c.a))), c.product);
  }
}

TEST(Currency, SumsAndSignsStopAtTheEndsOfTheRange) {
  const Currency top = Currency::FromRaw(kMaximum);
  const Currency bottom = Currency::FromRaw(kMinimum);
  const Currency least = Currency::FromRaw(1);
  EXPECT_FALSE(top.Plus(least).has_value());
  EXPECT_FALSE(bottom.Minus(least).has_value());
  EXPECT_FALSE(Currency::FromRaw(1).Minus(bottom).has_value());
  EXPECT_EQ(top.Plus(bottom), Currency());
  EXPECT_EQ(top.Negated(), bottom);
  EXPECT_EQ(bottom.Abs(), top);
}

TEST(Currency, WholePartsAreExactOnBothSidesOfZero) {
  struct Case {
    int64_t raw;
    int64_t fix;
    std::optional<int64_t> floor;
    int64_t sign;
  };
  constexpr std::array cases = {
      Case{0, 0, 0, 0},
      Case{19999, 10000, 10000, 10000},
      Case{-1, 0, -10000, -10000},
      Case{-10000, -10000, -10000, -10000},
      Case{-10001, -10000, -20000, -10000},
      Case{kMaximum, 9223372036854770000, 9223372036854770000, 10000},
      Case{kMinimum, -9223372036854770000, std::nullopt, -10000},
  };
  for (const Case& c : cases) {
    const Currency value = Currency::FromRaw(c.raw);
    EXPECT_EQ(value.Fix().Raw(), c.fix) << c.raw;
    EXPECT_EQ(Raw(value.Int()), c.floor) << c.raw;
    EXPECT_EQ(value.Sgn().Raw(), c.sign) << c.raw;
  }
}

TEST(Currency, ConversionTo32BitsRoundsHalfToEvenAndKnowsItsRange) {
  struct Case {
    const char* text;
    std::optional<int32_t> value;
  };
  constexpr std::array cases = {
      Case{"0.5", 0},
      Case{"1.5", 2},
      Case{"2.5", 2},
      Case{"-0.5", 0},
      Case{"-1.5", -2},
      Case{"2.5001", 3},
      Case{"2147483647.4999", 2147483647},
      Case{"2147483647.5", std::nullopt},
      Case{"-2147483648.5", std::numeric_limits<int32_t>::min()},
      Case{"-2147483648.5001", std::nullopt},
  };
  for (const Case& c : cases) EXPECT_EQ(Currency::Parse(c.text)->ToInt32(), c.value) << c.text;
}

TEST(Currency, DoublesRoundHalfToEvenAndUnfitOnesAreRefused) {
  struct Case {
    double value;
    std::optional<int64_t> raw;
  };
  const std::array cases = {
      Case{0.1, 1000},
      Case{63.25, 632500},
      Case{0.03125, 312},  // 312.5, 937.5: halves that double holds exactly
      Case{0.09375, 938},
      Case{-0.03125, -312},
      Case{-0.09375, -938},
      Case{0.00025, 2},
      Case{100000000000001.0, 1000000000000010000},
      Case{900719925474099.25, 9007199254740992500},
      Case{100.0 / 3, 333333},
      Case{-922337203685477.5, -9223372036854775000},
      Case{922337203685477.625, std::nullopt},
      Case{1e300, std::nullopt},
      Case{std::numeric_limits<double>::quiet_NaN(), std::nullopt},
      Case{std::numeric_limits<double>::infinity(), std::nullopt},
      Case{-std::numeric_limits<double>::infinity(), std::nullopt},
  };
  for (const Case& c : cases) EXPECT_EQ(Raw(Currency::FromDouble(c.value)), c.raw) << c.value;
}

}  // namespace
}  // namespace orin::base
