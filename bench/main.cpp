#include <CLI/CLI.hpp>
#include <iostream>
#include <string>
#include <vector>

#include "figures.h"
#include "market_maker.h"

namespace {

int Report(const orin::base::Status& status) {
  if (status) return 0;
  std::cerr << status.error().message << '\n';
  return 1;
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App app("ミルテの速さを計る");
  app.require_subcommand(1);
  std::string directory;
  orin::bench::MarketSize size;
  std::vector<std::string> figures;

  CLI::App* make = app.add_subcommand("make", "計測用の市場を作る");
  make->add_option("DIR", directory, "作るディレクトリ")->required();
  make->add_option("--stocks", size.stocks, "銘柄の数")->check(CLI::Range(3, 30'000));
  make->add_option("--days", size.days, "取引日の数")->check(CLI::Range(1, 90'000));

  CLI::App* run = app.add_subcommand("run", "計測値を１行ずつ表示する（名前、値、単位）");
  run->add_option("DIR", directory, "市場のディレクトリ")->required();
  run->add_option("FIGURE", figures, "計測値の名前（省略時は全部）");

  CLI11_PARSE(app, argc, argv);
  orin::base::SilentProgress progress;
  if (make->parsed()) return Report(orin::bench::MakeMarket(directory, size, progress));
  return Report(orin::bench::RunFigures(directory, figures, std::cout));
}
