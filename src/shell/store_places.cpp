#include "shell/store_places.h"

#include "store/file_names.h"

namespace orin::shell {

store::StoreLocation LocateStore(const BusSettings& bus, const SettingsPlaces& places) {
  return store::WithFoundNames(
      {NativeSetting(places, bus.system_dir), NativeSetting(places, bus.datasave_dir)});
}

}  // namespace orin::shell
