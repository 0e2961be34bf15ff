#pragma once

#include <QLabel>
#include <QPixmap>
#include <QWidget>
#include <filesystem>

namespace orin::shell {

/// The window that is there while the program starts: its picture, its name and the status line
/// of the stage under way.
class logo_Form final : public QWidget {
  Q_OBJECT

 public:
  /// `picture` takes the place of the program's own where it is one.
  explicit logo_Form(const std::filesystem::path& picture);

  void ShowStatus(const QString& status);

 private:
  QLabel* status_;
};

}  // namespace orin::shell
