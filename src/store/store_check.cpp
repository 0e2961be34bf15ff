#include "store/store_check.h"

#include "store/check_parts.h"
#include "store/intraday_files.h"
#include "store/stored_file.h"
#include "store/transaction.h"

namespace orin::store {

std::string CheckedStore::NameForMessage(const StoreFile& file) const {
  return "「" + base::PathText(PathOf(location, file)) + "」";
}

std::string StockForMessage(const StockRecord& stock, int32_t record) {
  return "銘柄" + std::string(stock.code.Text()) + "（レコード" + std::to_string(record) + "）";
}

std::optional<std::string> ReadForCheck(const CheckedStore& store, FileKind kind,
                                        Findings& findings) {
  const StoreFile file = {kind, 0};
  const std::filesystem::path path = PathOf(store.location, file);
  if (!Exists(path)) {
    findings.Add(store.NameForMessage(file) + "がありません。");
    return std::nullopt;
  }
  auto bytes = base::ReadFile(path);
  if (bytes) return std::move(*bytes);
  findings.Add(bytes.error().message);
  return std::nullopt;
}

void CheckWholeRecords(const CheckedStore& store, const StoreFile& file, size_t length,
                       size_t record_length, Findings& findings) {
  const size_t rest = length % record_length;
  if (rest == 0) return;
  findings.Add(store.NameForMessage(file) + "の最後に" + std::to_string(record_length) +
               "バイトに満たないレコードが" + std::to_string(rest) + "バイトあります。");
}

namespace {

constexpr StoreFile kJournal = {FileKind::kJournal, 0};

/// Carries out what a dead writer has committed; fails where a live one is at it.
base::Status RecoverForCheck(const StoreLocation& location, base::FileSystem& files,
                             std::vector<std::string>& sentences) {
  const auto deadline = std::chrono::steady_clock::now() + kCommitPatience;
  const auto lock = LockForRecovery(location, deadline);
  if (!lock) return base::Forward(lock);
  if (!*lock) return {};
  const auto recovered = RecoverStore(location, files);
  if (!recovered) sentences.push_back(recovered.error().message);
  return {};
}

base::Result<std::vector<std::string>> CheckFiles(const StoreLocation& location,
                                                  base::Progress& progress, CheckScope scope) {
  CheckedStore store{location, {}, {}};
  Findings findings;
  const std::filesystem::path damaged_journal = SetAsidePathOf(location, kJournal);
  if (Exists(damaged_journal)) {
    findings.Add("「" + base::PathText(damaged_journal) +
                 "」に、壊れていたため行わなかった更新があります。");
  }
  for (const std::filesystem::path& unused : UnusedNames(location)) {
    findings.Add("「" + base::PathText(unused) +
                 "」は、大文字と小文字だけが違う名前の株価データのファイルがほかにあるので、"
                 "使われません。");
  }
  CheckMaster(store, findings);
  const base::Status prices = CheckPrices(store, progress, findings);
  if (!prices) return base::Forward(prices);
  CheckCompanions(store, findings);
  CheckSplits(store, findings);
  CheckCompanyFiles(store, findings);
  CheckCreditFiles(store, findings);
  const IntradayFiles intraday = IntradayFiles::Open(location);
  for (const std::string& problem : intraday.Problems()) findings.Add(problem);
  Findings left_out;
  const base::Status sums =
      CheckSums(store, progress, findings, scope == CheckScope::kAll ? findings : left_out);
  if (!sums) return base::Forward(sums);
  return findings.Take();
}

}  // namespace

base::Result<std::vector<std::string>> CheckStore(const StoreLocation& location,
                                                  base::Progress& progress) {
  return CheckStore(location, progress, base::NativeFileSystem());
}

base::Result<std::vector<std::string>> CheckStore(const StoreLocation& directories,
                                                  base::Progress& progress, base::FileSystem& files,
                                                  CheckScope scope) {
  const StoreLocation location = WithFoundNames(directories);
  std::error_code failure;
  if (!std::filesystem::is_directory(location.system_directory, failure)) {
    return CheckFiles(location, progress, scope);
  }
  std::vector<std::string> sentences;
  if (const auto recovered = RecoverForCheck(location, files, sentences); !recovered) {
    return base::Forward(recovered);
  }
  auto found = CheckFiles(location, progress, scope);
  if (!found) return found;
  if (!found->empty()) {
    // What a writer changes meanwhile looks like damage; only what is found again while there is
    // none is told.
    const auto lock = StoreLock::Acquire(location.system_directory);
    if (!lock) return base::Forward(lock);
    found = CheckFiles(location, progress, scope);
    if (!found) return found;
  }
  sentences.insert(sentences.end(), found->begin(), found->end());
  return sentences;
}

}  // namespace orin::store
