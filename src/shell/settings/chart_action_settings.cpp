#include "shell/settings/chart_action_settings.h"

#include <array>

#include "shell/settings/key_table.h"

namespace orin::shell {

namespace {

constexpr std::string_view kSection = "ChartAction";

using Row = KeyRow<ChartActionSettings>;

constexpr std::array kRows = {
    Row{"bunkatsu_auto_check", &ChartActionSettings::bunkatsu_auto_check, "1"},
};

}  // namespace

ChartActionSettings ReadChartAction(const base::ProfileFile& profile) {
  return ReadGroup<ChartActionSettings>(profile, kSection, kRows, {});
}

void WriteChartAction(base::ProfileFile& profile, const ChartActionSettings& settings) {
  WriteGroup<ChartActionSettings>(profile, kSection, kRows, settings);
}

}  // namespace orin::shell
