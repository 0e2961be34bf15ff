#include "shell/program_state.h"

#include "shell/store_places.h"

namespace orin::shell {

void ProgramState::CompareStore() const {
  if (on_store_changed && store && store->HasChangedOnDisk()) on_store_changed();
}

store::StoreLocation ProgramState::StoreLocation() const {
  return LocateStore(settings.bus, places);
}

}  // namespace orin::shell
