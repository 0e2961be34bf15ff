#include <iostream>
#include <memory>
#include <string>

#include "app/orin_cli/command.h"
#include "app/orin_cli/items_page.h"

namespace orin::app {

namespace {

struct ItemsOptions {
  std::string word;
  bool markdown = false;
  bool count = false;
};

int RunItems(const ItemsOptions& options) {
  if (options.markdown) {
    std::cout << ItemsPage();
    return kDone;
  }
  if (options.count) {
    std::cout << ItemCounts();
    return kDone;
  }
  const std::string text = ItemsText(options.word);
  if (text.empty()) return Report({"名前に「" + options.word + "」を含む分析項目はありません。"});
  std::cout << text;
  if (options.word.empty()) std::cout << '\n' << ItemCounts();
  return kDone;
}

}  // namespace

void AddItemsCommand(CLI::App& app, Session& session) {
  const auto options = std::make_shared<ItemsOptions>();
  CLI::App* command = app.add_subcommand("items", "分析項目の一覧を表示する");
  CLI::Option* word =
      command->add_option("WORD", options->word, "名前の一部（省略時はすべての項目）")
          ->type_name("");
  CLI::Option* markdown =
      command->add_flag("--markdown", options->markdown, "docs/items.md の形で表示する");
  command->add_flag("--count", options->count, "種類と形ごとの項目の数だけを表示する")
      ->excludes(word)
      ->excludes(markdown);
  markdown->excludes(word);
  command->footer(
      "項目の名前と引数を、形（日足、週間、月間、第二銘柄）ごとに１行で表示します。半角と全角、\n"
      "大文字と小文字、ひらがなとカタカナは区別しません。");
  command->callback(
      [&session, options] { session.run = [options] { return RunItems(*options); }; });
}

}  // namespace orin::app
