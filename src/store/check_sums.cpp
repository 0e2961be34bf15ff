#include <algorithm>
#include <unordered_map>

#include "base/record_file.h"
#include "store/check_parts.h"
#include "store/companion_sums.h"
#include "store/price_sums.h"
#include "store/store_check.h"
#include "store/stored_file.h"

namespace orin::store {

namespace {

constexpr StoreFile kSums = {FileKind::kSums, 0};
constexpr std::string_view kMakeAnew = "株価データが正しければ orin-cli checksums で作り直せます。";
constexpr std::string_view kForce =
    "ファイルの内容が正しければ orin-cli checksums --force で作り直せます。";

class PriceSumChecker {
 public:
  PriceSumChecker(const CheckedStore& store, Findings& findings, Findings& lacking)
      : store_(store), header_(*store.header), findings_(findings), lacking_(lacking) {
    for (const StockRecord& stock : store.master.Stocks()) {
      codes_.try_emplace(stock.slot.Value(), stock.code);
    }
  }

  base::Status Run(base::Progress& progress) {
    for (int32_t number = header_.first_file; number <= header_.current_file; ++number) {
      const int32_t done = number - header_.first_file;
      const int32_t total = header_.current_file - header_.first_file + 1;
      if (!progress.Report("チェックサムの検査", done, total)) {
        return base::Fail("チェックサムの検査を中止しました。");
      }
      CheckFile(static_cast<int16_t>(number));
    }
    findings_.EndGroup();
    lacking_.EndGroup();
    return {};
  }

 private:
  [[nodiscard]] int32_t DaysOf(int16_t number) const {
    return number == header_.current_file ? header_.current_record : kDaysPerFile;
  }

  void CheckFile(int16_t number) {
    const StoreFile daily = {FileKind::kDaily, number};
    if (!Exists(store_.location, daily)) return;
    const auto prices = base::MappedFile::Open(PathOf(store_.location, daily));
    if (!prices) return;
    const std::string name = store_.NameForMessage(SumsOf(number));
    if (!Exists(store_.location, SumsOf(number))) {
      lacking_.AddOfKind(
          "missing", "チェックサムのファイル" + name + "がありません。" + std::string(kMakeAnew));
      return;
    }
    auto bytes = base::ReadFile(PathOf(store_.location, SumsOf(number)));
    const auto sums = bytes ? PriceSums::Decode(number, std::move(*bytes)) : std::nullopt;
    if (!sums) {
      lacking_.Add(name + "はチェックサムのファイルとして読めません。" + std::string(kMakeAnew));
      return;
    }
    CheckSumFile(name, *sums, base::RecordView(prices->Bytes(), kDailyRecordLength));
  }

  void CheckSumFile(const std::string& name, const PriceSums& sums,
                    const base::RecordView& prices) {
    if (sums.Records() != prices.Count()) {
      // Sums of records that the price file lacks are proof of a loss.
      const bool is_loss = sums.Records() > prices.Count();
      (is_loss ? findings_ : lacking_)
          .Add(name + "のレコード数" + std::to_string(sums.Records()) +
               "が株価ファイルのレコード数" + std::to_string(prices.Count()) + "と違います。" +
               std::string(is_loss ? kForce : kMakeAnew));
    }
    const int32_t days = DaysOf(sums.File());
    const auto bank = sums.BankFor(days);
    if (!bank) {
      lacking_.Add(name + "には" + std::to_string(sums.DaysOf(0)) + "日分と" +
                   std::to_string(sums.DaysOf(1)) + "日分のチェックサムがあり、orin.sysの示す" +
                   std::to_string(days) + "日分のものがありません。" + std::string(kMakeAnew));
      return;
    }
    if (sums.Difference(*bank) != 0) {
      lacking_.Add("チェックサムのファイル" + name + "の内容が壊れています。" +
                   std::string(kMakeAnew));
    }
    for (int32_t record = 1; record <= std::min(sums.Records(), prices.Count()); ++record) {
      CheckRecord(sums, *bank, days, record, *prices.Record(record));
    }
  }

  void CheckRecord(const PriceSums& sums, int bank, int32_t days, int32_t record,
                   std::string_view bytes) {
    const bool is_dates = record == header_.date_record;
    const SummedRecord summed = {sums.File(), record, is_dates ? kDateEntryLength : kBarLength};
    const auto in_use = bytes.substr(0, static_cast<size_t>(days) * summed.entry_length);
    if (SumOfEntries(summed, 0, in_use) == sums.Sum(bank, record)) return;
    const auto owner = codes_.find(record);
    const std::string who = is_dates ? "日付レコード"
                            : owner == codes_.end()
                                ? "銘柄レコード"
                                : "銘柄" + std::string(owner->second.Text()) + "の銘柄レコード";
    findings_.AddOfKind(
        std::to_string(record),
        "株価ファイル" + store_.NameForMessage({FileKind::kDaily, sums.File()}) + "の" + who +
            std::to_string(record) + "が、書き込んだときのチェックサム（" +
            FileName(SumsOf(sums.File())) +
            "）と違います。控えから戻すか、正しい株価をＣＳＶ株価更新で取り込み直してください。");
  }

  const CheckedStore& store_;
  const MasterHeader& header_;
  Findings& findings_;
  Findings& lacking_;
  std::unordered_map<int32_t, StockCode> codes_;  // by slot
};

/// A file that is not there is told of where it has to be there.
void CheckCompanionSum(const CheckedStore& store, const SummedCompanion& file,
                       const std::optional<CompanionSum>& stored, Findings& findings,
                       Findings& lacking) {
  const StoreFile companion = {file.kind, 0};
  const std::string name = store.NameForMessage(companion);
  if (!Exists(store.location, companion)) {
    const bool may_be_missing =
        std::ranges::find(kCompanyFiles, file.kind, &CompanyFile::kind) != kCompanyFiles.end();
    if (stored && may_be_missing) {
      findings.Add(name + "がなくなっています。控えから戻してください。");
    }
    return;
  }
  const auto bytes = ReadIfThere(store.location, companion);
  if (!bytes) return;
  const CompanionSum found = SumOfCompanion(file, *bytes);
  if (!stored) {
    lacking.Add(name + "のチェックサムがorin.sumにありません。" + std::string(kMakeAnew));
  } else if (found.records != stored->records) {
    findings.Add(name + "のレコード数" + std::to_string(found.records) + "が、書き込んだときの" +
                 std::to_string(stored->records) + "と違います。控えから戻してください。");
  } else if (found.sum != stored->sum) {
    findings.Add(name + "の内容が、書き込んだときのチェックサム（orin.sum）と違います。控えから" +
                 "戻してください。" + std::string(kForce));
  }
}

void CheckCompanionSums(const CheckedStore& store, Findings& findings, Findings& lacking) {
  const std::string name = "チェックサムのファイル" + store.NameForMessage(kSums);
  if (!Exists(store.location, kSums)) {
    lacking.Add(name + "がありません。" + std::string(kMakeAnew));
    return;
  }
  const auto sums = CompanionSums::Load(store.location);
  if (!sums) {
    lacking.Add(name + "の内容が壊れています。" + std::string(kMakeAnew));
    return;
  }
  for (const SummedCompanion& file : kSummedCompanions) {
    CheckCompanionSum(store, file, sums->Of(file.kind), findings, lacking);
  }
}

}  // namespace

bool HasSums(const StoreLocation& location) {
  if (Exists(location, kSums)) return true;
  for (int16_t number = 1; number <= kLastFileNumber; ++number) {
    if (Exists(location, SumsOf(number))) return true;
  }
  return false;
}

base::Status CheckSums(const CheckedStore& store, base::Progress& progress, Findings& findings,
                       Findings& lacking) {
  if (!HasSums(store.location)) return {};
  CheckCompanionSums(store, findings, lacking);
  if (!store.header || store.header->current_file == 0) return {};
  return PriceSumChecker(store, findings, lacking).Run(progress);
}

}  // namespace orin::store
