#include "shell/settings/common_settings.h"

#include <array>

#include "shell/settings/key_table.h"

namespace orin::shell {

namespace {

constexpr std::string_view kSection = "Common";

using Row = KeyRow<CommonSettings>;

constexpr std::array kRows = {
    Row{"AnalysisSystemFirstFile", &CommonSettings::analysis_system_first_file, "0"},
    Row{"AnalysisGroupFile", &CommonSettings::analysis_group_file, "orin.chk"},
};

}  // namespace

CommonSettings ReadCommon(const base::ProfileFile& profile) {
  return ReadGroup<CommonSettings>(profile, kSection, kRows, {});
}

void WriteCommon(base::ProfileFile& profile, const CommonSettings& settings) {
  WriteGroup<CommonSettings>(profile, kSection, kRows, settings);
}

}  // namespace orin::shell
