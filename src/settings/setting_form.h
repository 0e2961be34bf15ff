#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "base/color.h"
#include "base/currency.h"
#include "base/date.h"
#include "settings/settings_places.h"

namespace orin::settings {

/// What a setting is, and with it how it is edited and which texts it takes.
enum class SettingKind {
  kCheck,       // "1" or "0"
  kNumber,      // a whole number within limits
  kRate,        // a number with up to four decimals within limits
  kChoice,      // one of the entry's choices
  kColor,       // decimal 0x00BBGGRR
  kText,        // any line
  kSecret,      // a line that is not shown
  kFile,        // path setting of a file
  kDirectory,   // path setting of a directory
  kDate,        // yyyy/mm/dd
  kTime,        // hh:mm:ss
  kStockCode,   // a ticker, or nothing
  kCondition,   // an expression that is true or false, or nothing
  kExpression,  // an expression with a value, or nothing
};

struct SettingChoice {
  int32_t value;
  std::string_view text;  // as "０：変更しない"
};

/// A kind with its limits.
struct SettingForm {
  SettingKind kind = SettingKind::kText;
  double minimum = 0;  // of kNumber and kRate
  double maximum = 0;
  std::span<const SettingChoice> choices = {};  // of kChoice; they outlive the form
  DefaultBase base = DefaultBase::kNone;        // what the default is relative to
};

// The value of a text of a settings file. False, with nothing changed, where the text is no such
// value or outside the form's limits. Decimals of a whole number are rounded half to even, those
// of a rate beyond the fourth likewise. A box is ticked by "True" in any case and every number
// but 0, and not by 0 and "False".
bool ParseSetting(std::string_view text, const SettingForm& form, bool& value);
bool ParseSetting(std::string_view text, const SettingForm& form, int32_t& value);
bool ParseSetting(std::string_view text, const SettingForm& form, base::Currency& value);
bool ParseSetting(std::string_view text, const SettingForm& form, base::Color& value);
bool ParseSetting(std::string_view text, const SettingForm& form, base::Date& value);
bool ParseSetting(std::string_view text, const SettingForm& form, std::string& value);

// The text of a value in a settings file.
std::string SettingText(bool value);
std::string SettingText(int32_t value);
std::string SettingText(base::Currency value);
std::string SettingText(base::Color value);
std::string SettingText(base::Date value);
std::string SettingText(const std::string& value);

}  // namespace orin::settings
