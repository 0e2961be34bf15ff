#include "screening/analysis_document.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>
#include <string>

#include "base/cp932.h"
#include "screening/analysis_file.h"
#include "support/faulty_file_system.h"
#include "support/scratch_directory.h"

namespace orin::screening {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

constexpr const char* kText =
    "' 覚え書き\r\n"
    "タイトル： 新高値 \r\n"
    "メモ：自分の行\r\n"
    "分析項目：高値(0) > 最高値(250,-1) And\r\n"
    "１：２：３\r\n"
    "出来高(0) > 0\r\n"
    "\r\n"
    "分析日付：2020/01/10\r\n";

TEST(AnalysisDocument, FieldsAreThoseThatTheRunReads) {
  const AnalysisDocument document = AnalysisDocument::Parse(kText);
  const AnalysisFields& fields = document.Fields();
  EXPECT_EQ(fields.title, "新高値");
  EXPECT_EQ(fields.date, "2020/01/10");
  EXPECT_EQ(fields.market, "");
  EXPECT_EQ(fields.condition, "高値(0) > 最高値(250,-1) And\n出来高(0) > 0");
  EXPECT_EQ(JoinedCondition(fields.condition), ParseAnalysisFile(kText, "")->condition);
}

TEST(AnalysisDocument, OnlyLinesOfChangedFieldsAreWrittenAnew) {
  const std::string cp932 = *base::EncodeCp932(kText);
  for (const std::string& bytes :
       {cp932, std::string(kText), "\xEF\xBB\xBF" + std::string(kText)}) {
    const AnalysisDocument document = AnalysisDocument::Parse(bytes);
    EXPECT_EQ(*document.BytesWith(document.Fields()), bytes) << "nothing to change";
    AnalysisFields fields = document.Fields();
    fields.title = "終値";
    fields.market = "ＮＹ市場銘柄";
    fields.condition = "終値(0) > 1\nAnd 1 = 1";
    const std::string changed = *document.BytesWith(fields);
    EXPECT_EQ(AnalysisDocument::Parse(changed).Fields(), fields);
    EXPECT_EQ(changed.substr(0, 3) == "\xEF\xBB\xBF", bytes.substr(0, 3) == "\xEF\xBB\xBF");
    EXPECT_EQ(base::IsValidUtf8(changed), base::IsValidUtf8(bytes));
    const std::string text = base::DecodeText(changed).text;
    EXPECT_THAT(text, StartsWith("' 覚え書き\r\nタイトル：終値\r\nメモ：自分の行\r\n"));
    EXPECT_THAT(text, HasSubstr("\r\n１：２：３\r\n"));
  }
}

TEST(AnalysisDocument, NewFileHasAllKeysAndLineEndsStay) {
  AnalysisFields fields;
  fields.title = "x";
  fields.condition = "終値(0) > 1";
  const std::string made = *AnalysisDocument().BytesWith(fields);
  EXPECT_EQ(
      base::DecodeCp932(made),
      "タイトル：x\r\n分析結果格納場所：\r\n分析日付：\r\n分析上場市場：\r\n第二銘柄コード：\r\n"
      "分析項目：終値(0) > 1\r\n");
  const AnalysisDocument unix_lines = AnalysisDocument::Parse("タイトル：x\n");
  EXPECT_EQ(*unix_lines.BytesWith(fields), "タイトル：x\n分析項目：終値(0) > 1\n");
}

TEST(AnalysisDocument, NewConditionTakesNoLineThatWasThereBefore) {
  for (const std::string_view file :
       {"タイトル：x\n覚え書き\n", "覚え書き\n分析日付：\n続き", ""}) {
    AnalysisFields fields = AnalysisDocument::Parse(file).Fields();
    fields.second_stock = "^DJI";
    fields.condition = "1 = 1 And\n2 = 2";
    const auto bytes = AnalysisDocument::Parse(file).BytesWith(fields);
    ASSERT_TRUE(bytes) << file;
    EXPECT_EQ(AnalysisDocument::Parse(*bytes).Fields().condition, fields.condition) << file;
    EXPECT_EQ(AnalysisDocument::Parse(*bytes).Fields().second_stock, "^DJI") << file;
  }
}

TEST(AnalysisDocument, WhatTheFormatCannotHoldIsNamed) {
  const AnalysisDocument document = AnalysisDocument::Parse(*base::EncodeCp932(kText));
  AnalysisFields fields = document.Fields();
  fields.condition = "1 = 1 \"注：釈\"";
  EXPECT_THAT(document.BytesWith(fields).error().message, StartsWith("分析項目に「：」は"));
  fields = document.Fields();
  fields.title = "a\nb";
  EXPECT_EQ(document.BytesWith(fields).error().message, "タイトルに改行は使えません。");
  fields.title = "😀";
  EXPECT_THAT(document.BytesWith(fields).error().message, HasSubstr("😀"));
}

TEST(AnalysisDocument, FileIsReplacedWholeOrStays) {
  const support::ScratchDirectory home;
  const auto file = home / "a.txt";
  AnalysisDocument document;
  AnalysisFields fields;
  fields.condition = "1 = 1";
  ASSERT_TRUE(document.Save(base::NativeFileSystem(), file, fields));
  EXPECT_EQ(document.Fields(), fields);
  const std::string before = *base::ReadFile(file);
  AnalysisFields other = fields;
  other.condition = "2 = 2";
  support::FaultyFileSystem full;
  full.DieAt(1);
  EXPECT_FALSE(document.Save(full, file, other));
  EXPECT_EQ(*base::ReadFile(file), before);
  EXPECT_EQ(document.Fields(), fields) << "as it is in the file";
  EXPECT_FALSE(AnalysisDocument::Read(home / "none.txt"));
}

TEST(AnalysisDocument, GarbageComesBackByteForByte) {
  std::mt19937 random(3);
  std::string bytes(1'000'000, '\0');
  for (char& byte : bytes) byte = static_cast<char>(random());
  const AnalysisDocument document = AnalysisDocument::Parse(bytes);
  EXPECT_EQ(*document.BytesWith(document.Fields()), bytes);
  const AnalysisDocument long_line =
      AnalysisDocument::Parse("分析項目：" + std::string(100'000, '1'));
  EXPECT_EQ(long_line.Fields().condition.size(), 100'000U);
}

}  // namespace
}  // namespace orin::screening
