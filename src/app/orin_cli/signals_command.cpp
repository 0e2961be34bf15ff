#include <algorithm>
#include <iostream>
#include <iterator>
#include <memory>
#include <span>
#include <utility>
#include <vector>

#include "app/orin_cli/compiled_expression.h"
#include "app/orin_cli/open_store.h"
#include "app/orin_cli/terminal_progress.h"
#include "screening/signal_scan.h"

namespace orin::app {

namespace {

struct SignalsOptions {
  std::string from;
  std::string to;
  std::string market = "全銘柄";
  std::string second;
  bool count = false;
  std::vector<std::string> in_help;  // the parser never sees an expression
};

/// The days of each stock on which the condition was true, a bit each: a condition that is true
/// everywhere takes no more memory than one that never is.
class SignalTable {
 public:
  explicit SignalTable(size_t days) : days_(days) {}

  void Add(const store::StockRecord& stock, std::span<const uint8_t> truths) {
    stocks_.push_back(&stock);
    bits_.insert(bits_.end(), truths.begin(), truths.end());
  }

  void PrintDay(size_t day, const std::string& date) const {
    for (size_t i = 0; i < stocks_.size(); ++i) {
      if (bits_[i * days_ + day]) std::cout << date << ',' << stocks_[i]->code.Text() << '\n';
    }
  }

 private:
  size_t days_;
  std::vector<const store::StockRecord*> stocks_;
  std::vector<bool> bits_;
};

base::Status Scan(analysis::Evaluation evaluation, screening::MarketChoice market,
                  const screening::StockSignals& deliver) {
  // Its bar is gone before anything is printed.
  TerminalProgress progress;
  return screening::ScanSignals(std::move(evaluation), market, progress, deliver);
}

int CountSignals(analysis::Evaluation evaluation, screening::MarketChoice market, Answer& answer) {
  int64_t count = 0;
  const auto add = [&count](const store::StockRecord&, std::span<const uint8_t> truths) {
    count += std::ssize(truths) - std::count(truths.begin(), truths.end(), uint8_t{0});
  };
  if (const auto scanned = Scan(std::move(evaluation), market, add); !scanned) {
    return answer.Report(scanned.error());
  }
  answer.Out() << count << '\n';
  return kDone;
}

int CollectSignals(analysis::Evaluation evaluation, screening::MarketChoice market,
                   Answer& answer) {
  const store::StockStore& store = evaluation.Store();
  const auto first = static_cast<size_t>(evaluation.Days().first.Value() - 1);
  const auto days = static_cast<size_t>(evaluation.Days().last.Value()) - first;
  const auto table = std::make_shared<SignalTable>(days);
  const auto add = [&table](const store::StockRecord& stock, std::span<const uint8_t> truths) {
    table->Add(stock, truths);
  };
  if (const auto scanned = Scan(std::move(evaluation), market, add); !scanned) {
    return answer.Report(scanned.error());
  }
  answer.Out() << "年月日,銘柄コード\n";
  // The lines would take a hundred times the memory of the table.
  const auto dates = store.Days().Days().subspan(first, days);
  answer.Finally([table, dates] {
    for (size_t day = 0; day < dates.size(); ++day) table->PrintDay(day, dates[day].ToText());
    return kDone;
  });
  return kDone;
}

int FindSignals(const StoreReading& reading, const SignalsOptions& options,
                screening::MarketChoice market, const std::string& condition, Answer& answer) {
  const auto second = FindSecondStock(reading.store, options.second, answer);
  const auto days = FindDays(reading.store, options.from, options.to);
  if (!days) return answer.Report(days.error());

  auto program = Compile(condition, !options.second.empty(), answer);
  if (!program) return kWrongUsage;
  if (program->IsValue()) {
    answer.Tell("条件に比較演算子（=、<>、<、<=、>、>=）がないので、成り立つ日はありません。");
  }
  auto evaluation = analysis::Evaluation::OfProgram(
      reading.store, std::move(*program),
      {.days = *days,
       .second_stock = second,
       .adjust_splits = reading.settings.chart_action.adjusts_for_splits});
  if (!evaluation) return answer.Report(evaluation.error());
  return options.count ? CountSignals(std::move(*evaluation), market, answer)
                       : CollectSignals(std::move(*evaluation), market, answer);
}

int RunSignals(const Session& session, const SignalsOptions& options) {
  if (!IsOneCondition(session.expressions)) return kWrongUsage;
  const auto market = screening::ParseMarketChoice(options.market);
  if (!market) return Report({"「" + options.market + "」という市場はありません。"});
  return AnswerFromStore(session, [&](const StoreReading& reading, Answer& answer) {
    return FindSignals(reading, options, *market, session.expressions.front(), answer);
  });
}

}  // namespace

void AddSignalsCommand(CLI::App& app, Session& session) {
  const auto options = std::make_shared<SignalsOptions>();
  CLI::App* command = app.add_subcommand("signals", "条件の成り立つ日と銘柄をすべて表示する");
  command->add_option("CONDITION", options->in_help, "条件（必須）")->type_name("");
  command->add_option("--from", options->from, "最初の日付 yyyy/mm/dd（省略時は最も古い日）")
      ->type_name("D");
  command->add_option("--to", options->to, "最後の日付 yyyy/mm/dd（省略時は最新の日）")
      ->type_name("D");
  command
      ->add_option("--market", options->market,
                   "分析上場市場（全銘柄、ＮＹ市場銘柄など。省略時は全銘柄）")
      ->type_name("M");
  command->add_option("--second", options->second, "第二銘柄の銘柄コード")->type_name("CODE");
  command->add_flag("--count", options->count, "数だけを表示する");
  command->footer("年月日,銘柄コード のＣＳＶを、日付の順に、同じ日は銘柄の登録順に表示します。");
  command->callback([&session, options] {
    if (session.expressions.empty()) throw CLI::RequiredError("CONDITION");
    session.run = [&session, options] { return RunSignals(session, *options); };
  });
}

}  // namespace orin::app
