#include "support/mutation/store_users.h"

#include <array>

#include "acquire/csv_update.h"
#include "chart/chart_source.h"
#include "lists/price_listing.h"
#include "screening/screening_run.h"
#include "store/company_table.h"
#include "store/intraday_files.h"
#include "store/ranking_files.h"
#include "store/system_file_listing.h"
#include "store/trend_lines.h"
#include "support/store_builder.h"
#include "support/test_files.h"

namespace orin::support {

namespace {

using store::StockStore;
using store::StoreLocation;

base::Result<StockStore> OpenToRead(const StoreLocation& location) {
  return StockStore::Open(location, {}, base::NativeFileSystem());
}

base::Status ReadPeriods(const StoreLocation& location) {
  const auto store = OpenToRead(location);
  if (!store) return base::Forward(store);
  for (const store::StockRecord& stock : store->Master().Stocks()) {
    for (const auto period :
         {store::BarPeriod::kDay, store::BarPeriod::kWeek, store::BarPeriod::kMonth}) {
      static_cast<void>(lists::TableOfPrices(*store, stock, period, true).ToCsv());
    }
  }
  return {};
}

base::Status ReadCompanies(const StoreLocation& location) {
  const auto store = OpenToRead(location);
  if (!store) return base::Forward(store);
  const auto companies = store::CompanyTable::Load(location);
  if (!companies) return base::Forward(companies);
  for (const store::StockRecord& stock : store->Master().Stocks()) {
    for (const store::CompanyField& field : store::kCompanyFields) {
      static_cast<void>(companies->Value(stock, field));
    }
  }
  return {};
}

base::Status ReadCharts(const StoreLocation& location) {
  const auto store = OpenToRead(location);
  if (!store) return base::Forward(store);
  if (store->Days().Count() == 0) return {};
  for (const store::StockRecord& stock : store->Master().Stocks()) {
    chart::ChartSource source(*store, stock, nullptr, true, store::BarPeriod::kDay,
                              store->Days().Last());
    static_cast<void>(source.CreditBalances());
    if (const auto lines = source.TrendLines(); !lines) return base::Forward(lines);
    const auto intraday = source.Intraday(store->Days().DateOf(store->Days().Last()));
    if (!intraday) return base::Forward(intraday);
  }
  return {};
}

base::Status ReadSystemFiles(const StoreLocation& location) {
  for (const char* name : {"orin.sys", "orin.ind", "orin.add", "orin.del"}) {
    const auto listing = store::ListSystemFile(location.system_directory / name);
    if (!listing) return base::Forward(listing);
  }
  return {};
}

base::Status ReadRankings(const StoreLocation& location) {
  const auto rankings = store::RankingFiles::Open(location);
  if (rankings.Problems().empty()) return {};
  return base::Fail(rankings.Problems().front());
}

base::Status Screen(const StoreLocation& location) {
  const auto store = OpenToRead(location);
  if (!store) return base::Forward(store);
  if (store->Days().Count() == 0) return {};
  screening::AnalysisFile analysis;
  analysis.condition =
      "移動平均(5,0) > 週間移動平均(3,0) Or 売り残(0) >= 0 Or 一株利益() > 1 And "
      "月間終値(0) > 0";
  base::SilentProgress progress;
  std::vector<std::string> notes;
  const auto selected =
      screening::Select(*store, analysis, {store->Days().Last()}, progress, notes);
  if (!selected) return base::Fail(selected.error().message);
  return {};
}

constexpr std::array<StoreReader, 6> kReaders = {{
    {"listings", ReadPeriods},
    {"companies", ReadCompanies},
    {"charts", ReadCharts},
    {"system files", ReadSystemFiles},
    {"rankings", ReadRankings},
    {"screening", Screen},
}};

using Change = base::Status (*)(StockStore& store);

template <Change change>
base::Status Write(const StoreLocation& location, base::FileSystem& files) {
  auto store = StockStore::Open(location, {store::Access::kWrite, {}}, files);
  if (!store) return base::Forward(store);
  return change(*store);
}

base::Status AppendDay(StockStore& store) {
  std::vector<std::pair<base::SlotRecord, base::Bar>> bars;
  for (const store::StockRecord& stock : store.Master().Stocks()) {
    if (stock.slot.Value() % 2 == 0) bars.emplace_back(stock.slot, FlatBar(77));
  }
  return store.AppendDay(Day("2021/11/01"), bars);
}

base::Status AppendDays(StockStore& store) {
  return store.AddDays(std::vector{Day("2021/11/01"), Day("2021/11/02"), Day("2021/11/03")});
}

base::Status InsertDay(StockStore& store) {
  return store.AddDays(std::vector{Day("2020/01/11"), Day("2020/03/14")});
}

base::Status ChangeBars(StockStore& store) {
  const base::MasterRecord record = store.Master().Find(Code("KO"));
  if (record.IsNone()) return {};
  std::vector<store::BarChange> changes;
  for (int32_t day = 2; day <= store.Days().Count(); day += 9) {
    changes.push_back({store.Master().Stock(record).slot, base::DayIndex(day), FlatBar(55)});
  }
  return store.ChangeBars(changes);
}

base::Status AddStocks(StockStore& store) {
  return store.AddStocks(
      std::vector{store::NewStock{Code("NEW1"), "新しい銘柄"}, store::NewStock{Code("NEW2"), "n"}});
}

base::Status SaveSplits(StockStore& store) {
  return store.SaveSplits(store::SplitList({{Code("BRK.B"), "b", 2, "2", Day("2020/02/03")}}));
}

base::Status CorrectForSplit(StockStore& store) {
  const auto events = store.Splits().EventsOf(Code("AAPL"));
  if (events.empty()) return {};
  return store.CorrectForSplit(store::SplitEvent(events.front()));
}

base::Status SaveCompanies(StockStore& store) {
  auto companies = store::CompanyTable::Load(store.Location());
  if (!companies) return base::Forward(companies);
  for (const store::StockRecord& stock : store.Master().Stocks()) {
    companies->Set(stock, *store::FindCompanyField("時価総額"), base::Currency::FromInt(9));
  }
  return store.SaveCompanies(*companies);
}

base::Status Purge(StockStore& store) {
  const auto purged = store.PurgeDeletedStocks();
  return purged ? base::Status() : base::Forward(purged);
}

base::Status SaveTrendLines(const StoreLocation& location, base::FileSystem& files) {
  store::TrendLines lines;
  lines[1] = {Day("2020/01/08"), Price(5), Day("2020/02/06"), Price(6)};
  return store::SaveTrendLines(location, base::SlotRecord(3), lines, files);
}

/// The newest two days of the index come from a folder that holds nothing else.
base::Status UpdateFromCsv(const StoreLocation& location, base::FileSystem& files) {
  const std::filesystem::path folder = location.data_directory.parent_path() / "csv";
  PutFile(folder / "^DJI.csv",
          "年月日,始値,高値,安値,終値,出来高\n2021/11/01,5,5,5,5,100\n2021/11/02,6,6,6,6,100\n");
  auto store = StockStore::Open(location, {store::Access::kWrite, {}}, files);
  if (!store) return base::Forward(store);
  base::SilentProgress progress;
  const auto updated =
      acquire::UpdateFromCsv(*store, {folder, folder / "weekly", {}}, files, progress);
  return updated ? base::Status() : base::Forward(updated);
}

constexpr std::array<StoreWriter, 11> kWriters = {{
    {"append a day", Write<AppendDay>},
    {"append three days", Write<AppendDays>},
    {"insert days", Write<InsertDay>, true},
    {"change bars", Write<ChangeBars>, false, "KO"},
    {"add stocks", Write<AddStocks>},
    {"save splits", Write<SaveSplits>},
    {"correct for a split", Write<CorrectForSplit>, false, "AAPL"},
    {"save companies", Write<SaveCompanies>},
    {"purge", Write<Purge>},
    {"save trend lines", SaveTrendLines},
    {"update from CSV", UpdateFromCsv},
}};

}  // namespace

std::span<const StoreReader> StoreReaders() { return kReaders; }
std::span<const StoreWriter> StoreWriters() { return kWriters; }

}  // namespace orin::support
