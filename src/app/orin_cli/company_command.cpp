#include <iostream>
#include <memory>
#include <string>

#include "acquire/company_list.h"
#include "app/orin_cli/answer.h"
#include "app/orin_cli/open_store.h"

namespace orin::app {

namespace {

struct CompanyOptions {
  std::string file;
  bool list = false;
};

int ImportFile(store::StockStore& store, const std::string& file) {
  const auto summary = acquire::ImportCompanies(store, file);
  if (!summary) return Report(summary.error());
  for (const std::string& problem : summary->problems) Tell(problem);
  std::cout << summary->rows << ',' << summary->stocks << ',' << summary->values << '\n';
  return kDone;
}

base::Result<std::string> List(const store::StockStore& store) {
  const auto companies = store::CompanyTable::Load(store.Location());
  if (!companies) return base::Forward(companies);
  return acquire::FormatCompanyList(store.Master(), *companies);
}

int ShowList(const Session& session) {
  return AnswerFromStore(session, [](const StoreReading& reading, Answer& answer) {
    const auto list = List(reading.store);
    if (!list) return answer.Report(list.error());
    answer.Out() << *list;
    return kDone;
  });
}

int RunCompany(const Session& session, const CompanyOptions& options) {
  if (options.file.empty()) return ShowList(session);
  auto opened = OpenForChange(session);
  if (!opened) return Report(opened.error());
  const int status = ImportFile(opened->store, options.file);
  if (status != kDone || !options.list) return status;
  const auto list = List(opened->store);
  if (!list) return Report(list.error());
  std::cout << *list;
  return kDone;
}

}  // namespace

void AddCompanyCommand(CLI::App& app, Session& session) {
  const auto options = std::make_shared<CompanyOptions>();
  CLI::App* command = app.add_subcommand("company", "会社情報と財務を取り込む、表示する");
  command->add_option("FILE", options->file, "取り込むＣＳＶファイル（省略時は一覧を表示する）")
      ->type_name("");
  command->add_flag("--list", options->list, "取り込みの後で一覧を表示する");
  command->footer(
      "見出しは 銘柄コード と項目の名前（時価総額、株価収益率、単独売上高、連結売上高 など）で、\n"
      "順番は自由です。空の欄は今の値を残し、- は値を不明にします。\n"
      "読み込んだ行数,銘柄数,変わった値の数 を１行で表示します。一覧は取り込める形です。");
  command->callback([&session, options] {
    session.run = [&session, options] { return RunCompany(session, *options); };
  });
}

}  // namespace orin::app
