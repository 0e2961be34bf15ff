#include "widgets/table_form.h"

#include <QLabel>
#include <QVBoxLayout>
#include <utility>

namespace orin::widgets {

table_Form::table_Form(const QString& caption, base::Table table, base::Messages& messages,
                       base::FileSystem& files) {
  setWindowTitle(caption);
  auto* count = new QLabel(QStringLiteral("%1件").arg(table.rows.size()), this);
  auto* view = new TableView(caption, ColumnFit::kContents, this);
  view->AllowSorting();
  view->AllowSaving(messages, files);
  view->Show(std::move(table));
  connect(view, &TableView::CodeChosen, this, &table_Form::CodeChosen);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(view);
  layout->addWidget(count);
  setFocusProxy(view);
}

}  // namespace orin::widgets
