#include <iostream>
#include <memory>

#include "app/orin_cli/open_store.h"
#include "store/period_bars.h"

namespace orin::app {

namespace {

struct BarsOptions {
  std::string code;
  std::string period = "day";
  bool raw = false;
};

void Print(const base::BarsView& bars) {
  std::cout << "年月日,始値,高値,安値,終値,出来高\n";
  for (int32_t t = bars.First(); t <= bars.Count(); ++t) {
    if (!bars.HasData(t)) continue;
    std::cout << bars.DateOf(t).ToText() << ',' << bars.Open(t).ToText() << ','
              << bars.High(t).ToText() << ',' << bars.Low(t).ToText() << ','
              << bars.Close(t).ToText() << ',' << bars.Volume(t).ToText() << '\n';
  }
}

int RunBars(const Session& session, const BarsOptions& options) {
  const auto opened = OpenStore(session, store::Access::kRead);
  if (!opened) return Report(opened.error());
  const store::StockStore& store = opened->store;
  const auto stock = FindStock(store, options.code);
  if (!stock) return Report(stock.error());

  base::BarColumns daily;
  if (store.Days().Count() > 0) {
    if (options.raw || !opened->settings.chart_action.bunkatsu_auto_check) {
      store.LoadBars((*stock)->slot, base::DayIndex(1), store.Days().Last(), daily);
    } else {
      store.LoadAdjustedBars(**stock, base::DayIndex(1), store.Days().Last(), daily);
    }
  }
  const base::BarsView view(daily);
  if (options.period == "day" || view.Count() == 0) {
    Print(view);
    return kDone;
  }
  store::PeriodBars periods;
  periods.Build(view, options.period == "week" ? store.Days().Weeks() : store.Days().Months());
  Print(periods.AsOf(store.Days().Last()));
  return kDone;
}

}  // namespace

void AddBarsCommand(CLI::App& app, Session& session) {
  const auto options = std::make_shared<BarsOptions>();
  CLI::App* command = app.add_subcommand("bars", "銘柄の株価を表示する");
  command->add_option("CODE", options->code, "銘柄コード（必須）")->required()->type_name("");
  command->add_option("--period", options->period, "day（日足）、week（週足）、month（月足）")
      ->check(CLI::IsMember({"day", "week", "month"}).description(""))
      ->type_name("day|week|month");
  command->add_flag("--raw", options->raw, "株式分割を調整せず、保存されているまま表示する");
  command->callback([&session, options] {
    session.run = [&session, options] { return RunBars(session, *options); };
  });
}

}  // namespace orin::app
