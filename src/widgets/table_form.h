#pragma once

#include <QWidget>

#include "widgets/table_view.h"

namespace orin::widgets {

/// A window with a table and the number of its rows.
class table_Form final : public QWidget {
  Q_OBJECT

 public:
  /// Both outlive the window.
  table_Form(const QString& caption, base::Table table, base::Messages& messages,
             base::FileSystem& files);

 Q_SIGNALS:
  void CodeChosen(const QString& code);
};

}  // namespace orin::widgets
