#include <memory>
#include <vector>

#include "app/orin_cli/answer.h"
#include "app/orin_cli/open_store.h"
#include "lists/stock_tables.h"

namespace orin::app {

namespace {

int FindStocks(const StoreReading& reading, const std::vector<std::string>& codes, Answer& answer) {
  const store::StockMaster& master = reading.store.Master();
  std::vector<base::MasterRecord> records;
  int status = kDone;
  for (const std::string& code : codes) {
    const auto stock = FindStock(reading.store, code);
    if (!stock) {
      status = answer.Report(stock.error());
      continue;
    }
    records.push_back(master.Find((*stock)->code));
  }
  if (codes.empty()) records = master.AllRecords();
  answer.Out() << lists::TableOfMaster(master, records).ToCsv("\n");
  return status;
}

}  // namespace

void AddMasterCommand(CLI::App& app, Session& session) {
  const auto codes = std::make_shared<std::vector<std::string>>();
  CLI::App* command = app.add_subcommand("master", "銘柄の一覧を表示する");
  command->add_option("CODE", *codes, "銘柄コード（省略時は全銘柄）")->type_name("");
  command->callback([&session, codes] {
    session.run = [&session, codes] {
      return AnswerFromStore(session, [&](const StoreReading& reading, Answer& answer) {
        return FindStocks(reading, *codes, answer);
      });
    };
  });
}

}  // namespace orin::app
