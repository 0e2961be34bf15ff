#include "app/japanese_usage.h"

#include <algorithm>
#include <array>
#include <iostream>
#include <memory>
#include <string_view>

#include "app/exit_status.h"
#include "base/text.h"

namespace orin::app {

namespace {

constexpr size_t kColumnWidth = 28;

class JapaneseFormatter final : public CLI::Formatter {
 public:
  JapaneseFormatter() {
    column_width(kColumnWidth);
    label("Usage", "使い方");
    label("Positionals", "引数");
    label("Options", "オプション");
    label("OPTIONS", "オプション");
    label("SUBCOMMAND", "コマンド");
    label("SUBCOMMANDS", "コマンド");
    label("Subcommands", "コマンド");
  }

  // What else the library would tell of an option stands in its description.
  std::string make_option_opts(const CLI::Option* option) const override {
    std::string text;
    if (!option->get_type_name().empty()) text += " " + option->get_type_name();
    if (option->get_expected_max() > 1) text += " ...";
    return text;
  }

  std::string make_group(std::string group, bool is_positional,
                         std::vector<const CLI::Option*> options) const override {
    return CLI::Formatter::make_group(get_label(group), is_positional, std::move(options));
  }
  std::string make_subcommands(const CLI::App* app, CLI::AppFormatMode mode) const override {
    std::string text = CLI::Formatter::make_subcommands(app, mode);
    const std::string heading = "Subcommands:";
    if (const size_t at = text.find(heading); at != std::string::npos) {
      text.replace(at, heading.size(), "コマンド:");
    }
    return text;
  }
};

struct Explanation {
  int code;
  std::string_view sentence;
};

constexpr std::string_view kUnexpected = "余分な引数か、知らないコマンドかオプションです。";

constexpr std::array<Explanation, 7> kExplanations = {{
    {static_cast<int>(CLI::ExitCodes::RequiredError), "必要なのに指定されていません。"},
    {static_cast<int>(CLI::ExitCodes::ExtrasError), kUnexpected},
    {static_cast<int>(CLI::ExitCodes::ArgumentMismatch), "値がないか、多すぎます。"},
    {static_cast<int>(CLI::ExitCodes::ConversionError), "値が数値ではありません。"},
    {static_cast<int>(CLI::ExitCodes::ValidationError), "値が選べる値ではありません。"},
    {static_cast<int>(CLI::ExitCodes::ExcludesError), "同時に使えない引数があります。"},
    {static_cast<int>(CLI::ExitCodes::RequiresError), "一緒に必要な引数がありません。"},
}};

/// The arguments nothing took, in the order of the command line.
std::string Leftovers(const CLI::App& app) {
  std::vector<std::string> arguments = app.remaining(true);
  std::string text;
  for (const std::string& argument : arguments) text += (text.empty() ? "" : " ") + argument;
  return text;
}

/// What of the command line the error is about: the parser's own sentence ends in it or begins
/// with it.
std::string Culprit(const std::string& what) {
  constexpr std::string_view kRequired = " is required";
  constexpr std::string_view kConversion = "Could not convert: ";
  if (what.starts_with("A subcommand")) return "コマンド";
  if (what.starts_with(kConversion)) return what.substr(kConversion.size());
  if (what.ends_with(kRequired)) return what.substr(0, what.size() - kRequired.size());
  const size_t colon = what.find(": ");
  return what.substr(0, colon == std::string::npos ? what.find(' ') : colon);
}

/// "--code", "--code=AAPL" and "-h", but not "--5" or "-終値(0)".
bool IsOption(const std::string& argument) {
  if (argument == "-h") return true;
  return argument.size() > 2 && argument.starts_with("--") && argument[2] >= 'a' &&
         argument[2] <= 'z';
}

constexpr std::array<std::string_view, 4> kExpressionCommands = {"eval", "series", "signals",
                                                                 "explain"};

bool TakesExpressions(const std::string& argument) {
  return std::find(kExpressionCommands.begin(), kExpressionCommands.end(), argument) !=
         kExpressionCommands.end();
}

/// The option's value follows as an argument of its own.
bool TakesValue(const CLI::App& app, const CLI::App* command, const std::string& argument) {
  if (argument.find('=') != std::string::npos) return false;
  const CLI::Option* option = command == nullptr ? nullptr : command->get_option_no_throw(argument);
  if (option == nullptr) option = app.get_option_no_throw(argument);
  return option == nullptr || option->get_expected_max() > 0;
}

}  // namespace

void SpeakJapanese(CLI::App& app) {
  const auto formatter = std::make_shared<JapaneseFormatter>();
  app.formatter(formatter);
  app.set_help_flag("-h,--help", "この説明を表示する");
  for (CLI::App* command : app.get_subcommands({})) {
    command->formatter(formatter);
    command->set_help_flag("-h,--help", "この説明を表示する");
  }
}

int ExplainUsage(const CLI::App& app, const CLI::ParseError& error) {
  if (dynamic_cast<const CLI::CallForVersion*>(&error) != nullptr) {
    std::cout << error.what() << '\n';
    return kDone;
  }
  if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) {
    const auto chosen = app.get_subcommands();
    std::string help = chosen.empty() ? app.help() : chosen.front()->help(app.get_name());
    if (!help.ends_with('\n')) help += '\n';
    std::cout << help;
    return kDone;
  }
  const auto explanation =
      std::find_if(kExplanations.begin(), kExplanations.end(),
                   [&error](const Explanation& e) { return e.code == error.get_exit_code(); });
  const std::string_view sentence = explanation == kExplanations.end()
                                        ? std::string_view("コマンドの書き方が違います。")
                                        : explanation->sentence;
  const std::string leftovers = Leftovers(app);
  const std::string culprit = leftovers.empty() ? Culprit(error.what()) : leftovers;
  const std::string_view told = leftovers.empty() ? sentence : kUnexpected;
  std::cerr << "「" << base::PrintableLine(culprit) << "」：" << told << "使い方は "
            << app.get_name() << " --help で分かります。\n";
  return kWrongUsage;
}

std::vector<std::string> TakeExpressions(const CLI::App& app, std::vector<std::string>& arguments) {
  std::vector<std::string> kept;
  std::vector<std::string> expressions;
  const CLI::App* command = nullptr;  // one that takes expressions
  bool is_value = false;
  bool all_expressions = false;
  for (std::string& argument : arguments) {
    const bool is_option = IsOption(argument);
    if (command != nullptr && !all_expressions && argument == "--") {
      all_expressions = true;
    } else if (all_expressions || (command != nullptr && !is_option && !is_value)) {
      expressions.push_back(std::move(argument));
    } else {
      if (!is_option && !is_value && TakesExpressions(argument)) {
        command = app.get_subcommand(argument);
      }
      is_value = is_option && TakesValue(app, command, argument);
      kept.push_back(std::move(argument));
    }
  }
  arguments = std::move(kept);
  return expressions;
}

}  // namespace orin::app
