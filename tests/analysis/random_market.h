#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <string_view>

#include "base/bars.h"

namespace orin::analysis {

/// Bars and expressions drawn from a seed.
class RandomMarket {
 public:
  explicit RandomMarket(uint32_t seed) : random_(seed) {}

  /// A stock of one of several temperaments: steady, listed late, with long gaps, without volume
  /// for weeks, of one price for weeks, of prices as a split leaves them, of prices so large that
  /// their sums pass what a double holds exactly.
  base::BarColumns Bars(int32_t count);

  int32_t Below(int32_t limit) {
    return static_cast<int32_t>(random_() % static_cast<uint32_t>(limit));
  }
  template <size_t count>
  std::string OneOf(const std::string_view (&texts)[count]) {
    return std::string(texts[random_() % count]);
  }

 private:
  struct Temperament;

  base::Bar NextBar(const Temperament& temperament, int32_t day, int64_t& price);

  std::mt19937 random_;
};

/// Texts of the expression language, most of which have values on most days.
class RandomExpression {
 public:
  /// `of_trades`: the prices and dates of the trade are among the items.
  explicit RandomExpression(RandomMarket& random, bool of_trades = false)
      : random_(random), of_trades_(of_trades) {}

  std::string Condition();
  std::string Operand(int depth);
  /// A call of any item of the catalogue in any of its forms, periods from 1 to `longest`.
  std::string AnyItem(int32_t longest);

 private:
  std::string Relation();
  std::string Term(int depth);
  std::string Sign();
  std::string Number();
  std::string Function();
  std::string Item();

  RandomMarket& random_;
  bool of_trades_;
};

}  // namespace orin::analysis
