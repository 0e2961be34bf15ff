#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "base/profile_file.h"
#include "shell/settings/settings_places.h"

namespace orin::shell {

/// A key of a settings group: its exact name (a blank at the end included), where its value
/// lives in the group's struct, and the text that counts where the key is absent. A path default
/// begins at one of the two directories.
template <typename Group>
struct KeyRow {
  std::string_view key;
  std::variant<std::string Group::*, int32_t Group::*, bool Group::*> member;
  std::string_view default_value;
  DefaultBase base = DefaultBase::kNone;
};

/// "1", "True" in any case and every other number but 0 tick a box.
bool IsTicked(std::string_view text);

// The value of a text in a member's type; `fallback` counts where the text is no such value.
void AssignText(std::string& value, std::string_view text, std::string_view fallback);
void AssignText(int32_t& value, std::string_view text, std::string_view fallback);
void AssignText(bool& value, std::string_view text, std::string_view fallback);

std::string TextOf(const std::string& value);
std::string TextOf(int32_t value);
std::string TextOf(bool value);

template <typename Group>
std::string DefaultOf(const KeyRow<Group>& row, const SettingsPlaces& places) {
  return DefaultText(places, row.base, row.default_value);
}

template <typename Group>
Group ReadGroup(const base::ProfileFile& profile, std::string_view section,
                std::span<const KeyRow<Group>> rows, const SettingsPlaces& places) {
  Group group;
  for (const KeyRow<Group>& row : rows) {
    const std::string fallback = DefaultOf(row, places);
    const std::string text = profile.Get(section, row.key, fallback);
    std::visit([&](auto member) { AssignText(group.*member, text, fallback); }, row.member);
  }
  return group;
}

template <typename Group>
void WriteGroup(base::ProfileFile& profile, std::string_view section,
                std::span<const KeyRow<Group>> rows, const Group& group) {
  for (const KeyRow<Group>& row : rows) {
    const std::string text =
        std::visit([&](auto member) { return TextOf(group.*member); }, row.member);
    profile.Set(section, row.key, text);
  }
}

}  // namespace orin::shell
