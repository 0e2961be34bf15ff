#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "base/profile_file.h"
#include "base/result.h"
#include "settings/setting_form.h"
#include "settings/settings_places.h"

namespace orin::settings {

using ValuePointer =
    std::variant<bool*, int32_t*, base::Currency*, base::Color*, base::Date*, std::string*>;
using ConstValuePointer = std::variant<const bool*, const int32_t*, const base::Currency*,
                                       const base::Color*, const base::Date*, const std::string*>;

/// Where a value lives in a group's struct, and with it the value's type.
template <typename Group>
class ValuePlace {
 public:
  /// A pointer to a member, or a function that takes `auto&` of the group and gives `auto&`.
  template <typename Finder>
  ValuePlace(Finder finder)  // NOLINT(google-explicit-constructor): rows name the member alone
      : change_([finder](Group& group) -> ValuePointer { return &std::invoke(finder, group); }),
        read_([finder](const Group& group) -> ConstValuePointer {
          return &std::invoke(finder, group);
        }) {}

  [[nodiscard]] ValuePointer In(Group& group) const { return change_(group); }
  [[nodiscard]] ConstValuePointer In(const Group& group) const { return read_(group); }

 private:
  std::function<ValuePointer(Group&)> change_;
  std::function<ConstValuePointer(const Group&)> read_;
};

/// The place of `member` in the element `place` of a group's array.
template <typename Array, typename Member>
auto Numbered(Array array, size_t place, Member member) {
  return [array, place, member](auto& group) -> decltype(auto) {
    return std::invoke(member, std::invoke(array, group)[place]);
  };
}

/// Everything about a key: its exact name (a blank at the end included), its value's place, the
/// text that counts where the file has none, its form and how the settings window explains it.
template <typename Group>
struct KeyRow {
  std::string key;
  ValuePlace<Group> place;
  std::string default_value;
  SettingForm form;
  std::string label;
  std::string explanation;
  std::string_view section = {};  // where it is not that of the table
};

/// Rows that belong together.
template <typename Group>
struct KeyHeading {
  std::string heading;
  std::vector<KeyRow<Group>> rows;
};

/// A page of the settings window.
template <typename Group>
struct KeyPage {
  std::string title;
  std::vector<KeyHeading<Group>> headings;
};

/// All keys of a group. They are written in this order into a section that lacks them.
template <typename Group>
struct KeyTable {
  std::string_view file;
  std::string_view section;
  std::vector<KeyPage<Group>> pages;

  [[nodiscard]] std::string_view SectionOf(const KeyRow<Group>& row) const {
    return row.section.empty() ? section : row.section;
  }
};

// The forms that rows name.
constexpr SettingForm Check() { return {SettingKind::kCheck}; }
constexpr SettingForm Number(int32_t minimum, int32_t maximum) {
  return {SettingKind::kNumber, static_cast<double>(minimum), static_cast<double>(maximum)};
}
constexpr SettingForm Rate(double minimum, double maximum) {
  return {SettingKind::kRate, minimum, maximum};
}
constexpr SettingForm Choice(std::span<const SettingChoice> choices) {
  return {SettingKind::kChoice, 0, 0, choices};
}
constexpr SettingForm Paint() { return {SettingKind::kColor}; }
constexpr SettingForm Text() { return {SettingKind::kText}; }
constexpr SettingForm Secret() { return {SettingKind::kSecret}; }
constexpr SettingForm File(DefaultBase base = DefaultBase::kNone) {
  return {SettingKind::kFile, 0, 0, {}, base};
}
constexpr SettingForm Directory(DefaultBase base = DefaultBase::kNone) {
  return {SettingKind::kDirectory, 0, 0, {}, base};
}
constexpr SettingForm Day() { return {SettingKind::kDate}; }
constexpr SettingForm Time() { return {SettingKind::kTime}; }
constexpr SettingForm Stock() { return {SettingKind::kStockCode}; }
constexpr SettingForm Condition() { return {SettingKind::kCondition}; }
constexpr SettingForm Expression() { return {SettingKind::kExpression}; }

/// The value of `text`, else of `fallback`, which is a text of the form.
void ReadValue(ValuePointer value, const SettingForm& form, std::string_view text,
               std::string_view fallback);
std::string TextOf(ConstValuePointer value);

/// Calls `visit` with each row in the order of the table.
template <typename Group, typename Visit>
void ForEachRow(const KeyTable<Group>& table, Visit visit) {
  for (const KeyPage<Group>& page : table.pages) {
    for (const KeyHeading<Group>& heading : page.headings) {
      for (const KeyRow<Group>& row : heading.rows) visit(row);
    }
  }
}

template <typename Group>
Group ReadGroup(const base::ProfileFile& profile, const KeyTable<Group>& table,
                const SettingsPlaces& places = {}) {
  Group group;
  ForEachRow(table, [&](const KeyRow<Group>& row) {
    const std::string fallback = DefaultText(places, row.form.base, row.default_value);
    ReadValue(row.place.In(group), row.form, profile.Get(table.SectionOf(row), row.key, fallback),
              fallback);
  });
  return group;
}

template <typename Group>
void WriteGroup(base::ProfileFile& profile, const KeyTable<Group>& table, const Group& group) {
  ForEachRow(table, [&](const KeyRow<Group>& row) {
    profile.Set(table.SectionOf(row), row.key, TextOf(row.place.In(group)));
  });
}

}  // namespace orin::settings
