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

/// A set of the four prices of a bar.
class PriceFields {
 public:
  constexpr PriceFields() = default;
  static const PriceFields kNone;
  static const PriceFields kOpen;
  static const PriceFields kHigh;
  static const PriceFields kLow;
  static const PriceFields kClose;
  static const PriceFields kRange;  // high and low
  static const PriceFields kAll;

  [[nodiscard]] constexpr bool Has(PriceFields others) const {
    return (bits_ & others.bits_) == others.bits_;
  }
  constexpr PriceFields operator|(PriceFields others) const {
    return PriceFields(bits_ | others.bits_);
  }
  constexpr bool operator==(const PriceFields&) const = default;

 private:
  constexpr explicit PriceFields(unsigned bits) : bits_(static_cast<uint8_t>(bits)) {}
  uint8_t bits_ = 0;
};
inline constexpr PriceFields PriceFields::kNone = PriceFields(0);
inline constexpr PriceFields PriceFields::kOpen = PriceFields(1);
inline constexpr PriceFields PriceFields::kHigh = PriceFields(2);
inline constexpr PriceFields PriceFields::kLow = PriceFields(4);
inline constexpr PriceFields PriceFields::kClose = PriceFields(8);
inline constexpr PriceFields PriceFields::kRange = PriceFields(6);
inline constexpr PriceFields PriceFields::kAll = PriceFields(15);

/// Bars of one stock and one period as columns, oldest first: of equal length, but for prices
/// that were not loaded, which are empty.
struct BarColumns {
  std::vector<Date> dates;
  std::vector<Currency> open;
  std::vector<Currency> high;
  std::vector<Currency> low;
  std::vector<Currency> close;
  std::vector<Currency> volume;

  [[nodiscard]] size_t Size() const { return volume.size(); }
  void Resize(size_t count, PriceFields fields = PriceFields::kAll);
  void Append(const Bar& bar);
  [[nodiscard]] Bar At(size_t position) const;
  void Put(size_t position, const Bar& bar);
};

/// Bars numbered from 1, oldest first, up to Count(). Only the bars from First() on are loaded;
/// those before it exist but must not be read. A view of columns that others own: fields that
/// were not loaded have none and must not be read either.
class BarsView {
 public:
  BarsView() = default;
  /// Views all of `columns`, whose oldest bar has the number `first`.
  explicit BarsView(const BarColumns& columns, int32_t first = 1)
      : BarsView(columns, columns.dates.data(), first) {}
  /// The same with dates kept elsewhere: dates[0] is that of the oldest bar.
  BarsView(const BarColumns& columns, const Date* dates, int32_t first)
      : dates_(Shifted(dates, first)),
        open_(Shifted(columns.open.data(), first)),
        high_(Shifted(columns.high.data(), first)),
        low_(Shifted(columns.low.data(), first)),
        close_(Shifted(columns.close.data(), first)),
        volume_(Shifted(columns.volume.data(), first)),
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
  [[nodiscard]] Date DateOf(int32_t t) const { return dates_[t]; }
  [[nodiscard]] Currency Open(int32_t t) const { return open_[t]; }
  [[nodiscard]] Currency High(int32_t t) const { return high_[t]; }
  [[nodiscard]] Currency Low(int32_t t) const { return low_[t]; }
  [[nodiscard]] Currency Close(int32_t t) const { return close_[t]; }
  [[nodiscard]] Currency Volume(int32_t t) const { return volume_[t]; }
  [[nodiscard]] bool HasData(int32_t t) const { return Volume(t) != kNoDataVolume; }

  // The place of bar t in the column of a field; those of the other bars lie around it.
  [[nodiscard]] const Currency* HighAt(int32_t t) const { return high_ + t; }
  [[nodiscard]] const Currency* LowAt(int32_t t) const { return low_ + t; }
  [[nodiscard]] const Currency* CloseAt(int32_t t) const { return close_ + t; }
  [[nodiscard]] const Currency* VolumeAt(int32_t t) const { return volume_ + t; }

 private:
  template <typename T>
  static const T* Shifted(const T* oldest, int32_t first) {
    return oldest == nullptr ? nullptr : oldest - first;
  }

  // Each so that its place t is bar t.
  const Date* dates_ = nullptr;
  const Currency* open_ = nullptr;
  const Currency* high_ = nullptr;
  const Currency* low_ = nullptr;
  const Currency* close_ = nullptr;
  const Currency* volume_ = nullptr;
  int32_t first_ = 1;
  int32_t count_ = 0;
};

}  // namespace orin::base
