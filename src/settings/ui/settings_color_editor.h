#pragma once

#include <QColor>
#include <QPushButton>

#include "base/color.h"
#include "settings/ui/settings_editor.h"

namespace orin::settings {

/// A button that shows the colour and its number; pressed, it offers the sixteen standard
/// colours and any other.
class ColorEditor final : public SettingEditor {
 public:
  explicit ColorEditor(const SettingEntry& entry);
  void ShowText(const QString& text) override;
  [[nodiscard]] bool IsWide() const override { return false; }

 private:
  void Color_Click();
  void Choose(base::Color color);
  void ShowColor();

  QPushButton* button_;
  base::Color color_;
};

inline QColor ScreenColor(base::Color color) { return {color.red, color.green, color.blue}; }

}  // namespace orin::settings
