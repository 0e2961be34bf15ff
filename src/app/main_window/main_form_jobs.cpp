#include <QMessageBox>
#include <QStatusBar>
#include <utility>

#include "acquire/company_list.h"
#include "acquire/csv_update.h"
#include "analysis/items/item_catalogue.h"
#include "app/main_window/main_form.h"
#include "base/cp932.h"
#include "base/file_system.h"
#include "base/text.h"
#include "lists/stock_tables.h"
#include "shell/store_places.h"
#include "shell/ui/assistant_form.h"
#include "store/file_names.h"
#include "store/store_check.h"
#include "store/system_file_listing.h"
#include "widgets/qt_text.h"

// What the menus of the main window do with the store.

namespace orin::app {

namespace {

std::string Number(int64_t count) { return std::to_string(count); }

/// What a CSV update did, in lines.
std::string SummaryText(const acquire::CsvUpdateSummary& summary) {
  std::string text =
      summary.stopped ? "ＣＳＶ株価更新を途中で中止しました。もう一度実行すると続きから更新します。"
                      : "ＣＳＶ株価更新が終了しました。";
  text += "\nファイル：" + Number(summary.files) + "　銘柄：" + Number(summary.stocks) +
          "　取引日：" + Number(summary.days) + "　追加した銘柄：" + Number(summary.added_stocks);
  for (const std::string& told : {acquire::ProblemsSentence(summary), summary.log_failure}) {
    if (!told.empty()) text += "\n" + told;
  }
  return text;
}

base::Table TableOfItems() {
  base::Table table;
  table.columns = {base::TextColumn("項目"), base::TextColumn("引数"), base::TextColumn("分類")};
  for (const analysis::ItemGroup& group : analysis::ItemGroups()) {
    for (const analysis::ItemEntry& entry : group.rows) {
      for (const analysis::SeriesForm form : analysis::kAllForms) {
        if (!entry.HasForm(form)) continue;
        std::string labels;
        for (const std::string& label : analysis::ArgumentLabels(entry, form)) {
          labels += (labels.empty() ? "" : "、") + label;
        }
        table.rows.push_back(
            {analysis::ShownName(entry, form), std::move(labels), std::string(group.title)});
      }
    }
  }
  return table;
}

}  // namespace

void main_Form::ChangeStore(
    const std::string& stage,
    const std::function<base::Result<std::string>(store::StockStore&, base::Progress&)>& job) {
  base::Result<std::string> told;
  {
    auto opened =
        store::StockStore::Open(state_.StoreLocation(), {store::Access::kWrite, {}}, *state_.files);
    if (!opened) {
      Fail(stage, opened.error().message);
      return;
    }
    widgets::JobProgress progress(this, widgets::Text(base::StageCaption(stage)));
    told = job(*opened, progress);
  }
  // What was committed before a failure counts too.
  ReloadStore();
  if (told) {
    screen_.Questions().Inform(*told, base::StageCaption(stage));
  } else {
    Fail(stage, told.error().message);
  }
}

void main_Form::mnu_market_Click() {
  shell::assistant_Form form(state_.StoreLocation(), state_.places, *state_.files,
                             screen_.Questions());
  if (form.exec() != QDialog::Accepted) return;
  shell::ReadSettingsAnew(state_);
  ReloadStore();
  if (state_.store && !state_.initial_stock.IsNone()) OpenStock(state_.initial_stock);
}

void main_Form::mnu_update_csv_Click() {
  const auto directory = screen_.Questions().ChooseFile(
      {.caption = "日足の銘柄コード.csvのフォルダ",
       .start = settings::NativeSetting(state_.places, state_.settings.bus.daily_csv_directory),
       .choice = base::FileChoice::kDirectory});
  if (!directory) return;
  acquire::CsvUpdateSource source;
  source.daily_directory = *directory;
  source.weekly_directory =
      settings::NativeSetting(state_.places, state_.settings.bus.weekly_csv_directory);
  std::error_code failure;
  if (std::filesystem::exists(*directory / "stocks.csv", failure)) {
    source.stock_list = *directory / "stocks.csv";
  }
  ChangeStore("ＣＳＶ株価更新",
              [&](store::StockStore& store, base::Progress& progress) -> base::Result<std::string> {
                const auto summary = acquire::UpdateFromCsv(store, source, *state_.files, progress);
                if (!summary) return base::Forward(summary);
                return SummaryText(*summary);
              });
}

void main_Form::mnu_company_read_Click() {
  const auto file = screen_.Questions().ChooseFile({.caption = "会社情報のＣＳＶファイル",
                                                    .filter = "ＣＳＶファイル|*.csv|",
                                                    .start = state_.places.program_directory});
  if (!file) return;
  ChangeStore("会社情報の取り込み",
              [&](store::StockStore& store, base::Progress&) -> base::Result<std::string> {
                const auto summary = acquire::ImportCompanies(store, *file);
                if (!summary) return base::Forward(summary);
                std::string text = Number(summary->stocks) +
                                   "銘柄の会社情報を読み込みました。変わった値は" +
                                   Number(summary->values) + "件です。";
                if (!summary->problems.empty()) text += "\n" + summary->problems.front();
                return text;
              });
}

void main_Form::mnu_company_write_Click() {
  const auto file =
      screen_.Questions().ChooseFile({.caption = "会社情報の保存",
                                      .filter = "ＣＳＶファイル|*.csv|",
                                      .start = state_.places.program_directory / "会社情報.csv",
                                      .choice = base::FileChoice::kSave});
  if (!file) return;
  const auto saved = base::ReplaceFile(
      *state_.files, *file, acquire::FormatCompanyList(state_.store->Master(), state_.companies));
  if (!saved) Fail("会社情報の保存", saved.error().message);
}

void main_Form::mnu_koumoku_Click() {
  ShowTable(QStringLiteral("分析項目一覧"), TableOfItems(), QStringLiteral("items"));
}

void main_Form::mnu_check_Click() {
  const std::string stage = "株価データの検査";
  base::Result<std::vector<std::string>> findings;
  {
    widgets::JobProgress progress(this, widgets::Text(base::StageCaption(stage)));
    findings = store::CheckStore(state_.StoreLocation(), progress, *state_.files);
  }
  if (!findings) {
    Fail(stage, findings.error().message);
  } else if (findings->empty()) {
    screen_.Questions().Inform("株価データに問題はありません。", base::StageCaption(stage));
  } else {
    ShowTable(QStringLiteral("株価データの検査"), base::TableOfTexts("見つかった問題", *findings),
              QStringLiteral("trouble"));
  }
}

void main_Form::mnu_master_Click() {
  const store::StockMaster& master = state_.store->Master();
  ShowTable(QStringLiteral("銘柄マスター一覧"), lists::TableOfMaster(master, master.AllRecords()),
            QStringLiteral("main_window"));
}

void main_Form::mnu_bunkatsu_Click() {
  ShowTable(QStringLiteral("株式分割一覧"), lists::TableOfSplits(state_.store->Splits()),
            QStringLiteral("main_window"));
}

void main_Form::mnu_errorlog_Click() {
  const auto path = state_.places.program_directory / "orinerr.txt";
  std::error_code failure;
  if (!std::filesystem::exists(path, failure)) {
    screen_.Questions().Inform("エラーの記録はありません。");
    return;
  }
  const auto bytes = base::ReadFile(path);
  if (!bytes) {
    Fail("エラーの記録", bytes.error().message);
    return;
  }
  std::vector<std::string> lines;
  const std::string text = base::DecodeText(*bytes).text;
  for (const std::string_view line : base::SplitLines(text)) lines.emplace_back(line);
  ShowTable(QStringLiteral("エラーの記録"), base::TableOfTexts("記録", lines),
            QStringLiteral("trouble"));
}

void main_Form::ShowSystemFile(store::FileKind kind, const QString& caption) {
  auto tables = store::ListSystemFile(store::PathOf(state_.StoreLocation(), {kind, 0}));
  if (!tables) {
    Fail("システムファイル", tables.error().message);
    return;
  }
  ShowTable(caption, std::move(tables->back()), QStringLiteral("main_window"));
}

}  // namespace orin::app
