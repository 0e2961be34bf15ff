#include <algorithm>
#include <iostream>
#include <memory>
#include <vector>

#include "app/orin_cli/answer.h"
#include "app/orin_cli/open_store.h"
#include "lists/stock_tables.h"

namespace orin::app {

namespace {

struct SplitsOptions {
  std::vector<std::string> added;  // CODE, ratio and last day with rights, parted by commas
  std::string corrected;           // CODE
};

base::Result<store::SplitEvent> ParseEvent(const store::StockStore& store,
                                           const std::string& text) {
  const size_t first = text.find(',');
  const size_t second = first == std::string::npos ? first : text.find(',', first + 1);
  if (second == std::string::npos) {
    return base::Fail("「" + text + "」は 銘柄コード,分割倍率,権利付最終日 の形ではありません。");
  }
  const auto stock = FindStock(store, text.substr(0, first));
  if (!stock) return base::Forward(stock);
  store::SplitEvent event;
  event.code = (*stock)->code;
  event.name = (*stock)->name;
  event.ratio_text = text.substr(first + 1, second - first - 1);
  const auto ratio = store::ParseSplitRatio(event.ratio_text);
  if (!ratio) return base::Forward(ratio);
  event.ratio = *ratio;
  const auto date = base::Date::Parse(text.substr(second + 1));
  if (!date) {
    return base::Fail("権利付最終日「" + text.substr(second + 1) +
                      "」は日付（yyyy/mm/dd）ではありません。");
  }
  event.last_day_with_rights = *date;
  return event;
}

base::Status Add(store::StockStore& store, const std::vector<std::string>& added) {
  std::vector<store::SplitEvent> events(store.Splits().Events().begin(),
                                        store.Splits().Events().end());
  for (const std::string& text : added) {
    auto event = ParseEvent(store, text);
    if (!event) return base::Forward(event);
    const bool known = std::any_of(events.begin(), events.end(), [&event](const auto& other) {
      return other.code == event->code && other.last_day_with_rights == event->last_day_with_rights;
    });
    if (known) {
      return base::Fail("「" + text + "」の銘柄と権利付最終日は株式分割.txtにすでにあります。");
    }
    events.push_back(std::move(*event));
  }
  return store.SaveSplits(store::SplitList(std::move(events)));
}

/// Writes every event of one stock into its stored prices.
base::Status Correct(store::StockStore& store, const std::string& code) {
  const auto stock = FindStock(store, code);
  if (!stock) return base::Forward(stock);
  const auto known = store.Splits().EventsOf((*stock)->code);
  const std::vector<store::SplitEvent> events(known.begin(), known.end());
  if (events.empty()) return base::Fail(code + " の株式分割は株式分割.txtにありません。");
  for (const store::SplitEvent& event : events) {
    if (const base::Status done = store.CorrectForSplit(event); !done) return done;
  }
  return {};
}

int ChangeSplits(const Session& session, const SplitsOptions& options) {
  auto opened = OpenForChange(session);
  if (!opened) return Report(opened.error());
  if (!options.added.empty()) {
    if (const auto done = Add(opened->store, options.added); !done) return Report(done.error());
  }
  if (!options.corrected.empty()) {
    const auto done = Correct(opened->store, options.corrected);
    if (!done) return Report(done.error());
  }
  std::cout << lists::TableOfSplits(opened->store.Splits()).ToCsv("\n");
  return kDone;
}

int RunSplits(const Session& session, const SplitsOptions& options) {
  if (!options.added.empty() || !options.corrected.empty()) return ChangeSplits(session, options);
  return AnswerFromStore(session, [](const StoreReading& reading, Answer& answer) {
    answer.Out() << lists::TableOfSplits(reading.store.Splits()).ToCsv("\n");
    return kDone;
  });
}

}  // namespace

void AddSplitsCommand(CLI::App& app, Session& session) {
  const auto options = std::make_shared<SplitsOptions>();
  CLI::App* command = app.add_subcommand("splits", "株式分割を表示、追加、株価に反映する");
  command->add_option("--add", options->added, "株式分割.txtに追加する")
      ->type_name("CODE,倍率,権利付最終日")
      ->take_all();
  command
      ->add_option("--correct", options->corrected,
                   "銘柄の株式分割を保存されている株価に書き込み、株式分割.txtから除く")
      ->type_name("CODE");
  command->callback([&session, options] {
    session.run = [&session, options] { return RunSplits(session, *options); };
  });
}

}  // namespace orin::app
