#include "shell/ui/settings_editor.h"

#include <QHBoxLayout>

#include "shell/ui/qt_text.h"
#include "shell/ui/settings_color_editor.h"
#include "shell/ui/settings_expression_editor.h"
#include "shell/ui/settings_line_editors.h"
#include "shell/ui/settings_pick_editors.h"

namespace orin::shell {

SettingEditor::SettingEditor(const SettingEntry& entry) : entry_(entry) {
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
}

void SettingEditor::Adopt(QWidget* field) {
  field->setObjectName(Text(entry_.key));
  const QString heading = Text(entry_.heading);
  const QString name = Text(entry_.label);
  field->setAccessibleName(heading.isEmpty() ? name
                                             : QStringLiteral("%1（%2）").arg(name, heading));
  field->setAccessibleDescription(Text(entry_.explanation));
  setFocusProxy(field);
  layout()->addWidget(field);
}

void SettingEditor::Append(QWidget* widget, const QString& name) {
  widget->setAccessibleName(QStringLiteral("%1の%2").arg(Text(entry_.label), name));
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

}  // namespace orin::shell
