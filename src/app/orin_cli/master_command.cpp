#include <iostream>
#include <memory>
#include <vector>

#include "app/orin_cli/open_store.h"
#include "lists/table.h"

namespace orin::app {

namespace {

int RunMaster(const Session& session, const std::vector<std::string>& codes) {
  const auto opened = OpenStore(session, store::Access::kRead);
  if (!opened) return Report(opened.error());
  const store::StockMaster& master = opened->store.Master();
  std::vector<base::MasterRecord> records;
  int status = kDone;
  for (const std::string& code : codes) {
    const auto stock = FindStock(opened->store, code);
    if (!stock) {
      status = Report(stock.error());
      continue;
    }
    records.push_back(master.Find((*stock)->code));
  }
  if (codes.empty()) records = master.AllRecords();
  std::cout << lists::TableOfMaster(master, records).ToCsv("\n");
  return status;
}

}  // namespace

void AddMasterCommand(CLI::App& app, Session& session) {
  const auto codes = std::make_shared<std::vector<std::string>>();
  CLI::App* command = app.add_subcommand("master", "銘柄の一覧を表示する");
  command->add_option("CODE", *codes, "銘柄コード（省略時は全銘柄）")->type_name("");
  command->callback([&session, codes] {
    session.run = [&session, codes] { return RunMaster(session, *codes); };
  });
}

}  // namespace orin::app
