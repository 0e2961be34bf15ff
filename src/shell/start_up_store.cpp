#include <iterator>
#include <string>
#include <utility>

#include "shell/start_up.h"
#include "shell/start_up_stages.h"
#include "store/check_parts.h"
#include "store/file_names.h"
#include "store/name_index.h"
#include "store/stored_file.h"

namespace orin::shell {

namespace {

using store::FileKind;
using store::StoreFile;

constexpr StoreFile kMaster = {FileKind::kMaster, 0};
constexpr StoreFile kNameIndex = {FileKind::kNameIndex, 0};
constexpr const char* kStatus = "システム情報を読み込み中です。";
constexpr const char* kChangeSettings = "初期設定ファイルを変更しますか？";

std::string MissingText(const StoreFile& file) {
  return "初期設定ファイルで指定した場所に" + FileName(file) + "がありません。";
}

/// Whether the user has corrected the paths.
bool CorrectPaths(StartUpRun& run, const StoreFile& missing) {
  base::Messages& messages = run.screen.Questions();
  if (!messages.AskYesNo(MissingText(missing) + "\n" + kChangeSettings)) return false;
  if (!run.screen.EditPaths(run.state.settings)) return false;
  run.state.saved_settings = run.state.settings;
  return true;
}

enum class IndexPresence { kThere, kMissing, kLookAgain };

IndexPresence LookForIndex(StartUpRun& run, const store::StoreLocation& location) {
  if (store::Exists(location, kNameIndex)) return IndexPresence::kThere;
  // Asked about once in each place.
  const std::string told = MissingText(kNameIndex) + base::PathText(location.system_directory);
  if (run.state.told_problems.contains(told)) return IndexPresence::kMissing;
  LogProblem(run.state, StartUpStep::kSystemFiles, MissingText(kNameIndex));
  if (CorrectPaths(run, kNameIndex)) return IndexPresence::kLookAgain;
  run.state.told_problems.insert(told);
  return IndexPresence::kMissing;
}

void AddStoreProblems(StartUpRun& run) {
  for (const std::string& problem : run.state.store->Problems()) {
    // That one has been asked about.
    if (problem.starts_with(MissingText(kNameIndex))) continue;
    run.problems.Add(StartUpStep::kSystemFiles, problem);
  }
}

/// Opens the store for reading, as often as the user corrects the paths.
bool OpenStore(StartUpRun& run, bool offers_market) {
  ProgramState& state = run.state;
  for (;;) {
    const store::StoreLocation location = state.StoreLocation();
    // Before opening, which takes it for a change of the store otherwise.
    run.problems.AddFailure(StartUpStep::kSystemFiles,
                            store::StockStore::MakeMissingSplits(location, *state.files));
    auto opened = store::StockStore::Open(location, {}, *state.files);
    if (opened) {
      if (LookForIndex(run, location) == IndexPresence::kLookAgain) continue;
      state.store.emplace(std::move(*opened));
      AddStoreProblems(run);
      return true;
    }
    if (store::Exists(location, kMaster)) {
      // Without a store every call tells why.
      state.told_problems.erase(opened.error().message);
      run.problems.Add(StartUpStep::kSystemFiles, opened.error().message);
      return false;
    }
    if (std::exchange(offers_market, false)) {
      if (!run.screen.OfferMarket(state)) return false;
      ReadSettingsAnew(state);
      continue;
    }
    LogProblem(state, StartUpStep::kSystemFiles, opened.error().message);
    if (!CorrectPaths(run, kMaster)) return false;
  }
}

store::CheckedStore CheckedOf(const store::StockStore& store) {
  return {store.Location(), store.Master().Header(), store.Master()};
}

void MakeNameIndex(StartUpRun& run, const std::vector<store::IndexEntry>& known) {
  const auto bytes = store::BuildNameIndex(run.state.store->Master(), known, {});
  run.problems.AddFailure(StartUpStep::kSystemFiles, bytes);
  if (bytes) run.state.name_index = store::DecodeNameIndex(*bytes);
}

void LoadNameIndex(StartUpRun& run) {
  const store::StoreLocation& location = run.state.store->Location();
  const auto bytes = store::ReadIfThere(location, kNameIndex);
  std::vector<store::IndexEntry> entries;
  if (bytes) entries = store::DecodeNameIndex(*bytes);
  store::Findings findings;
  if (store::Exists(location, kNameIndex)) CheckIndex(CheckedOf(*run.state.store), findings);
  const std::vector<std::string> found = findings.Take();
  run.problems.AddAll(StartUpStep::kSystemFiles, found);
  if (found.empty() && bytes && !bytes->empty()) {
    run.state.name_index = std::move(entries);
  } else {
    MakeNameIndex(run, entries);
  }
}

void LoadStockList(StartUpRun& run, FileKind kind, store::StockList& list) {
  const StoreFile file = {kind, 0};
  const store::StoreLocation& location = run.state.store->Location();
  if (!store::Exists(location, file)) return;
  store::Findings findings;
  CheckList(CheckedOf(*run.state.store), kind, findings);
  run.problems.AddAll(StartUpStep::kSystemFiles, findings.Take());
  const auto bytes = base::ReadFile(PathOf(location, file));
  if (bytes) list = store::DecodeStockList(*bytes);
}

void LoadCompanies(StartUpRun& run) {
  auto companies = store::CompanyTable::Load(run.state.store->Location());
  run.problems.AddFailure(StartUpStep::kSystemFiles, companies);
  if (companies) run.state.companies = std::move(*companies);
}

void ForgetStore(ProgramState& state) {
  state.store.reset();
  state.ram_disk.reset();
  state.initial_stock = base::MasterRecord();
  state.name_index.clear();
  state.added = store::StockList();
  state.deleted = store::StockList();
  state.companies = store::CompanyTable();
}

bool LoadStage(StartUpRun& run, bool offers_market) {
  ProgramState& state = run.state;
  run.screen.ShowStatus(kStatus);
  ForgetStore(state);
  if (OpenStore(run, offers_market)) {
    LoadStockList(run, FileKind::kDeleted, state.deleted);
    LoadNameIndex(run);
    LoadStockList(run, FileKind::kAdded, state.added);
  }
  std::vector<std::string> problems;
  state.system_files = LoadSystemFiles(state.StoreLocation().system_directory, problems);
  run.problems.AddAll(StartUpStep::kSystemFiles, problems);
  if (state.store) LoadCompanies(run);
  run.problems.Show();
  return state.store.has_value();
}

}  // namespace

bool LoadSystemInformation(StartUpRun& run) { return LoadStage(run, false); }

bool LoadSystemInformationFirst(StartUpRun& run) { return LoadStage(run, true); }

}  // namespace orin::shell
