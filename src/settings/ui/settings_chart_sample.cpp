#include "settings/ui/settings_chart_sample.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace orin::settings {

namespace {

using store::BarPeriod;

struct Sample {
  std::string_view key;  // a colour
  chart::SampleChoice choice;
};

constexpr std::array kSamples = {
    Sample{"weekidou1_color", {BarPeriod::kWeek, "volume"}},
    Sample{"monthidou1_color", {BarPeriod::kMonth, "volume"}},
    Sample{"rsi1_color", {BarPeriod::kDay, "rsi"}},
    Sample{"dekidakavr1_color", {BarPeriod::kDay, "vr"}},
    Sample{"rci1_color", {BarPeriod::kDay, "rci"}},
    Sample{"kairi1_color", {BarPeriod::kDay, "deviation"}},
    Sample{"stochasticsk_color", {BarPeriod::kDay, "stochastics"}},
    Sample{"reverse_color", {BarPeriod::kDay, "inversewatch"}},
    Sample{"correlation_color", {BarPeriod::kDay, "correlation"}},
    Sample{"ichimokukijyun_color", {BarPeriod::kDay, "ichimoku"}},
    Sample{"bollinger_color", {BarPeriod::kDay, "bollinger"}},
    Sample{"key_color", {BarPeriod::kDay, "kagi"}},
    Sample{"original1_color", {BarPeriod::kDay, "original1"}},
    Sample{"original3_color", {BarPeriod::kDay, "original2"}},
    Sample{"original5_color", {BarPeriod::kDay, "original3"}},
    Sample{"complex1_color", {BarPeriod::kDay, "composite1"}},
    Sample{"complex2_color", {BarPeriod::kDay, "composite2"}},
    Sample{"complex3_color", {BarPeriod::kDay, "composite3"}},
    Sample{"complex4_color", {BarPeriod::kDay, "composite4"}},
    Sample{"complex5_color", {BarPeriod::kDay, "composite5"}},
    Sample{"complex6_color", {BarPeriod::kDay, "composite6"}},
    Sample{"complex21_color", {BarPeriod::kWeek, "composite1"}},
    Sample{"complex22_color", {BarPeriod::kWeek, "composite2"}},
    Sample{"complex23_color", {BarPeriod::kWeek, "composite3"}},
    Sample{"complex24_color", {BarPeriod::kWeek, "composite4"}},
    Sample{"complex25_color", {BarPeriod::kWeek, "composite5"}},
    Sample{"complex26_color", {BarPeriod::kWeek, "composite6"}},
    Sample{"complex31_color", {BarPeriod::kMonth, "composite1"}},
    Sample{"complex32_color", {BarPeriod::kMonth, "composite2"}},
    Sample{"complex33_color", {BarPeriod::kMonth, "composite3"}},
    Sample{"complex34_color", {BarPeriod::kMonth, "composite4"}},
    Sample{"complex35_color", {BarPeriod::kMonth, "composite5"}},
    Sample{"complex36_color", {BarPeriod::kMonth, "composite6"}},
};

}  // namespace

chart::SampleChoice SampleFor(const SettingsGroup& group, const std::string& heading) {
  for (const SettingEntry& entry : group.entries) {
    if (entry.heading != heading) continue;
    const auto* sample = std::ranges::find(kSamples, entry.key, &Sample::key);
    if (sample != kSamples.end()) return sample->choice;
  }
  // The daily chart with its volumes shows all the others.
  return {};
}

}  // namespace orin::settings
