#pragma once

#include <QAbstractSpinBox>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>

#include "settings/ui/settings_editor.h"

namespace orin::settings {

class CheckEditor final : public SettingEditor {
 public:
  explicit CheckEditor(const SettingEntry& entry);
  void ShowText(const QString& text) override;
  [[nodiscard]] bool ShowsLabel() const override { return true; }

 private:
  QCheckBox* box_;
};

/// A spin box that keeps a number outside its limits as it was typed, so that the field can say
/// what is wrong instead of changing it silently.
class NumberBox final : public QAbstractSpinBox {
  Q_OBJECT

 public:
  NumberBox(int minimum, int maximum);

  [[nodiscard]] QLineEdit* Line() const { return lineEdit(); }
  [[nodiscard]] QSize sizeHint() const override;
  void stepBy(int steps) override;

 Q_SIGNALS:
  void Stepped();

 protected:
  [[nodiscard]] StepEnabled stepEnabled() const override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  int minimum_;
  int maximum_;
};

class NumberEditor final : public SettingEditor {
 public:
  explicit NumberEditor(const SettingEntry& entry);
  void ShowText(const QString& text) override;
  [[nodiscard]] bool IsWide() const override { return false; }

 private:
  NumberBox* box_;
};

/// A combo box that the wheel changes only while it has the focus, not when its page scrolls.
class ChoiceBox final : public QComboBox {
 public:
  ChoiceBox();

 protected:
  void wheelEvent(QWheelEvent* event) override;
};

class ChoiceEditor final : public SettingEditor {
 public:
  explicit ChoiceEditor(const SettingEntry& entry);
  void ShowText(const QString& text) override;

 private:
  ChoiceBox* box_;
};

/// Rates, texts, times and stock codes.
class LineEditor final : public SettingEditor {
 public:
  explicit LineEditor(const SettingEntry& entry);
  void ShowText(const QString& text) override;
  [[nodiscard]] bool IsWide() const override;

 private:
  QLineEdit* line_;
};

/// A line that is shown only while the user wants to see it.
class SecretEditor final : public SettingEditor {
 public:
  explicit SecretEditor(const SettingEntry& entry);
  void ShowText(const QString& text) override;

 private:
  QLineEdit* line_;
};

}  // namespace orin::settings
