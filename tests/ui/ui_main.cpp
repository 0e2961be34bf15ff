#include <QApplication>
#include <cstdlib>
#include <gtest/gtest.h>

#include "ui/window_test.h"

// The toolkit and fontconfig keep what they have loaded until the program ends.
extern "C" const char* __lsan_default_suppressions();   // NOLINT(bugprone-reserved-identifier)
extern "C" const char* __lsan_default_suppressions() {  // NOLINT(bugprone-reserved-identifier)
  return "leak:libfontconfig\nleak:libQt6\nleak:libglib\nleak:libdbus\n";
}

int main(int argc, char** argv) {
  setenv("QT_QPA_PLATFORM", "offscreen", 1);
  testing::InitGoogleTest(&argc, argv);
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  return RUN_ALL_TESTS();
}
