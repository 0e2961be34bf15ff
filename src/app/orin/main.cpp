#include <CLI/CLI.hpp>
#include <QApplication>
#include <QIcon>
#include <QTimer>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <map>
#include <string>

#include "app/japanese_usage.h"
#include "app/main_window/main_form.h"
#include "app/main_window/start_screen.h"
#include "base/file_system.h"
#include "base/text.h"
#include "shell/program_places.h"
#include "widgets/look.h"
#include "widgets/qt_messages.h"
#include "widgets/qt_text.h"

namespace orin::app {

namespace {

struct Options {
  std::string home = shell::DefaultProgramDirectory().string();
  std::string ini;
  std::string theme;
  bool close_when_ready = false;
};

const std::map<std::string, widgets::Theme> kThemes = {{"system", widgets::Theme::kSystem},
                                                       {"light", widgets::Theme::kLight},
                                                       {"dark", widgets::Theme::kDark}};

/// Until there are windows the toolkit can only fail for want of a display; it would end the
/// program with a message of its own and a dump.
void TellWithoutDisplay(QtMsgType type, const QMessageLogContext&, const QString&) {
  if (type != QtFatalMsg) return;
  std::cerr
      << "画面に接続できないので、ミルテのウィンドウを開けません（DISPLAY または WAYLAND_DISPLAY を"
         "確かめてください）。\n";
  std::_Exit(1);
}

int Run(const Options& options) {
  const auto places = shell::PlacesOf(options.home, options.ini);
  if (!places) {
    std::cerr << base::Printable(places.error().message) << '\n';
    return 2;
  }
  const widgets::Look look;
  look.Apply(widgets::Theme::kSystem, 100);
  QApplication::setWindowIcon(QIcon(widgets::IconPath()));
  if (!widgets::HasJapaneseFont()) {
    std::cerr << "日本語のフォントがないので、文字が正しく表示されません（fonts-noto-cjk などを"
                 "入れてください）。\n";
  }

  widgets::QtMessages messages;
  app::StartScreen screen(*places, base::NativeFileSystem(), messages);
  screen.ShowLogo();
  const auto state = shell::StartUp(*places, base::NativeFileSystem(), screen);
  if (const auto theme = kThemes.find(options.theme); theme != kThemes.end()) {
    state->settings.window.theme = static_cast<int32_t>(theme->second);
    state->saved_settings.window.theme = state->settings.window.theme;
  }
  look.Apply(static_cast<widgets::Theme>(state->settings.window.theme),
             state->settings.window.font_percent);
  app::main_Form window(*state, screen, look);
  screen.CloseLogo([&window](const QString& status) { window.ShowStatus(status); });
  window.Form_Load();
  if (options.close_when_ready) QTimer::singleShot(0, &window, &QWidget::close);
  return QApplication::exec();
}

int Start(int argc, char** argv) {
  Options options;
  CLI::App parser("ミルテ：米国株の株価データの管理、チャート、株価分析");
  parser.name("orin");
  parser.add_option("--home", options.home, "プログラムのディレクトリ")->type_name("DIR");
  parser.add_option("--ini", options.ini, "設定ファイル（省略時は DIR/orin.ini）")
      ->type_name("FILE");
  parser.add_option("--theme", options.theme, "配色")
      ->check(CLI::IsMember({"system", "light", "dark"}).description(""))
      ->type_name("system|light|dark");
  parser.add_flag("--close-when-ready", options.close_when_ready,
                  "使えるようになったら終了する（起動時間の計測用）");
  parser.set_version_flag("--version", ORIN_VERSION, "版を表示する");
  SpeakJapanese(parser);
  try {
    parser.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return ExplainUsage(parser, error);
  }

  qInstallMessageHandler(TellWithoutDisplay);
  const QApplication application(argc, argv);
  qInstallMessageHandler(nullptr);
  QApplication::setApplicationName(QStringLiteral("orin"));
  QApplication::setApplicationDisplayName(QString());
  QApplication::setApplicationVersion(QStringLiteral(ORIN_VERSION));
  QApplication::setDesktopFileName(QStringLiteral("orin"));
  return Run(options);
}

}  // namespace

}  // namespace orin::app

int main(int argc, char** argv) {
  try {
    return orin::app::Start(argc, argv);
  } catch (const std::exception& failure) {
    // Nothing is known to throw; should it happen, the user still gets a sentence.
    std::cerr << "予期しない問題が起きたので中止しました（" << orin::base::Printable(failure.what())
              << "）。\n";
    return 1;
  }
}
