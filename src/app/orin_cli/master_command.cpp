#include <iostream>
#include <memory>
#include <vector>

#include "app/orin_cli/csv_field.h"
#include "app/orin_cli/open_store.h"

namespace orin::app {

namespace {

void Print(const store::StockMaster& master, base::MasterRecord record) {
  const store::StockRecord& stock = master.Stock(record);
  std::cout << record.Value() << ',' << stock.code.Text() << ',' << stock.slot.Value() << ','
            << stock.listing << ',' << stock.kind << ',' << stock.sector << ',' << stock.rank << ','
            << CsvField(stock.name) << '\n';
}

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
  if (codes.empty()) {
    for (size_t i = 0; i < master.Stocks().size(); ++i) {
      records.emplace_back(static_cast<int32_t>(i + 2));
    }
  }
  std::cout
      << "レコード,銘柄コード,銘柄レコード,上場コード,種別コード,業種コード,銘柄ランク,銘柄名\n";
  for (const base::MasterRecord record : records) Print(master, record);
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
