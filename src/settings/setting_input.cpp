#include "settings/setting_input.h"

#include <algorithm>
#include <array>
#include <string>

#include "base/cp932.h"
#include "base/currency.h"
#include "base/text.h"

namespace orin::settings {

namespace {

bool IsLine(SettingKind kind) {
  constexpr std::array kLines = {SettingKind::kText,      SettingKind::kSecret,
                                 SettingKind::kFile,      SettingKind::kDirectory,
                                 SettingKind::kCondition, SettingKind::kExpression};
  return std::ranges::find(kLines, kind) != kLines.end();
}

/// ASCII for the full-width forms of it, U+FF01 to U+FF5E, EF BC 81 to EF BD 9E in UTF-8, and for
/// the full-width blank.
std::string Narrow(std::string_view text) {
  constexpr std::string_view kWideBlank = "　";
  std::string narrow;
  for (size_t i = 0; i < text.size(); ++i) {
    const std::string_view rest = text.substr(i);
    const auto byte = [&](size_t k) {
      return k < rest.size() ? static_cast<unsigned char>(rest[k]) : 0;
    };
    const int code = (byte(1) - 0xBC) * 0x40 + byte(2) - 0x81 + '!';
    const bool is_wide = byte(0) == 0xEF && byte(1) >= 0xBC && byte(1) <= 0xBD && byte(2) >= 0x80 &&
                         code >= '!' && code <= '~';
    const bool is_blank = rest.starts_with(kWideBlank);
    if (is_wide || is_blank) i += 2;
    narrow += is_wide ? static_cast<char>(code) : is_blank ? ' ' : rest.front();
  }
  return narrow;
}

std::string Widen(std::string_view text) {
  std::string wide;
  for (const char c : text) {
    wide += '\xEF';
    const int code = c - '!' + 0x81;
    wide += static_cast<char>(code < 0xC0 ? 0xBC : 0xBD);
    wide += static_cast<char>(code < 0xC0 ? code : code - 0x40);
  }
  return wide;
}

std::string LimitText(double limit) {
  return Widen(SettingText(base::Currency::FromDouble(limit).value_or(base::Currency())));
}

std::string Limits(const SettingForm& form) {
  return LimitText(form.minimum) + "～" + LimitText(form.maximum);
}

std::string Numbers(const SettingForm& form) {
  std::string numbers;
  for (const SettingChoice& choice : form.choices) {
    if (!numbers.empty()) numbers += "、";
    numbers += Widen(std::to_string(choice.value));
  }
  return numbers;
}

/// What the setting takes, for "…は<this>で指定してください。".
std::string Wanted(const SettingForm& form) {
  switch (form.kind) {
    case SettingKind::kCheck:
      return "１（オン）か０（オフ）";
    case SettingKind::kNumber:
      return Limits(form) + "の整数";
    case SettingKind::kRate:
      return Limits(form) + "の数（小数は４桁まで）";
    case SettingKind::kChoice:
      return "選択肢の番号（" + Numbers(form) + "）";
    case SettingKind::kColor:
      return "色の番号（０～１６７７７２１５の整数）";
    case SettingKind::kDate:
      return "「2020/01/31」の形の日付";
    case SettingKind::kTime:
      return "「09:30:00」の形の時刻";
    case SettingKind::kStockCode:
      return "８文字までの銘柄コード";
    default:
      return "一行の文字";
  }
}

base::Status CheckLine(std::string_view subject, std::string_view text) {
  if (std::ranges::any_of(text,
                          [](char c) { return (c >= 0 && c < ' ' && c != '\t') || c == 127; })) {
    return base::Fail(std::string(subject) + "には改行などの制御文字を指定できません。");
  }
  const auto encoded = base::EncodeCp932(text);
  if (!encoded) return base::Fail(std::string(subject) + "の" + encoded.error().message);
  return {};
}

/// Whether `text` has no more decimals than a value of the kind keeps.
bool IsExact(SettingKind kind, std::string_view text) {
  constexpr size_t kRateDecimals = 4;
  const size_t point = text.find('.');
  if (kind == SettingKind::kStockCode || point == std::string_view::npos) return true;
  return kind == SettingKind::kRate && text.size() - point - 1 <= kRateDecimals;
}

}  // namespace

base::Status AssignInput(ValuePointer value, const SettingForm& form, std::string_view label,
                         std::string_view input) {
  const auto current = std::visit([](auto* place) { return SettingText(*place); }, value);
  if (input == current) return {};
  const std::string subject = "「" + std::string(label) + "」";
  const bool is_line = IsLine(form.kind);
  if (is_line) {
    if (auto checked = CheckLine(subject, input); !checked) return checked;
  }
  const std::string narrow = Narrow(input);
  const std::string_view text = is_line ? input : base::TrimBlanks(narrow);
  const bool assigned =
      (is_line || IsExact(form.kind, text)) &&
      std::visit([&](auto* place) { return ParseSetting(text, form, *place); }, value);
  if (!assigned) return base::Fail(subject + "は" + Wanted(form) + "で指定してください。");
  return {};
}

}  // namespace orin::settings
