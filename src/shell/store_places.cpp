#include "shell/store_places.h"

namespace orin::shell {

store::StoreLocation LocateStore(const BusSettings& bus, const SettingsPlaces& places) {
  return {NativeSetting(places, bus.system_dir), NativeSetting(places, bus.datasave_dir)};
}

}  // namespace orin::shell
