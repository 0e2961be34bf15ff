#pragma once

#include <QApplication>
#include <QDialog>
#include <QPointer>
#include <QStatusBar>
#include <QTest>
#include <QTimer>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>

#include "acquire/market_setup.h"
#include "app/main_window/main_form.h"
#include "app/main_window/start_screen.h"
#include "base/file_system.h"
#include "shell/program_places.h"
#include "shell/start_up.h"
#include "shell/store_places.h"
#include "support/answered_messages.h"
#include "support/scratch_directory.h"
#include "support/test_files.h"
#include "widgets/look.h"
#include "widgets/qt_text.h"

namespace orin::test {

/// Does something with the dialog that is opened next, while it is open. It must close it.
template <typename Dialog>
void WithDialog(std::function<void(Dialog&)> use) {
  QTimer::singleShot(0, qApp, [use] {
    QPointer<Dialog> dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr) {
      ADD_FAILURE() << "the dialog was not opened";
      if (QWidget* other = QApplication::activeModalWidget()) other->close();
      return;
    }
    use(*dialog);
    if (dialog != nullptr && dialog->isVisible()) {
      ADD_FAILURE() << "the dialog is still open";
      dialog->done(QDialog::Rejected);
    }
  });
}

template <typename Widget>
Widget* FindByText(QWidget& in, const QString& part) {
  for (Widget* widget : in.findChildren<Widget*>()) {
    if (widget->text().contains(part)) return widget;
  }
  ADD_FAILURE() << "nothing says " << part.toStdString();
  return nullptr;
}

/// A program directory, and the program run in it as often as a test wants.
class WindowTest : public testing::Test {
 protected:
  WindowTest() { places_ = *shell::PlacesOf(home_.Path().string(), ""); }

  /// Fills the program directory with the demo market.
  void MakeDemo() {
    auto& files = base::NativeFileSystem();
    const std::filesystem::path demo = support::DemoFile("");
    ASSERT_TRUE(acquire::CopyDemoFiles(demo, home_.Path(), files));
    base::SilentProgress progress;
    const auto settings = settings::LoadSettings(places_);
    const auto made = acquire::SetUpMarket(shell::LocateStore(settings->bus, places_),
                                           {demo / "brand", demo / "stocks.csv"}, files, progress);
    ASSERT_TRUE(made) << made.error().message;
  }

  /// The program from its start to the main window.
  struct Program {
    std::unique_ptr<app::StartScreen> screen;
    std::unique_ptr<shell::ProgramState> state;
    std::unique_ptr<app::main_Form> window;
  };
  Program Start(base::Messages& messages) {
    auto& files = base::NativeFileSystem();
    Program program;
    program.screen = std::make_unique<app::StartScreen>(places_, files, messages);
    program.state = shell::StartUp(places_, files, *program.screen);
    program.window = std::make_unique<app::main_Form>(*program.state, *program.screen, look_);
    program.window->Form_Load();
    QCoreApplication::processEvents();
    return program;
  }

  [[nodiscard]] bool Exists(const std::string& name) const {
    return std::filesystem::exists(home_.Path() / name);
  }

  support::ScratchDirectory home_;
  settings::SettingsPlaces places_;
  widgets::Look look_;
  support::AnsweredMessages messages_;
};

}  // namespace orin::test
