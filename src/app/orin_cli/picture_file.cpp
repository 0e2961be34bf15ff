#include "app/orin_cli/picture_file.h"

#include <array>
#include <dlfcn.h>
#include <string>
#include <system_error>

#include "base/file_system.h"
#include "base/paths.h"

namespace orin::app {

namespace fs = std::filesystem;
using chart::PictureFormat;

namespace {

constexpr const char* kModule = "orin-painter.so";

/// Beside the program where it was built, else where it is installed.
chart::PictureEncoder FindEncoder() {
  std::error_code failure;
  const fs::path program = fs::read_symlink("/proc/self/exe", failure).parent_path();
  if (failure) return nullptr;
  for (const fs::path& directory : {program, program / ORIN_MODULE_DIRECTORY}) {
    // It stays loaded until the program ends.
    void* module = dlopen((directory / kModule).c_str(), RTLD_NOW | RTLD_LOCAL);
    if (module == nullptr) continue;
    void* entry = dlsym(module, chart::kPictureEncoderName);
    if (entry != nullptr) return reinterpret_cast<chart::PictureEncoder>(entry);
  }
  return nullptr;
}

}  // namespace

std::optional<PictureFormat> FormatOf(const fs::path& file) {
  struct Ending {
    const char* ending;
    PictureFormat format;
  };
  constexpr std::array kEndings = {Ending{".png", PictureFormat::kPng},
                                   Ending{".svg", PictureFormat::kSvg},
                                   Ending{".pdf", PictureFormat::kPdf}};
  for (const Ending& row : kEndings) {
    if (file.extension() == row.ending) return row.format;
  }
  return std::nullopt;
}

base::Status SavePicture(const chart::DrawList& picture, double scale, const fs::path& file) {
  const auto format = FormatOf(file);
  if (!format)
    return base::Fail(base::PathText(file) + " の種類は .png、.svg、.pdf のどれかです。");
  const chart::PictureEncoder encode = FindEncoder();
  if (encode == nullptr) {
    return base::Fail(std::string("チャートを描く部品 ") + kModule + " が見つかりません。");
  }
  std::string bytes;
  if (!encode(picture, scale, *format, bytes)) {
    return base::Fail("チャートの画像 " + base::PathText(file) + " を作れません。");
  }
  return base::ReplaceFile(base::NativeFileSystem(), file, bytes);
}

}  // namespace orin::app
