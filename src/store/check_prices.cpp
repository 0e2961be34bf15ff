#include <algorithm>
#include <array>
#include <limits>

#include "base/record_file.h"
#include "store/check_parts.h"
#include "store/header_proof.h"
#include "store/price_files.h"
#include "store/price_format.h"
#include "store/slot_account.h"
#include "store/store_state.h"
#include "store/stored_file.h"

namespace orin::store {

namespace {

struct BarRule {
  std::string_view fault;
  bool (*is_broken)(const base::Bar& bar);
};

bool AnyPrice(const base::Bar& bar, bool (*test)(base::Currency)) {
  return test(bar.open) || test(bar.high) || test(bar.low) || test(bar.close);
}

bool IsNegative(base::Currency price) { return price < base::Currency(); }
bool IsZero(base::Currency price) { return price == base::Currency(); }
bool IsNotZero(base::Currency price) { return price != base::Currency(); }

// The first rule that a bar breaks is the one told.
constexpr std::array<BarRule, 6> kBarRules = {{
    {"はデータなしですが株価が0ではありません",
     [](const base::Bar& bar) { return !bar.HasData() && AnyPrice(bar, IsNotZero); }},
    {"の出来高が負の数です",
     [](const base::Bar& bar) { return bar.HasData() && IsNegative(bar.volume); }},
    {"の株価が負の数です",
     [](const base::Bar& bar) { return bar.HasData() && AnyPrice(bar, IsNegative); }},
    // Whatever the volume: a record of zero bytes has been written by no one.
    {"はデータがありますが株価が0です",
     [](const base::Bar& bar) { return bar.HasData() && AnyPrice(bar, IsZero); }},
    {"の高値が安値より低い値です",
     [](const base::Bar& bar) { return bar.HasData() && bar.high < bar.low; }},
    {"の始値か終値が高値と安値の間にありません",
     [](const base::Bar& bar) {
       return bar.HasData() &&
              (std::max(bar.open, bar.close) > bar.high || std::min(bar.open, bar.close) < bar.low);
     }},
}};

std::string BarText(const base::Bar& bar) {
  return "（始値" + bar.open.ToText() + "、高値" + bar.high.ToText() + "、安値" + bar.low.ToText() +
         "、終値" + bar.close.ToText() + "、出来高" + bar.volume.ToText() + "）";
}

struct DailyImage {
  StoreFile file;
  std::optional<base::MappedFile> map;  // none where it cannot be read
  std::array<base::Date, kDaysPerFile> dates;

  [[nodiscard]] int32_t Records() const {
    return map ? base::RecordView(map->Bytes(), kDailyRecordLength).Count() : 0;
  }
  /// A whole record; nullopt where the file does not have it.
  [[nodiscard]] std::optional<std::string_view> Record(int32_t number) const {
    if (!map) return std::nullopt;
    return base::RecordView(map->Bytes(), kDailyRecordLength).Record(number);
  }
};

class PriceChecker {
 public:
  PriceChecker(const CheckedStore& store, Findings& findings)
      : store_(store), header_(*store.header), findings_(findings) {}

  base::Status Run(base::Progress& progress) {
    for (int32_t number = header_.first_file; number <= header_.current_file; ++number) {
      OpenFile(DailyFile(number));
    }
    CheckLengths();
    base::Date last;
    for (DailyImage& file : files_) CheckDates(file, last);
    HeaderProof proof = ProveHeader(store_.location, header_, last);
    for (std::string& finding : proof.findings) findings_.Add(std::move(finding));
    const auto stocks = store_.master.Stocks();
    for (size_t i = 0; i < stocks.size(); ++i) {
      const auto done = static_cast<int64_t>(i);
      if (!progress.Report("株価データの検査", done, static_cast<int64_t>(stocks.size()))) {
        return base::Fail("株価データの検査を中止しました。");
      }
      CheckStock(stocks[i], static_cast<int32_t>(i) + 2);
    }
    return {};
  }

 private:
  void OpenFile(const StoreFile& file) {
    DailyImage image{file, {}, {}};
    const std::filesystem::path path = PathOf(store_.location, file);
    if (!Exists(path)) {
      findings_.Add("株価ファイル" + store_.NameForMessage(file) + "がありません。");
    } else if (auto map = base::MappedFile::Open(path)) {
      CheckWholeRecords(store_, file, map->Bytes().size(), kDailyRecordLength, findings_);
      image.map.emplace(std::move(*map));
    } else {
      findings_.Add(map.error().message);
    }
    files_.push_back(std::move(image));
  }

  void CheckLengths() {
    // The same bounds as in opening, so that whatever opening refuses is told here too.
    for (const DailyImage& file : files_) longest_ = std::max(longest_, file.Records());
    const int32_t date_record = header_.date_record;
    const int32_t needed = std::max(HighestSlot(store_.master, longest_), date_record);
    const SlotAccount account = CountSlots(store_.location, store_.master, longest_);
    const int32_t most = needed + account.purged;
    for (const DailyImage& file : files_) {
      const int32_t records = file.Records();
      if (!file.map || (records >= needed && records <= most)) continue;
      findings_.Add("株価ファイル" + store_.NameForMessage(file.file) + "のレコード数" +
                    std::to_string(records) + "が必要な数" + std::to_string(needed) +
                    (records < needed ? "より少ないです。" : "より多いです。"));
    }
    // A stock lost from orin.sys may have the slots of later ones behind its own.
    if (longest_ > most || account.IsExplained()) return;
    findings_.Add(SentenceOf(account, store_.location));
  }

  [[nodiscard]] int32_t DaysIn(const DailyImage& file) const {
    return file.file.number == header_.current_file ? header_.current_record : kDaysPerFile;
  }

  void CheckDates(DailyImage& file, base::Date& last) {
    const auto record = file.Record(header_.date_record);
    for (int32_t i = 0; record && i < DaysIn(file); ++i) {
      const auto position = static_cast<size_t>(i);
      const auto date = DecodeDateEntry(record->data() + position * kDateEntryLength);
      const std::string at = "株価ファイル" + store_.NameForMessage(file.file) +
                             "の日付レコードの" + std::to_string(i + 1) + "番目";
      if (!date || date->IsNone()) {
        findings_.AddOfKind("date", at + "が日付ではありません。");
        continue;
      }
      file.dates[position] = *date;
      if (!last.IsNone() && *date <= last) {
        findings_.AddOfKind("order", at + "の日付" + date->ToText() + "が前の日付" + last.ToText() +
                                         "より後ではありません。");
      }
      last = *date;
    }
    findings_.EndGroup();
  }

  void CheckStock(const StockRecord& stock, int32_t record) {
    const int32_t slot = stock.slot.Value();
    const bool has_number = slot >= 1 && slot != header_.date_record;
    if (has_number && slot > longest_ && longest_ > 0) {
      findings_.Add(StockForMessage(stock, record) + "の銘柄レコード" + std::to_string(slot) +
                    "が株価ファイルのレコード数" + std::to_string(longest_) + "を超えています。");
    }
    if (!has_number) return;
    for (const DailyImage& file : files_) {
      const auto entries = file.Record(slot);
      for (int32_t i = 0; entries && i < DaysIn(file); ++i) {
        const auto position = static_cast<size_t>(i);
        CheckBar(DecodeBar(entries->data() + position * kBarLength, file.dates[position]), stock,
                 record);
      }
    }
    findings_.EndGroup();
  }

  void CheckBar(const base::Bar& bar, const StockRecord& stock, int32_t record) {
    for (const BarRule& rule : kBarRules) {
      if (!rule.is_broken(bar)) continue;
      findings_.AddOfKind(rule.fault, StockForMessage(stock, record) + "の" + bar.date.ToText() +
                                          std::string(rule.fault) + BarText(bar) + "。");
      return;
    }
  }

  const CheckedStore& store_;
  const MasterHeader& header_;
  Findings& findings_;
  std::vector<DailyImage> files_;
  int32_t longest_ = 0;
};

}  // namespace

base::Status CheckPrices(const CheckedStore& store, base::Progress& progress, Findings& findings) {
  if (!store.header) return {};
  return PriceChecker(store, findings).Run(progress);
}

}  // namespace orin::store
