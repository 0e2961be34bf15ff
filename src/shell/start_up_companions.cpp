#include <algorithm>
#include <filesystem>
#include <string>
#include <utility>

#include "settings/settings_places.h"
#include "shell/start_up_stages.h"
#include "store/file_names.h"
#include "store/list_formats.h"
#include "store/price_format.h"
#include "store/ranking_files.h"
#include "store/stored_file.h"

namespace orin::shell {

namespace {

using store::FileKind;

constexpr std::string_view kInitialCode = "^DJI";

bool HasPrices(const store::StockStore& store, const store::StockRecord& stock) {
  base::BarColumns bars;
  store.LoadAdjustedBars(stock, base::DayIndex(1), store.Days().Last(), bars);
  for (size_t i = 0; i < bars.Size(); ++i) {
    if (bars.At(i).HasData()) return true;
  }
  return false;
}

}  // namespace

void LoadTrades(StartUpRun& run) {
  ProgramState& state = run.state;
  run.screen.ShowStatus("取引明細情報を読み込み中です。");
  auto list = store::LoadRecords(
      store::kTradeFormat,
      settings::NativeSetting(state.places, state.settings.bus.trade_journal_file));
  state.trades = std::move(list.entries);
  if (list.problem) run.problems.Add(StartUpStep::kTrades, *list.problem);
  run.problems.Show();
}

void ChooseInitialStock(StartUpRun& run) {
  const store::StockMaster& master = run.state.store->Master();
  if (master.Stocks().empty()) return;
  const base::MasterRecord found = master.Find(*store::StockCode::Parse(kInitialCode));
  run.state.initial_stock = found.IsNone() ? base::MasterRecord(2) : found;
  const store::StockRecord& stock = master.Stock(run.state.initial_stock);
  if (run.state.store->Days().Count() == 0 || HasPrices(*run.state.store, stock)) return;
  run.problems.Add(
      StartUpStep::kInitialStock,
      "最初に表示する銘柄「" + std::string(stock.code.Text()) + "」の株価が一日もありません。");
}

void LoadRankings(StartUpRun& run) {
  run.problems.Show();
  run.screen.ShowStatus("ランキング情報を読み込み中です。");
  const store::StoreLocation location = run.state.StoreLocation();
  if (!store::Exists(location, {FileKind::kNewestRanking, 0})) {
    run.problems.AddFailure(StartUpStep::kRankings, CopyNewestRanking(*run.state.files, location));
  }
  const store::RankingFiles rankings = store::RankingFiles::Open(location);
  run.problems.AddAll(StartUpStep::kRankings, rankings.Problems());
  run.problems.Show();
}

void LoadPriceCompanions(StartUpRun& run) {
  run.problems.AddAll(StartUpStep::kPriceCompanions, run.state.store->LoadPriceCompanions());
  run.problems.Show();
}

}  // namespace orin::shell
