#pragma once

#include <QString>
#include <filesystem>
#include <string>
#include <string_view>

namespace orin::widgets {

// Texts and paths across the line between the core and the windows.

inline QString Text(std::string_view utf8) {
  return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}
inline std::string Utf8(const QString& text) { return text.toStdString(); }

inline QString PathOf(const std::filesystem::path& path) {
  return QString::fromStdString(path.string());
}
inline std::filesystem::path PathFrom(const QString& path) { return {path.toStdString()}; }

}  // namespace orin::widgets
