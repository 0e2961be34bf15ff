#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "base/currency.h"
#include "base/date.h"

namespace orin::base {

/// The volume of a day without data; its four prices are 0.
inline constexpr Currency kNoDataVolume = Currency::FromInt(-1);

struct Bar {
  Date date;
  Currency open;
  Currency high;
  Currency low;
  Currency close;
  Currency volume = kNoDataVolume;

  [[nodiscard]] bool HasData() const { return volume != kNoDataVolume; }
  bool operator==(const Bar&) const = default;
};

/// Bars of one stock and one period as columns of equal length, oldest first.
struct BarColumns {
  std::vector<Date> dates;
  std::vector<Currency> open;
  std::vector<Currency> high;
  std::vector<Currency> low;
  std::vector<Currency> close;
  std::vector<Currency> volume;

  [[nodiscard]] size_t Size() const { return volume.size(); }
  void Resize(size_t count);
  void Append(const Bar& bar);
  [[nodiscard]] Bar At(size_t position) const;
  void Put(size_t position, const Bar& bar);
};

/// Bars numbered from 1, oldest first, up to Count(). Only the bars from First() on are loaded;
/// those before it exist but must not be read.
class BarsView {
 public:
  BarsView() = default;
  /// Views all of `columns`, whose oldest bar has the number `first`.
  explicit BarsView(const BarColumns& columns, int32_t first = 1)
      : columns_(&columns),
        first_(first),
        count_(first + static_cast<int32_t>(columns.Size()) - 1) {}

  [[nodiscard]] int32_t First() const { return first_; }
  [[nodiscard]] int32_t Count() const { return count_; }
  /// The same bars as if bar `count` were the newest.
  [[nodiscard]] BarsView Until(int32_t count) const {
    BarsView view = *this;
    if (count < view.count_) view.count_ = count;
    return view;
  }

  // The bar `t`, First() <= t <= Count().
  [[nodiscard]] Date DateOf(int32_t t) const { return columns_->dates[Position(t)]; }
  [[nodiscard]] Currency Open(int32_t t) const { return columns_->open[Position(t)]; }
  [[nodiscard]] Currency High(int32_t t) const { return columns_->high[Position(t)]; }
  [[nodiscard]] Currency Low(int32_t t) const { return columns_->low[Position(t)]; }
  [[nodiscard]] Currency Close(int32_t t) const { return columns_->close[Position(t)]; }
  [[nodiscard]] Currency Volume(int32_t t) const { return columns_->volume[Position(t)]; }
  [[nodiscard]] bool HasData(int32_t t) const { return Volume(t) != kNoDataVolume; }

 private:
  [[nodiscard]] size_t Position(int32_t t) const { return static_cast<size_t>(t - first_); }

  const BarColumns* columns_ = nullptr;
  int32_t first_ = 1;
  int32_t count_ = 0;
};

/// Some values and whether each exists, for the bars first..last of a series.
struct ValueColumn {
  std::vector<Currency> values;
  std::vector<uint8_t> valid;

  void Reset(size_t count) {
    values.assign(count, Currency());
    valid.assign(count, 0);
  }
  void Set(size_t position, Currency value) {
    values[position] = value;
    valid[position] = 1;
  }
};

}  // namespace orin::base
