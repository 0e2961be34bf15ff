#include "store/header_proof.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "base/file_system.h"
#include "base/record_file.h"
#include "base/system_error.h"
#include "store/file_names.h"
#include "store/findings.h"
#include "store/price_format.h"
#include "store/price_sums.h"
#include "store/stored_file.h"

namespace orin::store {

namespace {

std::string Named(const StoreLocation& location, const StoreFile& file) {
  return "「" + base::PathText(PathOf(location, file)) + "」";
}

/// The numbers of the daily files in the data directory, ascending. A finding where the directory
/// cannot be listed; one that is missing has no files.
std::vector<int16_t> DailyNumbers(const StoreLocation& location, Findings& findings) {
  std::vector<int16_t> numbers;
  std::error_code failure;
  std::filesystem::directory_iterator entry(location.data_directory, failure);
  for (; !failure && entry != std::filesystem::directory_iterator(); entry.increment(failure)) {
    const auto file = ParseFileName(base::PathText(entry->path().filename()));
    if (file && file->kind == FileKind::kDaily) numbers.push_back(file->number);
  }
  if (failure && failure != std::errc::no_such_file_or_directory) {
    const auto unlisted =
        base::FailSystemCall(location.data_directory, "の一覧を読み込めません", failure.value());
    findings.Add(unlisted.value().message);
  }
  std::ranges::sort(numbers);
  // Two names that differ by case alone are one file to the store.
  numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
  return numbers;
}

void ProveDateCode(const std::string& master, const MasterHeader& header, base::Date last_day,
                   Findings& findings) {
  const bool is_empty = header.current_file == 0;
  if (header.date.IsNone()) {
    if (!is_empty) findings.Add(master + "の日付コードが日付ではありません。");
    return;
  }
  const std::string code = master + "の日付コード" + header.date.ToCompact();
  if (is_empty) {
    // A damaged file number, or a data directory that is not the store's.
    findings.Add(code + "に反してカレントファイルが0です。");
  } else if (!last_day.IsNone() && header.date != last_day) {
    findings.Add(code + "が株価ファイルの最新日付" + last_day.ToText() + "と違います。");
  }
}

/// An append keeps the sums of the committed days until the header counts the new ones. A file of
/// sums with nothing but later days has seen a header that was newer than this one.
void ProveSums(const StoreLocation& location, const std::string& master, const MasterHeader& header,
               Findings& findings) {
  if (header.current_file == 0) return;
  const StoreFile file = SumsOf(header.current_file);
  auto bytes = ReadIfThere(location, file);
  const auto sums = bytes ? PriceSums::Decode(file.number, std::move(*bytes)) : std::nullopt;
  if (!sums) return;
  int32_t least = 0;
  for (int bank = 0; bank < kSumBanks; ++bank) {
    const int32_t days = sums->DaysOf(bank);
    if (days == 0) continue;  // not in use
    if (days <= header.current_record) return;
    // A damaged bank may have any number.
    if (sums->Difference(bank) == 0 && (least == 0 || days < least)) least = days;
  }
  if (least == 0) return;
  findings.Add(master + "のカレントレコード" + std::to_string(header.current_record) +
               "が、チェックサムのファイル" + Named(location, file) + "にある" +
               std::to_string(least) + "日分より少ないです。");
}

/// Whether the next day begins the file `number` and is the only date in it.
bool IsLeftover(const StoreLocation& location, const MasterHeader& header, base::Date last_day,
                int16_t number) {
  const bool is_empty = header.current_file == 0;
  const int32_t next = is_empty ? header.first_file : header.current_file + 1;
  const int32_t full = is_empty ? 0 : kDaysPerFile;
  if (number != next || header.current_record != full || header.date != last_day) return false;
  const auto map = base::MappedFile::Open(PathOf(location, {FileKind::kDaily, number}));
  if (!map) return false;
  const auto dates = base::RecordView(map->Bytes(), kDailyRecordLength).Record(header.date_record);
  if (!dates) return false;
  const auto first = DecodeDateEntry(dates->data());
  const std::string_view others = dates->substr(kDateEntryLength);
  // An append writes its days and nothing else; more than one of them begins no file without a
  // journal.
  return first && !first->IsNone() && *first > last_day &&
         others.find_first_not_of('\0') == std::string_view::npos;
}

}  // namespace

HeaderProof ProveHeader(const StoreLocation& location, const MasterHeader& header,
                        base::Date last_day) {
  const std::string master = Named(location, {FileKind::kMaster, 0});
  HeaderProof proof;
  Findings findings;
  ProveDateCode(master, header, last_day, findings);
  ProveSums(location, master, header, findings);
  // Nothing in the files speaks for another number yet, and a high one would make them huge.
  if (header.current_file == 0 && header.date_record != 1) {
    findings.Add(master + "の日付レコード" + std::to_string(header.date_record) +
                 "が、株価ファイルのないときの1と違います。");
  }
  const auto outside = [&](int16_t number, const std::string& bound) {
    return "株価ファイル" + Named(location, {FileKind::kDaily, number}) + "の番号が" + master +
           "の" + bound + "です。";
  };
  const std::string before = "先頭ファイル" + std::to_string(header.first_file) + "より前";
  const std::string behind = "カレントファイル" + std::to_string(header.current_file) + "より後";
  for (const int16_t number : DailyNumbers(location, findings)) {
    if (number < header.first_file) {
      findings.AddOfKind("before", outside(number, before));
    } else if (number <= header.current_file) {
      continue;
    } else if (IsLeftover(location, header, last_day, number)) {
      proof.leftover = number;
    } else {
      findings.AddOfKind("behind", outside(number, behind));
    }
  }
  findings.EndGroup();
  proof.findings = findings.Take();
  return proof;
}

std::string RefusalFor(const std::string& finding) {
  return finding +
         "このまま更新すると株価が失われるおそれがあるので、更新しません。"
         "orin.sysか株価データ全体を控えから戻すか、使っていない株価ファイルを別の場所に移すかして"
         "ください。控えから戻したら、控えより新しい日の株価を取り込み直してください。";
}

}  // namespace orin::store
