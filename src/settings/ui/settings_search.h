#pragma once

#include <QString>
#include <span>
#include <vector>

#include "settings/ui/settings_draft.h"

namespace orin::settings {

/// The entries whose label, heading, explanation, key or group title hold every word of the
/// text, in the order of the catalogue. Upper and lower case and the widths of letters do not
/// count. None for a text of blanks.
std::vector<EntryPlace> FindSettings(std::span<const SettingsGroup> groups, const QString& text);

}  // namespace orin::settings
