#include "base/paths.h"

#include <array>
#include <fstream>
#include <gtest/gtest.h>
#include <string>

#include "support/scratch_directory.h"

namespace orin::base {
namespace {

namespace fs = std::filesystem;

TEST(NativePath, BothSeparatorsPartAndNeedlessPartsVanish) {
  struct Case {
    const char* setting;
    const char* path;
  };
  constexpr std::array cases = {
      Case{"", "/none/base"},
      Case{"data\\", "/none/base/data"},
      Case{"yahoo\\YahooHtm.txt", "/none/base/yahoo/YahooHtm.txt"},
      Case{"a/b\\\\c//", "/none/base/a/b/c"},
      Case{".\\a\\.\\b", "/none/base/a/b"},
      Case{"..\\x", "/none/x"},
      Case{"a\\..\\..\\..\\..\\..\\x", "/x"},
      Case{"/x\\y", "/x/y"},
      Case{"\\x\\", "/x"},
      Case{"/", "/"},
      Case{"/..", "/"},
      Case{"C:\\orin\\data", "/none/base/C:/orin/data"},
      Case{"表\\株式分割.txt", "/none/base/表/株式分割.txt"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(NativePath(c.setting, "/none/base").string(), c.path) << c.setting;
    EXPECT_EQ(NativePath(c.setting, "/none/./other/../base/").string(), c.path) << c.setting;
  }
}

class NativePathOnDisk : public ::testing::Test {
 protected:
  void Make(const fs::path& file) {
    fs::create_directories((scratch_ / file).parent_path());
    std::ofstream(scratch_ / file) << "x";
  }
  [[nodiscard]] std::string Found(std::string_view setting) const {
    return NativePath(setting, scratch_.Path()).lexically_relative(scratch_.Path()).string();
  }

  support::ScratchDirectory scratch_;
};

TEST_F(NativePathOnDisk, ExistingPartsAreFoundWithoutRegardToCase) {
  Make("yahoo/K20200110.txt");
  EXPECT_EQ(Found("Yahoo\\k20200110.TXT"), "yahoo/K20200110.txt");
  EXPECT_EQ(Found("YAHOO\\usaday1.htm"), "yahoo/usaday1.htm");
  EXPECT_EQ(Found("yahoo\\..\\Yahoo\\"), "yahoo");
  EXPECT_EQ(Found("Brand\\A.csv"), "Brand/A.csv");
}

TEST_F(NativePathOnDisk, TheExactNameComesBeforeOthers) {
  Make("DATA/a");
  Make("Data/a");
  EXPECT_EQ(Found("Data"), "Data");
  EXPECT_EQ(Found("DATA\\A"), "DATA/a");
  EXPECT_EQ(Found("data"), "DATA");
}

TEST_F(NativePathOnDisk, PartsBelowAFileAreKeptAsWritten) {
  Make("Orin.ini");
  EXPECT_EQ(Found("orin.INI\\Deeper\\x"), "Orin.ini/Deeper/x");
  EXPECT_EQ(Found(std::string(5000, 'n')), std::string(5000, 'n'));
}

TEST_F(NativePathOnDisk, AnAbsolutePathDoesNotTouchTheBase) {
  Make("Old/orin.sys");
  const std::string setting = scratch_.Path().string() + "\\OLD\\ORIN.SYS";
  EXPECT_EQ(NativePath(setting, "/none").string(), (scratch_ / "Old/orin.sys").string());
}

}  // namespace
}  // namespace orin::base
