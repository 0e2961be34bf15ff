#include "shell/ui/logo_form.h"

#include <QApplication>
#include <QIcon>
#include <QScreen>
#include <QVBoxLayout>

#include "widgets/look.h"
#include "widgets/qt_text.h"

namespace orin::shell {

namespace {

QPixmap Picture(const std::filesystem::path& picture, int height, double ratio) {
  QPixmap own(widgets::PathOf(picture));
  if (own.isNull()) return QIcon(widgets::IconPath()).pixmap(QSize(height, height), ratio);
  own =
      own.scaled(QSize(3 * height, height) * ratio, Qt::KeepAspectRatio, Qt::SmoothTransformation);
  own.setDevicePixelRatio(ratio);
  return own;
}

}  // namespace

logo_Form::logo_Form(const std::filesystem::path& picture)
    : QWidget(nullptr, Qt::SplashScreen), status_(new QLabel(this)) {
  setWindowTitle(QStringLiteral("ミルテ"));
  const int line = fontMetrics().height();
  auto* image = new QLabel(this);
  image->setPixmap(Picture(picture, line * 7, devicePixelRatioF()));
  image->setAlignment(Qt::AlignCenter);
  auto* name = new QLabel(QStringLiteral("ミルテ"), this);
  QFont large = font();
  large.setPointSizeF(large.pointSizeF() * 2);
  large.setBold(true);
  name->setFont(large);
  name->setAlignment(Qt::AlignCenter);
  status_->setAlignment(Qt::AlignCenter);
  status_->setMinimumWidth(line * 22);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(line * 2, line * 2, line * 2, line);
  layout->setSpacing(line);
  layout->addWidget(image);
  layout->addWidget(name);
  layout->addWidget(status_);
}

void logo_Form::ShowStatus(const QString& status) {
  status_->setText(status);
  if (isVisible()) repaint();
}

}  // namespace orin::shell
