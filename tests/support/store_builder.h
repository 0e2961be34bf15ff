#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "base/bars.h"
#include "store/stock_store.h"

namespace orin::support {

/// "2020/01/06"; throws where it is no date.
base::Date Day(std::string_view text);
/// `count` weekdays (Monday to Friday) from `first` on, which may itself be left out as weekend.
std::vector<base::Date> Weekdays(std::string_view first, size_t count);
store::StockCode Code(std::string_view text);
base::Currency Price(double value);
/// A bar for StoreBuilder, which fills in the date.
base::Bar BarOf(double open, double high, double low, double close, double volume);
/// open = high = low = close.
base::Bar FlatBar(double price, double volume = 100);
/// A day without data.
base::Bar NoBar();

/// Makes a store on the real disk through the public interface of the store: `system` and `data`
/// in a directory under testing::TempDir() that is the running test's own and emptied first. A
/// failure throws.
///   StoreBuilder builder("range");
///   builder.Days(Weekdays("2020/01/06", 120)).Stock("AAPL", {FlatBar(10), NoBar(), FlatBar(11)});
///   store::StockStore store = builder.Open();
class StoreBuilder {
 public:
  explicit StoreBuilder(std::string_view directory_name);

  StoreBuilder& Days(std::vector<base::Date> days);
  /// `bars` from the first day on; days without one have no data.
  StoreBuilder& Stock(std::string_view code, std::vector<base::Bar> bars = {});
  StoreBuilder& Stock(const store::NewStock& stock, std::vector<base::Bar> bars = {});
  StoreBuilder& Split(std::string_view code, double ratio, std::string_view last_day_with_rights);
  /// As an older version makes it: without checksums, which show any damaged byte.
  StoreBuilder& WithoutSums();

  [[nodiscard]] const store::StoreLocation& Location() const { return location_; }
  /// Writes the store; once only.
  const store::StoreLocation& Build();
  /// Builds where that has not been done, then opens.
  store::StockStore Open(store::Access access = store::Access::kRead);

 private:
  store::StoreLocation location_;
  std::vector<base::Date> days_;
  std::vector<store::NewStock> stocks_;
  std::vector<std::vector<base::Bar>> bars_;  // of each stock
  std::vector<store::SplitEvent> splits_;
  bool has_sums_ = true;
  bool built_ = false;
};

/// The bars of all days as stored.
std::vector<base::Bar> AllBars(const store::StockStore& store, std::string_view code);

}  // namespace orin::support
