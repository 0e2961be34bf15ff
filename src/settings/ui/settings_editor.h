#pragma once

#include <QWidget>

#include "base/messages.h"
#include "settings/settings_catalogue.h"
#include "settings/settings_places.h"

namespace orin::settings {

/// What edits one setting. It hands on every text, right or wrong, in the form of the settings
/// file; the draft judges it. The widget that takes the focus has the key as its object name.
class SettingEditor : public QWidget {
  Q_OBJECT

 public:
  explicit SettingEditor(const SettingEntry& entry);

  /// Does not send Edited.
  virtual void ShowText(const QString& text) = 0;
  /// Whether it shows the label itself, as a check box does.
  [[nodiscard]] virtual bool ShowsLabel() const { return false; }
  /// Whether it is as wide as there is room.
  [[nodiscard]] virtual bool IsWide() const { return true; }

 Q_SIGNALS:
  void Edited(const QString& text);
  /// The field is left, or the return key was pressed.
  void EditingFinished();

 protected:
  /// Name, key and focus of the widget that is edited; the editor's layout takes it.
  void Adopt(QWidget* field);
  [[nodiscard]] const SettingEntry& Entry() const { return entry_; }
  /// Adds a further widget in a row behind the field, named for those who cannot see it.
  void Append(QWidget* widget, const QString& name);

 private:
  const SettingEntry& entry_;  // of the catalogue
};

struct EditorContext {
  const SettingsPlaces& places;
  base::Messages& messages;
};

/// The editor of the entry's kind. The entry and the context outlive it.
SettingEditor* MakeSettingEditor(const SettingEntry& entry, const EditorContext& context);

}  // namespace orin::settings
