#include "base/profile_file.h"

#include <array>
#include <fstream>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <string_view>

#include "support/faulty_file_system.h"
#include "support/scratch_directory.h"

namespace orin::base {
namespace {

using namespace std::literals;

std::string ReadBack(const ProfileFile& profile, std::string_view section, std::string_view key) {
  return ProfileFile::Parse(profile.Serialize().value()).Get(section, key, "(missing)");
}

TEST(ProfileFile, LooksUpTheFirstMatchWithoutRegardToCase) {
  const auto profile = ProfileFile::Parse(
      "stray=0\r\n[Bus]\r\n;key=1\r\nKey=2\r\nkey=3\r\nno value\r\n[Empty]\r\n[Tax]\r\nkey=4\r\n"
      "[bus]\r\nother=5\r\n[Broken\r\nkey2=6\r\n");
  EXPECT_EQ(profile.Get("BUS", "KEY", ""), "2");
  EXPECT_EQ(profile.Get("Tax", "key", ""), "4");
  EXPECT_EQ(profile.Get("Empty", "key", "default"), "default");
  EXPECT_EQ(profile.Get("Bus", "other", "default"), "default");
  EXPECT_EQ(profile.Get("bus", ";key", "default"), "default");
  EXPECT_FALSE(profile.Has("", "stray"));
  EXPECT_TRUE(profile.Has("tax", "key"));
}

TEST(ProfileFile, AKeyThatEndsInABlankIsFoundAsSuchFirst) {
  const auto both = ProfileFile::Parse("[Bus]\nini_file=a\nini_file =b\n");
  EXPECT_EQ(both.Get("Bus", "ini_file ", ""), "b");
  EXPECT_EQ(both.Get("Bus", "ini_file", ""), "a");
  const auto bare = ProfileFile::Parse("[Bus]\nini_file=a\n  picture_file\t= b\n");
  EXPECT_EQ(bare.Get("Bus", "ini_file ", ""), "a");
  EXPECT_EQ(bare.Get("Bus", "picture_file", ""), "b");
}

TEST(ProfileFile, ValuesLoseBlanksAndOnePairOfQuotes) {
  struct Case {
    const char* written;
    const char* value;
  };
  constexpr std::array cases = {
      Case{"", ""},
      Case{" \t", ""},
      Case{" a b ", "a b"},
      Case{"\"a \"", "a "},
      Case{"\"\"a\"\"", "\"a\""},
      Case{"\"", "\""},
      Case{"\"a", "\"a"},
      Case{"\"\"", ""},
      Case{"a=b;c", "a=b;c"},
      Case{"x\\y\\", "x\\y\\"},
      Case{"'a'", "'a'"},
  };
  for (const Case& c : cases) {
    const auto profile = ProfileFile::Parse("[S]\nk=" + std::string(c.written) + "\n");
    EXPECT_EQ(profile.Get("S", "k", "default"), c.value) << c.written;
  }
}

TEST(ProfileFile, EveryValueSetComesBack) {
  for (const char* value :
       {"", "a", " a", "a ", "\ta\t", "\"", "\"\"", "\"a\"", "\"a", " \"a\" ", "a=b", "[S]", ";c",
        "ＰＤＩ(14,0) ", "移動平均(66,-1) >= 移動平均(22,-1) And  移動平均(66,0) ", "表\\", "　",
        "ﾃｽ"}) {
    ProfileFile profile;
    profile.Set("S", "before", "1");
    profile.Set("S", "k", value);
    profile.Set("S", "after", "2");
    EXPECT_EQ(profile.Get("S", "k", "x"), value);
    EXPECT_EQ(ReadBack(profile, "S", "k"), value);
    EXPECT_EQ(ReadBack(profile, "S", "after"), "2");
  }
}

TEST(ProfileFile, ANewProfileIsCodePage932WithCrlf) {
  ProfileFile profile;
  profile.Set("Bus", "ini_file ", "表\\orin.ini");
  profile.Set("Bus", "ramdisk_dir ", "");
  profile.Set("Tax", "syouhi_zeiritu", "5");
  profile.Set("Tax", "syouhi_zeiritu", "8");
  EXPECT_EQ(profile.Serialize().value(),
            "[Bus]\r\nini_file =\x95\x5C\\orin.ini\r\nramdisk_dir =\r\n"
            "[Tax]\r\nsyouhi_zeiritu=8\r\n");
}

TEST(ProfileFile, EverythingElseKeepsItsPlaceAndBytes) {
  const std::string bytes =
      "\r\n; \xFF\x81 note\r\n[ bus ]\n Update_File\t= old\r\r\nbad=\x81\r\n\r\n\r\n"
      "[\x83\x7E]\r\nx=\x8A\x94";
  auto profile = ProfileFile::Parse(bytes);
  EXPECT_EQ(profile.Serialize().value(), bytes);
  profile.Set("Bus", "bad", profile.Get("Bus", "bad", ""));
  EXPECT_EQ(profile.Serialize().value(), bytes);
  profile.Set("Bus", "update_file", "new ");
  profile.Set("Bus", "added", "1");
  profile.Set("ミ", "y", "2");
  EXPECT_EQ(profile.Serialize().value(),
            "\r\n; \xFF\x81 note\r\n[ bus ]\n Update_File\t=\"new \"\r\r\nbad=\x81\r\nadded=1\r\n"
            "\r\n\r\n[\x83\x7E]\r\nx=\x8A\x94\r\ny=2\r\n");
}

TEST(ProfileFile, EncodingAndLineEndsStayAsRead) {
  const std::array cases = {
      std::pair{"\xEF\xBB\xBF[S]\nk=1\n"s, "\xEF\xBB\xBF[S]\nk=株\n"s},
      std::pair{"[S]\r\n; 株\r\nk=1\r\n"s, "[S]\r\n; 株\r\nk=株\r\n"s},
      std::pair{"[S]\nk=1"s, "[S]\nk=\x8A\x94"s},
      std::pair{"[S]\n;\xC3\xBD\nk=1"s, "[S]\n;\xC3\xBD\nk=\x8A\x94"s},  // half-width ﾃｽ
  };
  for (const auto& [before, after] : cases) {
    auto profile = ProfileFile::Parse(before);
    profile.Set("S", "k", "株");
    EXPECT_EQ(profile.Serialize().value(), after);
  }
}

TEST(ProfileFile, AValueThatWouldBreakTheFileIsRefused) {
  const std::array cases = {std::pair{"a\nb=c", "改行"}, std::pair{"a\r", "改行"},
                            std::pair{"😀", "U+1F600"}, std::pair{"\xFF", "0xFF"}};
  for (const auto& [value, named] : cases) {
    ProfileFile profile;
    profile.Set("S", "key1", value);
    const auto bytes = profile.Serialize();
    ASSERT_FALSE(bytes.has_value());
    EXPECT_NE(bytes.error().message.find("「key1」"), std::string::npos) << bytes.error().message;
    EXPECT_NE(bytes.error().message.find(named), std::string::npos) << bytes.error().message;
  }
  auto utf8 = ProfileFile::Parse("\xEF\xBB\xBF[株]\n");
  utf8.Set("株", "key1", "\xFF");
  EXPECT_FALSE(utf8.Serialize().has_value());
}

TEST(ProfileFile, GarbageIsKeptWhateverItIs) {
  std::mt19937 random(11);
  constexpr std::string_view kAlphabet = "[]=;\" \t\r\nak\0\xFF\x81\x5C\xE3\x81\x82\xEF\xBB\xBF"sv;
  for (int i = 0; i < 3000; ++i) {
    std::string bytes;
    for (size_t n = random() % 40; n > 0; --n) bytes += kAlphabet[random() % kAlphabet.size()];
    auto profile = ProfileFile::Parse(bytes);
    ASSERT_EQ(profile.Serialize().value(), bytes);
    profile.Set("a", "k", "v w ");
    ASSERT_EQ(ReadBack(profile, "a", "k"), "v w ");
  }
}

TEST(ProfileFile, KeysAreAddedBehindTheLastLineThatIsNotBlank) {
  auto profile = ProfileFile::Parse(
      "\n\n[A]\njunk\nmore junk\na=1\na=2\n\n \n[B]\n[A]\nb=3\n[A]\nc=4\n[B]\nb=5\n\n");
  EXPECT_FALSE(profile.Has("A", "b"));
  EXPECT_FALSE(profile.Has("B", "b"));
  profile.Set("A", "b", "6");
  profile.Set("A", "c ", "7");
  profile.Set("B", "b", "8");
  profile.Set("A", "a", "9");
  profile.Set("A", "b", "10");
  profile.Set("C", "d", "11");
  EXPECT_EQ(profile.Serialize().value(),
            "\n\n[A]\njunk\nmore junk\na=9\na=2\nb=10\nc =7\n\n \n[B]\nb=8\n[A]\nb=3\n[A]\n"
            "c=4\n[B]\nb=5\n\n[C]\nd=11\n");
  const ProfileFile copy = profile;
  EXPECT_EQ(copy.Get("A", "c", ""), "7");
}

class ProfileFileOnDisk : public ::testing::Test {
 protected:
  ProfileFileOnDisk() {
    std::ofstream(path_, std::ios::binary) << kOld;
    changed_ = ProfileFile::Load(path_).value();
    changed_.Set("S", "k", "new");
  }

  static constexpr const char* kOld = "[S]\r\nk=old\r\n";
  static constexpr const char* kNew = "[S]\r\nk=new\r\n";
  support::ScratchDirectory scratch_;
  std::filesystem::path path_ = scratch_ / "orin.ini";
  ProfileFile changed_;
};

TEST_F(ProfileFileOnDisk, MissingIsEmptyAndADirectoryIsAFailure) {
  EXPECT_EQ(ProfileFile::Load(scratch_ / "none.ini")->Serialize().value(), "");
  const auto directory = ProfileFile::Load(scratch_.Path());
  ASSERT_FALSE(directory.has_value());
  EXPECT_NE(directory.error().message.find(scratch_.Path().string()), std::string::npos);
}

TEST_F(ProfileFileOnDisk, ASaveStoppedAnywhereLeavesTheOldOrTheNewFile) {
  for (const auto loss :
       {support::Loss::kNothing, support::Loss::kWrites, support::Loss::kWritesAndNames}) {
    for (int64_t n = 1;; ++n) {
      std::ofstream(path_, std::ios::binary) << kOld;
      support::FaultyFileSystem files;
      files.DieAt(n);
      files.LoseOnDeath(loss);
      const Status saved = changed_.Save(files, path_);
      EXPECT_EQ(saved.has_value(), !files.IsDead());
      const std::string bytes = ReadFile(path_).value();
      EXPECT_TRUE(bytes == kNew || bytes == kOld) << "operation " << n;
      if (files.IsDead()) continue;
      files.DieAt(files.Operations() + 1);
      EXPECT_FALSE(files.Remove(scratch_ / "other"));
      EXPECT_EQ(ReadFile(path_).value(), kNew) << "lost after the save";
      break;
    }
  }
}

TEST_F(ProfileFileOnDisk, AFullDiskLeavesTheOldFileAlone) {
  for (int64_t space = 0;; ++space) {
    support::FaultyFileSystem files;
    files.LimitGrowth(space);
    const Status saved = changed_.Save(files, path_);
    EXPECT_FALSE(std::filesystem::exists(scratch_ / "orin.ini.tmp"));
    if (saved) break;
    EXPECT_NE(saved.error().message.find("空きがありません"), std::string::npos);
    EXPECT_EQ(ReadFile(path_).value(), kOld) << space;
  }
  EXPECT_EQ(ReadFile(path_).value(), kNew);
}

}  // namespace
}  // namespace orin::base
