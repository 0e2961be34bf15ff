#include "support/mutation/store_image.h"

#include <fstream>
#include <stdexcept>
#include <unistd.h>
#include <vector>

#include "store/company_table.h"
#include "store/intraday_files.h"
#include "store/ranking_files.h"
#include "store/trend_lines.h"
#include "support/credit_files.h"
#include "support/store_builder.h"
#include "support/test_files.h"

namespace orin::support {

namespace {

namespace fs = std::filesystem;

constexpr size_t kDaysWithRoom = 103;
constexpr size_t kDaysOfFullFile = 200;

void Require(const base::Status& status) {
  if (!status) throw std::runtime_error(status.error().message);
}

std::vector<base::Bar> BarsFrom(int first, size_t days) {
  std::vector<base::Bar> bars;
  for (size_t day = 0; day < days; ++day) {
    const int price = first + static_cast<int>(day * 7 % 31);
    // A few days without trade.
    bars.push_back(day % 17 == 5 ? NoBar() : BarOf(price, price + 2, price - 1, price + 1, price));
  }
  return bars;
}

void AddCompanies(store::StockStore& store) {
  auto companies = store::CompanyTable::Load(store.Location());
  if (!companies) throw std::runtime_error(companies.error().message);
  int32_t number = 0;
  for (const store::StockRecord& stock : store.Master().Stocks()) {
    for (const char* field : {"一株利益", "単独売上高"}) {
      companies->Set(stock, *store::FindCompanyField(field), base::Currency::FromInt(++number));
    }
  }
  Require(store.SaveCompanies(*companies));
}

void AddRanking(const store::StockStore& store, base::Date date) {
  store::RankingContent ranking;
  ranking.date = date;
  for (const store::StockRecord& stock : store.Master().Stocks()) {
    store::RankedStock& ranked = ranking.stocks.emplace_back();
    ranked.code = stock.code;
    ranked.listing = stock.listing;
  }
  Require(store::WriteRankingFile(base::NativeFileSystem(), store.Location(), ranking, 3));
}

/// The files that no change of the store itself makes.
void AddCompanions(const store::StockStore& store, const std::vector<base::Date>& days) {
  const store::StoreLocation& location = store.Location();
  const base::SlotRecord slot = store.Master().Stocks()[1].slot;
  store::TrendLines lines;
  lines[0] = {days[0], Price(10), days[20], Price(12)};
  Require(store::SaveTrendLines(location, slot, lines, base::NativeFileSystem()));
  AddRanking(store, days.back());
  std::vector<std::vector<store::IntradayBar>> slots(static_cast<size_t>(slot.Value()) - 1);
  slots.back().push_back({34200, FlatBar(11)});
  PutFile(store::PathOf(location, {store::FileKind::kIntraday, 1}),
          store::EncodeIntradayFile(days.back(), slots));
  WriteCreditFile(location, 1, {days.begin(), days.begin() + 50},
                  {{slot, std::vector(50, Balance(3, 4))}});
}

}  // namespace

store::StoreLocation LocationBelow(const fs::path& root) {
  return {root / "system", root / "data"};
}

StoreImage ReadImage(const fs::path& root) {
  StoreImage image;
  for (const auto& entry : fs::recursive_directory_iterator(root)) {
    if (entry.is_regular_file()) {
      image[fs::relative(entry.path(), root).string()] = Bytes(entry.path());
    }
  }
  return image;
}

void WriteImage(const StoreImage& image, const fs::path& root) {
  for (const fs::path& directory : {root / "system", root / "data"}) {
    fs::remove_all(directory);
    fs::create_directories(directory);
  }
  for (const auto& [name, bytes] : image) std::ofstream(root / name, std::ios::binary) << bytes;
}

StoreImage MakeSoundImage(CurrentFile current_file) {
  const bool has_room = current_file == CurrentFile::kHasRoom;
  const size_t count = has_room ? kDaysWithRoom : kDaysOfFullFile;
  const std::vector<base::Date> days = Weekdays("2020/01/06", count);
  StoreBuilder builder("sound" + std::to_string(getpid()) + (has_room ? "_room" : "_full"));
  builder.Days(days).Stock("^DJI", std::vector(count, FlatBar(28000)));
  builder.Stock("AAPL", BarsFrom(300, count)).Stock("BRK.B", BarsFrom(200, count));
  builder.Stock("KO", BarsFrom(50, count)).Split("AAPL", 4, days[60].ToText());
  const fs::path root = builder.Location().system_directory.parent_path();
  {
    store::StockStore store = builder.Open(store::Access::kWrite);
    AddCompanies(store);
    AddCompanions(store, days);
  }
  NameCreditFiles(builder.Location(), 1, 1);
  StoreImage image = ReadImage(root);
  fs::remove_all(root);
  return image;
}

}  // namespace orin::support
