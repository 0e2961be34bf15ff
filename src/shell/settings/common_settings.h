#pragma once

#include <cstdint>
#include <string>

#include "base/profile_file.h"

namespace orin::shell {

/// Section Common.
struct CommonSettings {
  int32_t analysis_system_first_file = 0;  // first price file in use; 0: the master's own
  std::string analysis_group_file;         // path setting

  bool operator==(const CommonSettings&) const = default;
};

CommonSettings ReadCommon(const base::ProfileFile& profile);
void WriteCommon(base::ProfileFile& profile, const CommonSettings& settings);

}  // namespace orin::shell
