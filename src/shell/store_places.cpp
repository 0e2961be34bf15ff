#include "shell/store_places.h"

#include <string>

#include "store/file_names.h"

namespace orin::shell {

store::StoreLocation LocateStore(const BusSettings& bus, const SettingsPlaces& places) {
  return {NativeSetting(places, bus.system_dir), NativeSetting(places, bus.datasave_dir)};
}

base::Result<std::optional<int16_t>> ChosenFirstFile(const CommonSettings& common) {
  const int32_t number = common.analysis_system_first_file;
  if (number == 0) return std::nullopt;
  if (number < 1 || number > store::kLastFileNumber) {
    return base::Fail("設定 AnalysisSystemFirstFile の値 " + std::to_string(number) +
                      " は価格ファイルの番号ではありません。");
  }
  return static_cast<int16_t>(number);
}

}  // namespace orin::shell
