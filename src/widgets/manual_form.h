#pragma once

#include <QDialog>
#include <QTextBrowser>
#include <QWidget>
#include <filesystem>

namespace orin::widgets {

/// Where the manual and the demo market are: "../share/orin" as seen from the program.
std::filesystem::path SharedDirectory();

/// F1 opens the manual at the page of a dialog, its property helpPage, beside it.
void OpenManualWithF1(QDialog* dialog);

/// The manual, a page at a time, with links between the pages.
class manual_Form final : public QWidget {
  Q_OBJECT

 public:
  manual_Form();

  /// A page by its name, as "price_listing"; the contents where there is no such page.
  void ShowPage(const QString& page);

 private:
  void Open(const QUrl& link);

  QTextBrowser* browser_;
};

}  // namespace orin::widgets
