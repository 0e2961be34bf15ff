#include "support/store_builder.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>

#include "base/coding.h"
#include "base/progress.h"
#include "store/store_check.h"

namespace orin::support {

namespace {

void Require(const base::Status& status) {
  if (!status) throw std::runtime_error(status.error().message);
}

/// Tests run side by side, so that each needs a directory of its own.
std::string TestName() {
  const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
  if (test == nullptr) return "";
  std::string name = std::string(test->test_suite_name()) + "_" + test->name() + "_";
  std::ranges::replace(name, '/', '_');
  return name;
}

}  // namespace

base::Date Day(std::string_view text) {
  const auto date = base::Date::Parse(text);
  if (!date) throw std::runtime_error("no date: " + std::string(text));
  return *date;
}

std::vector<base::Date> Weekdays(std::string_view first, size_t count) {
  std::vector<base::Date> days;
  for (base::Date day = Day(first); days.size() < count;
       day = base::Date::FromSerial(day.Serial() + 1)) {
    if (day.Weekday() >= 2 && day.Weekday() <= 6) days.push_back(day);
  }
  return days;
}

store::StockCode Code(std::string_view text) {
  const auto code = store::StockCode::Parse(text);
  if (!code) throw std::runtime_error(code.error().message);
  return *code;
}

base::Currency Price(double value) {
  const auto price = base::Currency::FromDouble(value);
  if (!price) throw std::runtime_error("no price: " + std::to_string(value));
  return *price;
}

base::Bar BarOf(double open, double high, double low, double close, double volume) {
  return {base::Date(), Price(open), Price(high), Price(low), Price(close), Price(volume)};
}

base::Bar FlatBar(double price, double volume) { return BarOf(price, price, price, price, volume); }

base::Bar NoBar() { return {}; }

StoreBuilder::StoreBuilder(std::string_view directory_name) {
  const auto root =
      std::filesystem::path(::testing::TempDir()) / (TestName() + std::string(directory_name));
  std::filesystem::remove_all(root);
  location_ = {root / "system", root / "data"};
}

StoreBuilder& StoreBuilder::Days(std::vector<base::Date> days) {
  days_ = std::move(days);
  return *this;
}

StoreBuilder& StoreBuilder::Stock(std::string_view code, std::vector<base::Bar> bars) {
  store::NewStock stock;
  stock.code = Code(code);
  stock.name = code;
  stock.listing = 1;
  return Stock(stock, std::move(bars));
}

StoreBuilder& StoreBuilder::Stock(const store::NewStock& stock, std::vector<base::Bar> bars) {
  stocks_.push_back(stock);
  bars_.push_back(std::move(bars));
  return *this;
}

StoreBuilder& StoreBuilder::Split(std::string_view code, double ratio,
                                  std::string_view last_day_with_rights) {
  splits_.push_back({Code(code), std::string(code), ratio, "", Day(last_day_with_rights)});
  return *this;
}

StoreBuilder& StoreBuilder::WithoutSums() {
  has_sums_ = false;
  return *this;
}

const store::StoreLocation& StoreBuilder::Build() {
  base::FileSystem& files = base::NativeFileSystem();
  Require(store::StockStore::Create(location_, files));
  if (!has_sums_) Require(files.Remove(PathOf(location_, {store::FileKind::kSums, 0})));
  auto opened = store::StockStore::Open(location_, {store::Access::kWrite, {}}, files);
  if (!opened) throw std::runtime_error(opened.error().message);
  Require(opened->AddStocks(stocks_));
  Require(opened->AddDays(days_));
  std::vector<store::BarChange> changes;
  for (size_t i = 0; i < stocks_.size(); ++i) {
    const auto& stock = opened->Master().Stock(opened->Master().Find(stocks_[i].code));
    for (size_t day = 0; day < bars_[i].size(); ++day) {
      const base::DayIndex index(static_cast<int32_t>(day) + 1);
      changes.push_back({stock.slot, index, bars_[i][day]});
    }
  }
  Require(opened->ChangeBars(changes));
  if (!splits_.empty()) Require(opened->SaveSplits(store::SplitList(splits_)));
  built_ = true;
  return location_;
}

store::StockStore StoreBuilder::Open(store::Access access) {
  if (!built_) Build();
  auto opened = store::StockStore::Open(location_, {access, {}}, base::NativeFileSystem());
  if (!opened) throw std::runtime_error(opened.error().message);
  return std::move(*opened);
}

std::vector<std::string> FindingsOf(const store::StoreLocation& location) {
  base::SilentProgress progress;
  return store::CheckStore(location, progress).value();
}

std::string Int16Bytes(int value) {
  std::string bytes(2, '\0');
  base::PutInt16(bytes.data(), static_cast<int16_t>(value));
  return bytes;
}

base::SlotRecord SlotOf(const store::StockStore& store, std::string_view code) {
  return store.Master().Stock(store.Master().Find(Code(code))).slot;
}

std::vector<base::Bar> AllBars(const store::StockStore& store, std::string_view code) {
  const auto& stock = store.Master().Stock(store.Master().Find(Code(code)));
  base::BarColumns columns;
  store.LoadBars(stock.slot, base::DayIndex(1), store.Days().Last(), columns);
  std::vector<base::Bar> bars;
  for (size_t i = 0; i < columns.Size(); ++i) bars.push_back(columns.At(i));
  return bars;
}

}  // namespace orin::support
