#pragma once

#include "settings/settings.h"

namespace orin::shell {

/// A window that shows the store. When the store or the settings change, the main window knows its
/// windows by this alone.
class StoreWindow {
 public:
  StoreWindow() = default;
  StoreWindow(const StoreWindow&) = delete;
  StoreWindow& operator=(const StoreWindow&) = delete;
  virtual ~StoreWindow() = default;

  /// Drops everything that refers to the store, which is about to be closed or read again.
  virtual void ReleaseStore() {}
  /// Shows the store and the settings as they now stand.
  virtual void Reload() = 0;
  /// Whether the window shows something that a changed setting decides.
  [[nodiscard]] virtual bool DependsOnChange(const settings::Settings& before,
                                             const settings::Settings& after) const = 0;
  /// Whether closing the window would lose work, so that it asks first.
  [[nodiscard]] virtual bool HasUnsavedWork() const { return false; }
};

}  // namespace orin::shell
