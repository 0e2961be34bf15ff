#include "shell/program_state.h"

#include "shell/store_places.h"

namespace orin::shell {

store::StoreLocation ProgramState::StoreLocation() const {
  return LocateStore(settings.bus, places);
}

}  // namespace orin::shell
