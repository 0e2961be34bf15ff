#pragma once

#include <compare>
#include <cstddef>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "base/result.h"
#include "settings/settings.h"
#include "settings/settings_catalogue.h"
#include "settings/settings_places.h"

namespace orin::settings {

/// An entry of the catalogue by its group and its place in it.
struct EntryPlace {
  size_t group = 0;
  size_t entry = 0;

  auto operator<=>(const EntryPlace&) const = default;
};

/// Settings while they are edited: the values, and the texts that are no values with the reason
/// why. Knows nothing of widgets.
class SettingsDraft {
 public:
  SettingsDraft(Settings current, SettingsPlaces places);

  [[nodiscard]] std::span<const SettingsGroup> Groups() const { return groups_; }
  [[nodiscard]] const SettingEntry& Entry(EntryPlace place) const;
  [[nodiscard]] const Settings& Current() const { return current_; }
  [[nodiscard]] const SettingsPlaces& Places() const { return places_; }

  /// The text as it was typed where that is refused, else the text of the value.
  [[nodiscard]] std::string TextOf(EntryPlace place) const;
  /// Takes the text as the value; a refused one is kept beside the old value with its sentence.
  void Assign(EntryPlace place, const std::string& text);
  /// Why the text at the place is refused; empty where it is not.
  [[nodiscard]] std::string ProblemOf(EntryPlace place) const;
  /// What the compiler says of an expression that is taken all the same; empty: nothing.
  [[nodiscard]] std::string CautionOf(EntryPlace place) const;

  [[nodiscard]] std::optional<EntryPlace> FirstProblem() const;
  [[nodiscard]] bool HasProblem(size_t group) const;

  [[nodiscard]] bool IsDefault(EntryPlace place) const;
  /// The value of an absent key.
  void Reset(EntryPlace place);
  /// The values that resetting the section writes, which differ from those of absent keys in
  /// one path.
  void ResetGroup(size_t group);
  void ResetAll();

  /// Whether there is anything to lose: a value other than the saved one, or a refused text.
  [[nodiscard]] bool IsChanged() const;
  /// The current values are saved.
  void MarkSaved() { saved_ = current_; }

 private:
  struct Refusal {
    std::string text;
    std::string sentence;
  };

  [[nodiscard]] std::string ResetText(EntryPlace place) const;
  [[nodiscard]] bool IsValueOf(EntryPlace place, const std::string& text) const;

  std::span<const SettingsGroup> groups_;
  SettingsPlaces places_;
  Settings saved_;
  Settings current_;
  std::map<EntryPlace, Refusal> refusals_;
};

}  // namespace orin::settings
