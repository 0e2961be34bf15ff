// The longest time for which the window program handles no events while it runs seven conditions
// over a whole market, and the longest that a key takes in a condition of 100,000 characters.
// Prints the first, the time of the run and the second, in milliseconds, and the hits.

#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QTimer>
#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <string>
#include <string_view>
#include <unistd.h>

#include "app/main_window/main_form.h"
#include "app/main_window/start_screen.h"
#include "base/file_system.h"
#include "screening/ui/check2_form.h"
#include "screening/ui/condition_editor.h"
#include "shell/start_up.h"
#include "store/file_names.h"
#include "widgets/look.h"

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kConditions[] = {
    "移動平均(66,-1) >= 移動平均(22,-1) And 移動平均(66,0) <= 移動平均(22,0)",
    "高値(0) > 最高値(250,-1)",
    "終値(0) / 終値(-60) > 第二銘柄終値(0) / 第二銘柄終値(-60)",
    "ＲＳＩ(14,0) < 30",
    "週間移動平均(13,0) > 週間移動平均(26,0) And 週間移動平均(13,-1) <= 週間移動平均(26,-1)",
    "出来高(0) > 出来高合計(25,-1) / 25 * 2",
    "ＡＤＸ(14,14,0) > 30 And ＰＤＩ(14,0) > ＭＤＩ(14,0)",
};

/// Agrees to everything and asks nothing.
class SilentMessages final : public orin::base::Messages {
 public:
  orin::base::Answer Show(const orin::base::Message& message) override {
    using orin::base::Answer;
    return message.buttons == orin::base::Buttons::kOk ? Answer::kOk : Answer::kYes;
  }
  std::optional<fs::path> ChooseFile(const orin::base::FileQuestion&) override { return {}; }
  std::optional<std::string> AskText(const orin::base::TextQuestion&) override { return {}; }
};

/// Notes how far apart the events of a timer arrive that is always due.
class Heartbeat {
 public:
  Heartbeat() {
    timer_.setInterval(0);
    QObject::connect(&timer_, &QTimer::timeout, [this] { Beat(); });
    since_.start();
    timer_.start();
  }
  void Beat() { longest_ = std::max(longest_, since_.restart()); }
  [[nodiscard]] qint64 Longest() const { return longest_; }

 private:
  QTimer timer_;
  QElapsedTimer since_;
  qint64 longest_ = 0;
};

/// Settings, group and analysis files for the market of `market`, in `scratch`.
void WriteGroup(const fs::path& scratch) {
  fs::create_directories(scratch);
  std::ofstream ini(scratch / "orin.ini");
  ini << "[Common]\nAnalysisGroupFile=" << (scratch / "orin.chk").string() << '\n';
  std::ofstream group(scratch / "orin.chk");
  std::string files = "[File]\n";
  std::string checks = "[Check]\n";
  int number = 0;
  for (const std::string_view condition : kConditions) {
    const std::string name = std::to_string(++number);
    const fs::path results = scratch / ("results" + name);
    fs::create_directories(results);
    std::ofstream(scratch / (name + ".txt"))
        << "タイトル：" << name << "\n分析結果格納場所：" << results.string()
        << "\n第二銘柄コード：^DJI\n分析項目：" << condition << '\n';
    files += "checkfile" + name + "=" + (scratch / (name + ".txt")).string() + "\n";
    checks += "check" + name + "=1\n";
  }
  group << files << checks;
}

/// Types into a long condition as a person does, checks of the text included.
qint64 LongestKey() {
  constexpr size_t kLength = 100'000;
  constexpr int kKeys = 20;
  std::string condition;
  for (int i = 0; condition.size() < kLength; ++i) {
    condition += i == 0 ? "" : i % 90 == 0 ? " Or " : " And ";
    condition += "終値(" + std::to_string(-i) + ") > {1 + 2} * 3";
  }
  orin::screening::ConditionEditor editor;
  editor.resize(1000, 600);
  editor.show();
  editor.SetCondition(condition);
  editor.moveCursor(QTextCursor::End);
  QCoreApplication::processEvents();
  QElapsedTimer since_key;
  qint64 longest = 0;
  for (int i = 0; i < kKeys; ++i) {
    QKeyEvent key(QEvent::KeyPress, Qt::Key_1, Qt::NoModifier, QStringLiteral("1"));
    since_key.start();
    QCoreApplication::sendEvent(&editor, &key);
    // The next key comes a tenth of a second later, but for some pauses.
    const int pause = i % 5 == 4 ? 600 : 100;
    QElapsedTimer since_pause;
    since_pause.start();
    do {
      QCoreApplication::processEvents();
      longest = std::max(longest, since_key.restart());
      usleep(1000);
      since_key.restart();
    } while (since_pause.elapsed() < pause);
  }
  return longest;
}

int Run(const fs::path& market, const fs::path& scratch) {
  auto& files = orin::base::NativeFileSystem();
  SilentMessages messages;
  const orin::settings::SettingsPlaces places{market, scratch / "orin.ini"};
  orin::app::StartScreen screen(places, files, messages);
  const auto state = orin::shell::StartUp(places, files, screen);
  if (!state->store) {
    std::cerr << market.string() << " に株価データがありません。\n";
    return 1;
  }
  orin::widgets::Look look;
  orin::app::main_Form window(*state, screen, look);
  window.Form_Load();
  window.mnu_check2_Click();
  QCoreApplication::processEvents();
  QElapsedTimer since_start;
  since_start.start();
  Heartbeat heartbeat;
  window.mnu_analysis_Click();
  heartbeat.Beat();
  std::cout << heartbeat.Longest() << ' ' << since_start.elapsed() << ' ' << LongestKey();
  size_t hits = 0;
  for (int i = 1; i <= 7; ++i) {
    for (const auto& file : fs::directory_iterator(scratch / ("results" + std::to_string(i)))) {
      std::ifstream list(file.path());
      hits += static_cast<size_t>(std::count(std::istreambuf_iterator<char>(list), {}, '\n')) - 2;
    }
  }
  std::cout << ' ' << hits << '\n';
  window.close();
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  setenv("QT_QPA_PLATFORM", "offscreen", 1);
  QApplication application(argc, argv);
  if (argc != 2) {
    std::cerr << "計測用の市場のディレクトリを指定して下さい。\n";
    return 2;
  }
  const fs::path scratch =
      fs::temp_directory_path() / ("orin_window_run_" + std::to_string(getpid()));
  WriteGroup(scratch);
  const int status = Run(fs::absolute(argv[1]), scratch);
  std::error_code ignored;
  fs::remove_all(scratch, ignored);
  return status;
}
