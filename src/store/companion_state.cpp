#include <algorithm>
#include <iterator>

#include "store/check_parts.h"
#include "store/companion_sums.h"
#include "store/file_names.h"
#include "store/name_index.h"
#include "store/store_state.h"

namespace orin::store {

namespace {}  // namespace

std::string MissingSentence(const StoreLocation& location, const StoreFile& file) {
  return "初期設定ファイルで指定した場所に" + FileName(file) + "がありません。（" +
         base::PathText(PathOf(location, file)) + "）";
}

void StockStore::State::ExamineCompanions() {
  const bool has_index = Exists(location, kIndexFile);
  if (!has_index) problems.push_back(MissingSentence(location, kIndexFile));
  if (options.access == Access::kRead) return;
  if (!has_index) RebuildIndex();
  const CheckedStore checked = {location, master.Header(), master};
  damaged_companions.clear();
  for (const StoreFile& file : {kIndexFile, kAddedFile}) {
    if (!Exists(location, file)) continue;
    Findings findings;
    if (file == kIndexFile) {
      CheckIndex(checked, findings);
    } else {
      CheckList(checked, file.kind, findings);
    }
    std::vector<std::string> found = findings.Take();
    if (!found.empty()) damaged_companions.push_back(file);
    std::ranges::move(found, std::back_inserter(problems));
  }
}

void StockStore::State::RebuildIndex() {
  const std::filesystem::path path = PathOf(location, kIndexFile);
  const auto index = BuildNameIndex(master, {}, {});
  base::Status made = index ? base::Status() : base::Forward(index);
  Transaction transaction(location, *files);
  CompanionSumChange sums(location);
  if (made) made = sums.Replace(kIndexFile.kind, *index, transaction);
  if (made) made = sums.AddTo(transaction);
  if (made) made = Commit(transaction);
  // The store can do without; adding stocks makes the file too.
  problems.push_back(made ? "「" + base::PathText(path) + "」をorin.sysから作り直しました。"
                          : made.error().message);
}

base::Status StockStore::State::KeepDamagedCompanions() {
  for (const StoreFile& file : damaged_companions) {
    const auto kept = KeepCopyAside(location, file, *files);
    if (!kept) return base::Forward(kept);
  }
  // What takes their place agrees; once is enough also where the change fails.
  damaged_companions.clear();
  return {};
}

}  // namespace orin::store
