#include "shell/store_places.h"

#include "store/file_names.h"

namespace orin::shell {

store::StoreLocation LocateStore(const settings::BusSettings& bus,
                                 const settings::SettingsPlaces& places) {
  return store::WithFoundNames({settings::NativeSetting(places, bus.system_directory),
                                settings::NativeSetting(places, bus.price_directory)});
}

}  // namespace orin::shell
