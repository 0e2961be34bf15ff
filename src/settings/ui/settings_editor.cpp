#include "settings/ui/settings_editor.h"

#include <QHBoxLayout>

#include "settings/ui/settings_color_editor.h"
#include "settings/ui/settings_expression_editor.h"
#include "settings/ui/settings_line_editors.h"
#include "settings/ui/settings_pick_editors.h"
#include "widgets/qt_text.h"

namespace orin::settings {

SettingEditor::SettingEditor(const SettingEntry& entry) : entry_(entry) {
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
}

void SettingEditor::Adopt(QWidget* field) {
  field->setObjectName(widgets::Text(entry_.key));
  const QString heading = widgets::Text(entry_.heading);
  const QString name = widgets::Text(entry_.label);
  field->setAccessibleName(heading.isEmpty() ? name
                                             : QStringLiteral("%1（%2）").arg(name, heading));
  field->setAccessibleDescription(widgets::Text(entry_.explanation));
  setFocusProxy(field);
  layout()->addWidget(field);
}

void SettingEditor::Append(QWidget* widget, const QString& name) {
  widget->setAccessibleName(QStringLiteral("%1の%2").arg(widgets::Text(entry_.label), name));
  layout()->addWidget(widget);
}

SettingEditor* MakeSettingEditor(const SettingEntry& entry, const EditorContext& context) {
  switch (entry.kind) {
    case SettingKind::kCheck:
      return new CheckEditor(entry);
    case SettingKind::kNumber:
      return new NumberEditor(entry);
    case SettingKind::kChoice:
      return new ChoiceEditor(entry);
    case SettingKind::kColor:
      return new ColorEditor(entry);
    case SettingKind::kSecret:
      return new SecretEditor(entry);
    case SettingKind::kFile:
    case SettingKind::kDirectory:
      return new PathEditor(entry, context);
    case SettingKind::kDate:
      return new DateEditor(entry);
    case SettingKind::kCondition:
    case SettingKind::kExpression:
      return new ExpressionEditor(entry);
    case SettingKind::kRate:
    case SettingKind::kText:
    case SettingKind::kTime:
    case SettingKind::kStockCode:
      break;
  }
  return new LineEditor(entry);
}

}  // namespace orin::settings
