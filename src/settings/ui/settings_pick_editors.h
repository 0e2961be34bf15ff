#pragma once

#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>
#include <filesystem>

#include "settings/ui/settings_editor.h"

namespace orin::settings {

/// A path setting as the settings file has it, and a button that asks for the file or directory.
class PathEditor final : public SettingEditor {
 public:
  PathEditor(const SettingEntry& entry, const EditorContext& context);
  void ShowText(const QString& text) override;

 private:
  void Browse_Click();

  EditorContext context_;
  QLineEdit* line_;
};

/// A date as yyyy/mm/dd, and a button that opens a calendar.
class DateEditor final : public SettingEditor {
 public:
  explicit DateEditor(const SettingEntry& entry);
  void ShowText(const QString& text) override;
  [[nodiscard]] bool IsWide() const override { return false; }

 private:
  void Calendar_Click();

  QLineEdit* line_;
  QToolButton* button_;
};

/// The text of a path setting: "\" between the parts, one at the end of a directory.
std::string PathSettingText(const std::filesystem::path& path, SettingKind kind);

}  // namespace orin::settings
