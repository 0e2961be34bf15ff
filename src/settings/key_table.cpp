#include "settings/key_table.h"

namespace orin::settings {

void ReadValue(ValuePointer value, const SettingForm& form, std::string_view text,
               std::string_view fallback) {
  std::visit(
      [&](auto* place) {
        if (!ParseSetting(text, form, *place)) ParseSetting(fallback, form, *place);
      },
      value);
}

std::string TextOf(ConstValuePointer value) {
  return std::visit([](const auto* place) { return SettingText(*place); }, value);
}

}  // namespace orin::settings
