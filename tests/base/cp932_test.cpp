#include "base/cp932.h"

#include <array>
#include <gtest/gtest.h>
#include <string>

namespace orin::base {
namespace {

using namespace std::string_literals;

TEST(Cp932, KnownCharactersHaveTheirBytes) {
  struct Case {
    std::string text;
    std::string bytes;
  };
  const std::array cases = {
      Case{"", ""},
      Case{"orin.ini \\~", "orin.ini \\~"},
      Case{"ミルテ", "\x83\x7E\x83\x8B\x83\x65"},
      Case{"ｱｶﾞ｡ﾟ", "\xB1\xB6\xDE\xA1\xDF"},
      Case{"表示", "\x95\x5C\x8E\xA6"},  // a trail byte that is "\"
      Case{"ー［", "\x81\x5B\x81\x6D"},
      Case{"①㈱Ⅳ", "\x87\x40\x87\x8A\x87\x57"},
      Case{"髙﨑", "\xFB\xFC\xFA\xB1"},
      Case{"～－∥￢", "\x81\x60\x81\x7C\x81\x61\x81\xCA"},
      Case{"\uE000", "\xF0\x40"},  // the user's own characters
  };
  for (const Case& c : cases) {
    EXPECT_EQ(EncodeCp932(c.text).value(), c.bytes) << c.text;
    EXPECT_EQ(DecodeCp932(c.bytes), c.text);
  }
}

TEST(Cp932, OtherFormsOfThreeSignsAreTakenAsTheSame) {
  EXPECT_EQ(EncodeCp932("\u301C\u2212\u2016").value(), "\x81\x60\x81\x7C\x81\x61");
  EXPECT_EQ(DecodeCp932("\x81\x60\x81\x7C\x81\x61"), "\uFF5E\uFF0D\u2225");
}

TEST(Cp932, EveryCodeThatDecodesEncodesToTheSameCharacter) {
  int characters = 0;
  for (int lead = 0x80; lead < 0x100; ++lead) {
    for (int trail = 0; trail < 0x100; ++trail) {
      const std::string bytes{static_cast<char>(lead), static_cast<char>(trail)};
      const std::string text = DecodeCp932(bytes);
      if (text.find("\uFFFD") != std::string::npos) continue;
      const auto encoded = EncodeCp932(text);
      ASSERT_TRUE(encoded.has_value()) << encoded.error().message;
      ASSERT_EQ(encoded->size(), 2U);
      ASSERT_EQ(DecodeCp932(*encoded), text);
      ++characters;
    }
  }
  EXPECT_GT(characters, 9000);
}

TEST(Cp932, BytesThatAreNoCharacterBecomeOneReplacementEach) {
  const std::array cases = {
      std::pair{"\x81"s, "\uFFFD"s},           std::pair{"A\x81"s, "A\uFFFD"s},
      std::pair{"\x81\n"s, "\uFFFD\n"s},       std::pair{"\x81\x20"s, "\uFFFD "s},
      std::pair{"\xFF\xFE"s, "\uFFFD\uFFFD"s}, std::pair{"\x81\x81\x40"s, "＝@"s},
      std::pair{"\x82\x40"s, "\uFFFD@"s},      std::pair{"\x81\0"s, "\uFFFD\0"s},
  };
  for (const auto& [bytes, text] : cases) EXPECT_EQ(DecodeCp932(bytes), text);
}

TEST(Cp932, AForeignCharacterIsNamedInTheFailure) {
  const struct {
    const char* text;
    const char* named;
  } cases[] = {{"株価😀", "「😀」（U+1F600）"}, {"한", "「한」（U+D55C）"}, {"é", "「é」（U+00E9）"},
               {"\uFFFD", "U+FFFD"},          {"\xFF", "0xFF"},           {"\xE3\x81", "0xE3"}};
  for (const auto& c : cases) {
    const auto encoded = EncodeCp932(c.text);
    ASSERT_FALSE(encoded.has_value()) << c.text;
    EXPECT_NE(encoded.error().message.find(c.named), std::string::npos) << encoded.error().message;
  }
}

TEST(Cp932, AFixedFieldIsCutAtACharacterAndPadded) {
  EXPECT_EQ(EncodeFixedField("AAPL", 8).value(), "AAPL    ");
  EXPECT_EQ(EncodeFixedField("株価A", 4).value(), "\x8A\x94\x89\xBF");
  EXPECT_EQ(EncodeFixedField("株価A", 3).value(), "\x8A\x94 ");
  EXPECT_EQ(EncodeFixedField("A株価", 4).value(), "A\x8A\x94 ");
  EXPECT_EQ(EncodeFixedField("株", 1).value(), " ");
  EXPECT_EQ(EncodeFixedField("ｱｲｳ", 2).value(), "\xB1\xB2");
  EXPECT_EQ(EncodeFixedField("株", 0).value(), "");
  EXPECT_FALSE(EncodeFixedField("株😀", 8).has_value());
}

TEST(Cp932, AFixedFieldLosesItsPaddingAlone) {
  EXPECT_EQ(DecodeFixedField(" A B  "), " A B");
  EXPECT_EQ(DecodeFixedField("AB\0 \0"s), "AB");
  EXPECT_EQ(DecodeFixedField("    "), "");
  EXPECT_EQ(DecodeFixedField(""), "");
  EXPECT_EQ(DecodeFixedField("\x8A\x94\x89"), "株\uFFFD");
  EXPECT_EQ(DecodeFixedField("\x8A\x94\x81\x40"), "株　");
}

TEST(Cp932, ATextFromOutsideIsUtf8WhereItIsValid) {
  EXPECT_EQ(DecodeText("\xEF\xBB\xBF株").text, "株");
  EXPECT_EQ(DecodeText("株").encoding, TextEncoding::kUtf8);
  const DecodedText old = DecodeText("\x8A\x94");
  EXPECT_EQ(old.text, "株");
  EXPECT_EQ(old.encoding, TextEncoding::kCp932);
}

TEST(Cp932, Utf8IsCheckedStrictly) {
  for (const std::string& valid : {"\x7F"s, "\xC2\x80"s, "\xE0\xA0\x80"s, "\xED\x9F\xBF"s,
                                   "\xEE\x80\x80"s, "\xF0\x90\x80\x80"s, "\xF4\x8F\xBF\xBF"s}) {
    EXPECT_TRUE(IsValidUtf8(valid));
  }
  for (const std::string& invalid :
       {"\x80"s, "\xC0\x80"s, "\xC1\xBF"s, "\xE0\x9F\xBF"s, "\xED\xA0\x80"s, "\xED\xBF\xBF"s,
        "\xF0\x8F\xBF\xBF"s, "\xF4\x90\x80\x80"s, "\xF8\x88\x80\x80\x80"s, "\xFF"s, "\xC2"s,
        "\xE3\x81"s, "\xE3\x81\x41"s, "A\xBF"s}) {
    EXPECT_FALSE(IsValidUtf8(invalid));
  }
}

}  // namespace
}  // namespace orin::base
