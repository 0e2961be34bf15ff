#include <algorithm>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "fuzz/damaged_store.h"
#include "fuzz/require.h"
#include "store/companion_formats.h"
#include "store/journal_format.h"
#include "store/master_format.h"
#include "store/name_index.h"
#include "store/price_format.h"
#include "store/splits.h"
#include "store/stock_store.h"
#include "store/store_check.h"
#include "store/trend_lines.h"

namespace {

namespace store = orin::store;
using orin::base::BarColumns;
using orin::base::DayIndex;
using orin::fuzz::Require;

/// What is read from any bytes can be written and is then read as the same.
void DecodeMaster(std::string_view bytes) {
  if (bytes.size() < store::kMasterRecordLength) return;
  const std::string_view record = bytes.substr(0, store::kMasterRecordLength);
  const store::MasterHeader header = store::DecodeMasterHeader(record);
  const auto header_bytes = store::EncodeMasterHeader(header);
  Require(store::DecodeMasterHeader(store::AsText(header_bytes)) == header, "a header stays");
  const store::StockRecord stock = store::DecodeStockRecord(record);
  const auto stock_bytes = store::EncodeStockRecord(stock);
  if (!stock_bytes) return;
  const store::StockRecord again = store::DecodeStockRecord(store::AsText(*stock_bytes));
  Require(again.code == stock.code && again.slot == stock.slot && again.name == stock.name &&
              again.reserved == stock.reserved,
          "a stock's record stays");
}

void DecodeTrendLines(std::string_view bytes) {
  if (bytes.size() < store::kTrendRecordLength) return;
  const store::TrendLines lines =
      store::DecodeTrendLines(bytes.substr(0, store::kTrendRecordLength));
  Require(store::DecodeTrendLines(store::EncodeTrendLines(lines)) == lines, "trend lines stay");
}

void DecodeEntries(std::string_view bytes) {
  if (bytes.size() >= store::kDateEntryLength) {
    const auto date = store::DecodeDateEntry(bytes.data());
    if (date)
      Require(store::DecodeDateEntry(store::EncodeDateEntry(*date).data()) == date, "dates");
  }
  if (bytes.size() >= store::kIntradayEntryLength) {
    static_cast<void>(store::DecodeIntradayBar(bytes.data()));
    static_cast<void>(store::DecodeCreditBalance(bytes.data()));
  }
}

void DecodeTexts(std::string_view bytes) {
  std::vector<std::string> problems;
  const store::SplitList splits = store::SplitList::Parse(bytes, "株式分割.txt", problems);
  if (const auto text = splits.Serialize()) {
    problems.clear();
    const auto again = store::SplitList::Parse(*text, "株式分割.txt", problems);
    Require(again.Events().size() == splits.Events().size(), "a split list stays");
  }
  const store::StockList list = store::DecodeStockList(bytes);
  const auto written = store::EncodeStockList(list);
  if (written) {
    Require(store::DecodeStockList(*written).stocks.size() == list.stocks.size(), "a list stays");
  }
  for (const store::IndexEntry& entry : store::DecodeNameIndex(bytes)) {
    static_cast<void>(store::SyllabaryKey(entry.reading));
  }
  static_cast<void>(store::DecodeJournal(bytes));
}

void ReadAll(const store::StockStore& opened) {
  BarColumns bars;
  const DayIndex last = opened.Days().Last();
  for (const store::StockRecord& stock : opened.Master().Stocks()) {
    opened.LoadBars(stock.slot, DayIndex(1), last, bars);
    Require(bars.Size() == static_cast<size_t>(last.Value()), "every day has a bar");
    opened.LoadAdjustedBars(stock, DayIndex(std::max(1, last.Value() - 2)), last, bars);
  }
  static_cast<void>(opened.Master().GroupBySector());
  static_cast<void>(opened.DaysOfFile(opened.FirstFile()));
}

/// Each change may be refused, but must leave a store that can be opened.
void ChangeAll(store::StockStore& opened) {
  const auto price = orin::base::Currency::FromInt(1);
  const orin::base::Bar bar = {{}, price, price, price, price, price};
  const int32_t count = opened.Days().Count();
  if (count > 0) {
    const auto newest = opened.Days().DateOf(opened.Days().Last());
    const auto next = orin::base::Date::FromSerial(newest.Serial() + 1);
    static_cast<void>(opened.AppendDay(next, {}));
    const std::vector<store::BarChange> change = {
        {orin::base::SlotRecord(3), DayIndex(count), bar}};
    static_cast<void>(opened.ChangeBars(change));
  }
  const std::vector<store::NewStock> stock = {
      {*store::StockCode::Parse("NEW"), "新銘柄", 1, 1, 100}};
  static_cast<void>(opened.AddStocks(stock));
  if (!opened.Splits().Events().empty()) {
    const store::SplitEvent event = opened.Splits().Events().front();
    static_cast<void>(opened.CorrectForSplit(event));
  }
  static_cast<void>(opened.PurgeDeletedStocks());
}

size_t CountFindings(const store::StoreLocation& location, orin::base::FileSystem& files) {
  orin::base::SilentProgress progress;
  const auto findings = store::CheckStore(location, progress, files);
  Require(findings.has_value(), "a check that is not stopped is finished");
  return findings->size();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  DecodeMaster(input);
  DecodeTrendLines(input);
  DecodeEntries(input);
  DecodeTexts(input);

  static const orin::fuzz::DamagedStore damaged;
  static orin::fuzz::SmallDisk disk;
  damaged.Write(input);
  const store::StoreLocation& location = damaged.Location();
  const size_t before = CountFindings(location, disk);
  if (const auto opened = store::StockStore::Open(location, {}, disk)) ReadAll(*opened);
  const store::OpenOptions from_second_file = {store::Access::kRead, int16_t{2}};
  if (const auto opened = store::StockStore::Open(location, from_second_file, disk)) {
    ReadAll(*opened);
  }
  bool changed = false;
  if (auto opened = store::StockStore::Open(location, {store::Access::kWrite, {}}, disk)) {
    ReadAll(*opened);
    ChangeAll(*opened);
    ReadAll(*opened);
    changed = true;
  }
  if (changed) {
    Require(store::StockStore::Open(location, {}, disk).has_value(),
            "a changed store can be opened");
  }
  if (before == 0) Require(CountFindings(location, disk) == 0, "a sound store stays sound");
  return 0;
}
