#pragma once

#include <span>

#include "settings/key_table.h"
#include "settings/settings.h"

namespace orin::settings {

// The keys of each group. Made once.
const KeyTable<BusSettings>& BusTable();
const KeyTable<TaxSettings>& TaxTable();
const KeyTable<MenuColorSettings>& MenuColorTable();
const KeyTable<MenuDisplaySettings>& MenuDisplayTable();
const KeyTable<ChartCommonColorSettings>& ChartCommonColorTable();
const KeyTable<StockRankingSettings>& StockRankingTable();
const KeyTable<ChartActionSettings>& ChartActionTable();
const KeyTable<ChartDisplaySettings>& ChartDisplayTable();
const KeyTable<OrinSettings>& OrinTable();
const KeyTable<CommonSettings>& CommonTable();
const KeyTable<WindowSettings>& WindowTable();
const KeyTable<OrinSimulationSettings>& OrinSimulationTable();
const KeyTable<AnalysisGroup>& AnalysisGroupTable();

/// The sub-charts in the order of the catalogue, 0 for none.
std::span<const SettingChoice> SubChartChoices();

}  // namespace orin::settings
