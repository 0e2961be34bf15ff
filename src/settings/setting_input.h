#pragma once

#include <string_view>

#include "base/result.h"
#include "settings/key_table.h"

namespace orin::settings {

/// Puts what a user has entered into the value. Full-width digits and signs count as half-width
/// ones where a number, a date, a time or a stock code stands. More decimals than the form has,
/// control characters and characters that the settings files cannot hold are refused; the
/// value's own text never is. Fails with a sentence that names the setting by its label.
base::Status AssignInput(ValuePointer value, const SettingForm& form, std::string_view label,
                         std::string_view input);

}  // namespace orin::settings
