#include <QGuiApplication>
#include <QtGlobal>
#include <memory>

#include "chart/picture_format.h"
#include "painting/picture_encoding.h"

// The painter for programs without a window toolkit: a module of one function, loaded when a
// picture is wanted.

namespace {

/// Fonts need an application; it has no window and needs no screen.
void HaveApplication() {
  if (QGuiApplication::instance() != nullptr) return;
  // What the toolkit has to say of its surroundings is nothing for a user.
  qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
  static int count = 3;
  static char name[] = "orin-cli";
  static char option[] = "-platform";
  static char platform[] = "offscreen";
  static char* arguments[] = {name, option, platform, nullptr};
  static const auto application = std::make_unique<QGuiApplication>(count, arguments);
}

}  // namespace

extern "C" Q_DECL_EXPORT bool OrinEncodePicture(const orin::chart::DrawList& picture, double scale,
                                                orin::chart::PictureFormat format,
                                                std::string& bytes) {
  HaveApplication();
  const auto encoded = orin::painting::EncodePicture(picture, scale, format);
  if (encoded) bytes = encoded->toStdString();
  return encoded.has_value();
}
