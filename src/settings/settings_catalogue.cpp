#include "settings/settings_catalogue.h"

#include "settings/setting_input.h"
#include "settings/setting_tables.h"

namespace orin::settings {

namespace {

constexpr const char* kHelpPage = "settings";

/// The row lives as long as the program, for its table does.
template <typename Group>
SettingEntry EntryOf(const KeyRow<Group>& row, Group Settings::*group) {
  SettingEntry entry;
  entry.key = row.key;
  entry.label = row.label;
  entry.explanation = row.explanation;
  entry.kind = row.form.kind;
  entry.minimum = row.form.minimum;
  entry.maximum = row.form.maximum;
  entry.choices = row.form.choices;
  entry.text = [&row, group](const Settings& settings) {
    return TextOf(row.place.In(settings.*group));
  };
  entry.default_text = [&row](const SettingsPlaces& places) {
    return DefaultText(places, row.form.base, row.default_value);
  };
  entry.assign = [&row, group](Settings& settings, std::string_view text) {
    return AssignInput(row.place.In(settings.*group), row.form, row.label, text);
  };
  return entry;
}

template <typename Group>
void AddGroups(const KeyTable<Group>& table, Group Settings::*group,
               std::vector<SettingsGroup>& groups) {
  for (const KeyPage<Group>& page : table.pages) {
    SettingsGroup shown{
        page.title, std::string(table.file), std::string(table.section), kHelpPage, {}};
    for (const KeyHeading<Group>& heading : page.headings) {
      for (const KeyRow<Group>& row : heading.rows) {
        SettingEntry entry = EntryOf(row, group);
        entry.section = table.SectionOf(row);
        entry.heading = heading.heading;
        shown.entries.push_back(std::move(entry));
      }
    }
    groups.push_back(std::move(shown));
  }
}

std::vector<SettingsGroup> MakeCatalogue() {
  std::vector<SettingsGroup> groups;
  AddGroups(WindowTable(), &Settings::window, groups);
  AddGroups(OrinTable(), &Settings::orin, groups);
  AddGroups(BusTable(), &Settings::bus, groups);
  AddGroups(MenuDisplayTable(), &Settings::menu_display, groups);
  AddGroups(MenuColorTable(), &Settings::menu_color, groups);
  AddGroups(ChartActionTable(), &Settings::chart_action, groups);
  AddGroups(ChartCommonColorTable(), &Settings::chart_common_color, groups);
  AddGroups(ChartDisplayTable(), &Settings::chart_display, groups);
  AddGroups(CommonTable(), &Settings::common, groups);
  AddGroups(AnalysisGroupTable(), &Settings::analysis_group, groups);
  AddGroups(StockRankingTable(), &Settings::stock_ranking, groups);
  AddGroups(OrinSimulationTable(), &Settings::orin_simulation, groups);
  AddGroups(TaxTable(), &Settings::tax, groups);
  return groups;
}

}  // namespace

const std::vector<SettingsGroup>& SettingsCatalogue() {
  static const std::vector<SettingsGroup> catalogue = MakeCatalogue();
  return catalogue;
}

}  // namespace orin::settings
