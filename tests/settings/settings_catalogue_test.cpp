#include "settings/settings_catalogue.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "analysis/program.h"
#include "base/file_system.h"
#include "base/text.h"
#include "settings/test_places.h"
#include "support/scratch_directory.h"
#include "support/test_files.h"

namespace orin::settings {
namespace {

std::vector<const SettingEntry*> AllEntries() {
  std::vector<const SettingEntry*> entries;
  for (const SettingsGroup& group : SettingsCatalogue()) {
    for (const SettingEntry& entry : group.entries) entries.push_back(&entry);
  }
  return entries;
}

std::string NameOf(const SettingEntry& entry) { return "[" + entry.section + "]" + entry.key; }

Settings Defaults() { return LoadWhatIsReadable(kPlaces).settings; }

/// The defaults of defaults.txt by "[section]key".
std::map<std::string, std::string> FixedDefaults() {
  std::map<std::string, std::string> defaults;
  std::string section;
  const auto text = base::ReadFile(support::TestData("settings/defaults.txt")).value();
  for (const std::string_view line : base::SplitLines(text)) {
    if (line.starts_with('[')) section = line;
    const auto parts = base::SplitByDelimiter(line, "\"").value();
    if (parts.size() != 5) continue;
    std::string value(parts[3]);
    if (value.starts_with("P:")) value.replace(0, 2, "/p\\");
    if (value.starts_with("S:")) value.replace(0, 2, "/s\\");
    defaults[section + std::string(parts[1])] = value;
  }
  return defaults;
}

/// A text of the entry's kind that is not its default.
std::string OtherText(const SettingEntry& entry) {
  const std::string value = entry.default_text(kPlaces);
  const auto other = [&](const char* one, const char* two) { return value == one ? two : one; };
  switch (entry.kind) {
    case SettingKind::kCheck:
      return other("0", "1");
    case SettingKind::kNumber:
      return std::to_string(std::lround(
          value == std::to_string(std::lround(entry.maximum)) ? entry.minimum : entry.maximum));
    case SettingKind::kRate:
      return "0.0625";
    case SettingKind::kChoice:
      return std::to_string(std::ranges::find_if(entry.choices, [&](const SettingChoice& choice) {
                              return std::to_string(choice.value) != value;
                            })->value);
    case SettingKind::kColor:
      return "1193046";
    case SettingKind::kDate:
      return "1999/12/31";
    case SettingKind::kTime:
      return "23:59:59";
    case SettingKind::kStockCode:
      return "BRK.B";
    default:
      // Blanks at the end and quotes are what a profile file treats in its own way.
      return "\"値\" = " + entry.key + "　; \\ ";
  }
}

TEST(SettingsCatalogue, AnAbsentFileYieldsEveryFixedDefaultToTheBlank) {
  std::map<std::string, std::string> fixed = FixedDefaults();
  ASSERT_GT(fixed.size(), 250U);
  const Settings settings = Defaults();
  for (const SettingEntry* entry : AllEntries()) {
    const auto found = fixed.find(NameOf(*entry));
    if (found == fixed.end()) continue;
    EXPECT_EQ(entry->text(settings), found->second) << NameOf(*entry);
    EXPECT_EQ(entry->default_text(kPlaces), found->second) << NameOf(*entry);
    fixed.erase(found);
  }
  EXPECT_TRUE(fixed.empty()) << "no such key: " << fixed.begin()->first;
}

TEST(SettingsCatalogue, EveryDefaultIsAValueOfItsOwnForm) {
  const Settings defaults = Defaults();
  for (const SettingEntry* entry : AllEntries()) {
    const std::string text = entry->default_text(kPlaces);
    EXPECT_EQ(entry->text(defaults), text) << NameOf(*entry);
    Settings changed = defaults;
    ASSERT_TRUE(entry->assign(changed, OtherText(*entry))) << NameOf(*entry);
    EXPECT_NE(changed, defaults) << NameOf(*entry);
    const auto assigned = entry->assign(changed, text);
    EXPECT_TRUE(assigned) << NameOf(*entry) << assigned.error().message;
    EXPECT_EQ(changed, defaults) << NameOf(*entry);
  }
}

TEST(SettingsCatalogue, EveryKeyHasAPlaceOfItsOwn) {
  const Settings defaults = Defaults();
  const auto entries = AllEntries();
  std::set<std::string> names;
  for (const SettingEntry* changed : entries) {
    EXPECT_TRUE(names.insert(NameOf(*changed)).second) << NameOf(*changed);
    Settings settings = defaults;
    ASSERT_TRUE(changed->assign(settings, OtherText(*changed)));
    const auto differs = [&](const SettingEntry* entry) {
      return entry->text(settings) != entry->text(defaults);
    };
    EXPECT_EQ(std::ranges::count_if(entries, differs), 1) << NameOf(*changed);
    EXPECT_TRUE(differs(changed)) << NameOf(*changed);
  }
}

TEST(SettingsCatalogue, EveryKeyIsWrittenAndReadBack) {
  const support::ScratchDirectory scratch;
  const SettingsPlaces places{scratch.Path(), scratch / "orin.ini"};
  const Settings defaults = LoadWhatIsReadable(places).settings;
  Settings changed = defaults;
  for (const SettingEntry* entry : AllEntries()) {
    ASSERT_TRUE(entry->assign(changed, OtherText(*entry))) << NameOf(*entry);
  }
  changed.common.analysis_group_file = "my.chk";
  const auto saved = SaveSettings(base::NativeFileSystem(), places, defaults, changed);
  ASSERT_TRUE(saved) << saved.error().message;
  const LoadedSettings loaded = LoadWhatIsReadable(places);
  EXPECT_TRUE(loaded.problems.empty());
  for (const SettingEntry* entry : AllEntries()) {
    EXPECT_EQ(entry->text(loaded.settings), entry->text(changed)) << NameOf(*entry);
  }
  EXPECT_EQ(loaded.settings, changed);
}

TEST(SettingsCatalogue, EveryDefaultExpressionCompilesWithoutANote) {
  int expressions = 0;
  for (const SettingEntry* entry : AllEntries()) {
    const bool is_condition = entry->kind == SettingKind::kCondition;
    const std::string text = entry->default_text(kPlaces);
    if ((!is_condition && entry->kind != SettingKind::kExpression) || text.empty()) continue;
    ++expressions;
    const auto program = analysis::BuildProgram(text);
    ASSERT_TRUE(program) << NameOf(*entry) << program.error().message;
    EXPECT_EQ(program->IsValue(), !is_condition) << NameOf(*entry);
    EXPECT_TRUE(program->Notes().empty()) << NameOf(*entry) << program->Notes().front().message;
  }
  EXPECT_EQ(expressions, 4 + 6 + 6 + 6 + 3 + 2);
}

TEST(SettingsCatalogue, EveryKeyIsExplainedInItsGroup) {
  std::set<std::string> titles;
  for (const SettingsGroup& group : SettingsCatalogue()) {
    EXPECT_TRUE(titles.insert(group.title).second) << group.title;
    std::set<std::string> labels;
    std::vector<std::string> headings;
    for (const SettingEntry& entry : group.entries) {
      EXPECT_TRUE(labels.insert(entry.heading + entry.label).second) << NameOf(entry);
      EXPECT_TRUE(entry.explanation.ends_with("。")) << NameOf(entry);
      EXPECT_LE(base::Columns(entry.label), 32U) << entry.label;
      EXPECT_EQ(entry.choices.empty(), entry.kind != SettingKind::kChoice) << NameOf(entry);
      if (headings.empty() || headings.back() != entry.heading) headings.push_back(entry.heading);
    }
    const std::set<std::string> distinct(headings.begin(), headings.end());
    EXPECT_EQ(distinct.size(), headings.size()) << group.title << ": a heading is torn apart";
  }
}

TEST(SettingsCatalogue, ScaleChoicesAndTheSecretAreWhatTheyMustBe) {
  constexpr std::array kScales = {"０：変更しない", "１：チャートの最大値、最小値に合わせて変更",
                                  "２：０～１００に変更", "３：－１００～１００に変更"};
  int scales = 0;
  for (const SettingEntry* entry : AllEntries()) {
    EXPECT_EQ(entry->kind == SettingKind::kSecret, entry->key == "DaiwaPassword");
    if (entry->key.find("maxminid") == std::string::npos) continue;
    ++scales;
    EXPECT_TRUE(std::ranges::equal(entry->choices, kScales, {}, &SettingChoice::text));
  }
  EXPECT_EQ(scales, 3 + 18);
}

}  // namespace
}  // namespace orin::settings
