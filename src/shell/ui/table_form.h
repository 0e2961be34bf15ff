#pragma once

#include <QWidget>

#include "shell/ui/table_view.h"

namespace orin::shell {

/// A window with a table and the number of its rows.
class table_Form final : public QWidget {
  Q_OBJECT

 public:
  /// Both outlive the window.
  table_Form(const QString& caption, lists::Table table, Messages& messages,
             base::FileSystem& files);

 Q_SIGNALS:
  void CodeChosen(const QString& code);
};

}  // namespace orin::shell
