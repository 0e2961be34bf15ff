#include "shell/settings/bus_settings.h"

#include <array>

#include "shell/settings/key_table.h"

namespace orin::shell {

namespace {

constexpr std::string_view kSection = "Bus";

using Row = KeyRow<BusSettings>;

constexpr std::array kRows = {
    Row{"update_file", &BusSettings::update_file, "yahoo\\YahooHtm.txt", DefaultBase::kProgram},
    Row{"csvday_dir", &BusSettings::csvday_dir, "brand\\", DefaultBase::kProgram},
    Row{"csvweek_dir", &BusSettings::csvweek_dir, "brand_w\\", DefaultBase::kProgram},
    Row{"datasave_dir", &BusSettings::datasave_dir, "data\\", DefaultBase::kProgram},
    Row{"systemsave_dir", &BusSettings::systemsave_dir, "old\\", DefaultBase::kProgram},
    Row{"serial_file", &BusSettings::serial_file, "patrol\\serial.txt", DefaultBase::kProgram},
    Row{"comp_file", &BusSettings::comp_file, "patrol\\compare.txt", DefaultBase::kProgram},
    Row{"system_dir", &BusSettings::system_dir, "", DefaultBase::kProgram},
    // The blank at the end of these six names is part of them.
    Row{"ini_file ", &BusSettings::ini_file, "orin.ini", DefaultBase::kSettings},
    Row{"picture_file ", &BusSettings::picture_file, "bmp\\orin.bmp", DefaultBase::kProgram},
    Row{"meisai_file ", &BusSettings::meisai_file, "orin.trn", DefaultBase::kSettings},
    Row{"random_dir ", &BusSettings::random_dir, "", DefaultBase::kProgram},
    Row{"daily_random_dir ", &BusSettings::daily_random_dir, "", DefaultBase::kProgram},
    Row{"ramdisk_dir ", &BusSettings::ramdisk_dir, ""},
};

}  // namespace

BusSettings ReadBus(const base::ProfileFile& profile, const SettingsPlaces& places) {
  return ReadGroup<BusSettings>(profile, kSection, kRows, places);
}

void WriteBus(base::ProfileFile& profile, const BusSettings& settings) {
  WriteGroup<BusSettings>(profile, kSection, kRows, settings);
}

void WriteBusDefaults(base::ProfileFile& profile, const SettingsPlaces& places) {
  BusSettings defaults = ReadBus(base::ProfileFile(), places);
  defaults.update_file = "html\\StockHtm.txt";
  WriteBus(profile, defaults);
}

}  // namespace orin::shell
