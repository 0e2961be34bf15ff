#include "market_maker.h"

#include <algorithm>
#include <fstream>
#include <string>
#include <vector>

#include "base/bars.h"
#include "base/date.h"
#include "base/file_system.h"
#include "store/file_names.h"
#include "store/price_format.h"
#include "store/stock_store.h"

namespace orin::bench {

namespace {

using base::Bar;
using base::Currency;

/// The splitmix64 generator: one 64-bit state, good enough for prices.
class Random {
 public:
  explicit Random(uint64_t seed) : state_(seed) {}
  /// 0 <= result < bound.
  int64_t Below(int64_t bound) {
    state_ += 0x9e3779b97f4a7c15;
    uint64_t z = state_;
    z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9;
    z = (z ^ (z >> 27)) * 0x94d049bb133111eb;
    return static_cast<int64_t>((z ^ (z >> 31)) % static_cast<uint64_t>(bound));
  }

 private:
  uint64_t state_;
};

/// A stock's price on its way from day to day.
struct Walk {
  Random random;
  int64_t close;  // in cents

  explicit Walk(int32_t stock)
      : random(static_cast<uint64_t>(stock) * 7919 + 1), close(500 + random.Below(30'000)) {}
  Bar Next();
};

Bar Walk::Next() {
  if (random.Below(500) == 0) return {};
  const int64_t open = std::max<int64_t>(1, close * (9'950 + random.Below(101)) / 10'000);
  close = std::clamp<int64_t>(open * (9'800 + random.Below(402)) / 10'000, 100, 50'000'00);
  const auto price = [](int64_t cents) { return Currency::FromRaw(cents * 100); };
  Bar bar;
  bar.open = price(open);
  bar.close = price(close);
  bar.high = price(std::max(open, close) * (10'000 + random.Below(100)) / 10'000);
  bar.low = price(std::min(open, close) * (10'000 - random.Below(100)) / 10'000);
  bar.volume = Currency::FromRaw((1'000 + random.Below(20'000'000)) * Currency::kScale);
  return bar;
}

std::vector<base::Date> Weekdays(int32_t count) {
  std::vector<base::Date> days;
  base::Date day = *base::Date::FromYmd(2010, 1, 4);
  while (static_cast<int32_t>(days.size()) < count) {
    if (day.Weekday() != 1 && day.Weekday() != 7) days.push_back(day);
    day = base::Date::FromSerial(day.Serial() + 1);
  }
  return days;
}

std::vector<store::NewStock> Stocks(int32_t count) {
  std::vector<store::NewStock> stocks;
  for (int32_t i = 0; i < count; ++i) {
    constexpr const char* kIndices[] = {"^DJI", "^GSPC", "^IXIC"};
    std::string code;
    if (i < 3) {
      code = kIndices[i];
    } else {
      for (int32_t rest = i, letter = 0; letter < 4; ++letter, rest /= 26) {
        code.insert(code.begin(), static_cast<char>('A' + rest % 26));
      }
    }
    store::NewStock stock;
    stock.code = *store::StockCode::Parse(code);
    stock.name = code;
    stock.listing = static_cast<int16_t>(i < 3 ? 3 : 1 + i % 2);
    stock.kind = i < 3 ? store::kKindIndex : store::kKindCommonStock;
    stock.sector = static_cast<int16_t>(i < 3 ? 926 : 100 + 100 * (i % 9));
    stocks.push_back(std::move(stock));
  }
  return stocks;
}

/// Puts the next days of every walk into the file behind its record of dates.
base::Status FillFile(const std::filesystem::path& path, int32_t days, std::vector<Walk>& walks) {
  std::fstream file(path, std::ios::in | std::ios::out | std::ios::binary);
  file.seekp(static_cast<std::streamoff>(store::kDailyRecordLength));
  std::string record;
  for (Walk& walk : walks) {
    record = store::NoDataEntries(static_cast<size_t>(store::kDaysPerFile));
    for (int32_t day = 0; day < days; ++day) {
      store::EncodeBar(walk.Next(), record.data() + static_cast<size_t>(day) * store::kBarLength);
    }
    file.write(record.data(), static_cast<std::streamsize>(record.size()));
  }
  file.flush();
  if (!file) return base::Fail(base::PathText(path) + " に書き込めません。");
  return {};
}

}  // namespace

base::Status MakeMarket(const std::filesystem::path& directory, const MarketSize& size,
                        base::Progress& progress) {
  const store::StoreLocation location{directory, directory / "data"};
  base::FileSystem& files = base::NativeFileSystem();
  if (const auto made = store::StockStore::Create(location, files); !made) return made;
  {
    auto store = store::StockStore::Open(location, {store::Access::kWrite, {}}, files);
    if (!store) return base::Forward(store);
    if (const auto added = store->AddStocks(Stocks(size.stocks)); !added) return added;
    if (const auto added = store->AddDays(Weekdays(size.days)); !added) return added;
  }
  std::vector<Walk> walks;
  for (int32_t stock = 0; stock < size.stocks; ++stock) walks.emplace_back(stock);
  const int32_t file_count = (size.days + store::kDaysPerFile - 1) / store::kDaysPerFile;
  for (int32_t file = 1; file <= file_count; ++file) {
    if (!progress.Report("見本市場の作成", file - 1, file_count))
      return base::Fail("中止しました。");
    const auto path =
        store::PathOf(location, {store::FileKind::kDaily, static_cast<int16_t>(file)});
    const int32_t days =
        std::min(store::kDaysPerFile, size.days - (file - 1) * store::kDaysPerFile);
    if (const auto filled = FillFile(path, days, walks); !filled) return filled;
  }
  return {};
}

}  // namespace orin::bench
