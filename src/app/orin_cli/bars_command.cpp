#include <map>
#include <memory>
#include <string>

#include "app/orin_cli/answer.h"
#include "app/orin_cli/open_store.h"
#include "store/stock_series.h"

namespace orin::app {

namespace {

struct BarsOptions {
  std::string code;
  std::string period = "day";
  bool raw = false;
};

const std::map<std::string, store::BarPeriod> kPeriods = {{"day", store::BarPeriod::kDay},
                                                          {"week", store::BarPeriod::kWeek},
                                                          {"month", store::BarPeriod::kMonth}};

void Print(const base::BarColumns& columns, std::ostream& out) {
  out << "年月日,始値,高値,安値,終値,出来高\n";
  for (size_t i = 0; i < columns.Size(); ++i) {
    const base::Bar bar = columns.At(i);
    if (!bar.HasData()) continue;
    out << bar.date.ToText() << ',' << bar.open.ToText() << ',' << bar.high.ToText() << ','
        << bar.low.ToText() << ',' << bar.close.ToText() << ',' << bar.volume.ToText() << '\n';
  }
}

int FindBars(const StoreReading& reading, const BarsOptions& options, Answer& answer) {
  const auto stock = FindStock(reading.store, options.code);
  if (!stock) return answer.Report(stock.error());
  const bool is_adjusted = !options.raw && reading.settings.chart_action.adjusts_for_splits;
  Print(store::LoadPeriod(reading.store, **stock, kPeriods.at(options.period), is_adjusted),
        answer.Out());
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
    session.run = [&session, options] {
      return AnswerFromStore(session, [&](const StoreReading& reading, Answer& answer) {
        return FindBars(reading, *options, answer);
      });
    };
  });
}

}  // namespace orin::app
