#include <CLI/CLI.hpp>
#include <QGuiApplication>
#include <array>
#include <exception>
#include <iostream>
#include <string>

#include "app/exit_status.h"
#include "app/japanese_usage.h"
#include "base/file_system.h"
#include "base/text.h"
#include "chart/draw_list_bytes.h"
#include "chart/picture_format.h"
#include "painting/picture_encoding.h"

// Paints the draw list that stands on standard input into a file: a program of its own, so that
// orin-cli starts without the toolkit and works where there is none.

namespace orin::app {

namespace {

// The largest charts take some megabytes.
constexpr size_t kMostBytes = size_t{1} << 28;

/// The sentence of an option's check is empty where the value is right. What is no number compares
/// with nothing: it must be asked whether the value is inside.
std::string CheckScale(const std::string& typed) {
  double scale = 0;
  const bool is_inside = CLI::detail::lexical_cast(typed, scale) && scale >= 0.01 && scale <= 100;
  return is_inside ? "" : "--scale";
}

base::Result<std::string> ReadStandardInput() {
  std::string bytes;
  std::array<char, 1 << 16> part;
  while (std::cin.read(part.data(), part.size()) || std::cin.gcount() > 0) {
    bytes.append(part.data(), static_cast<size_t>(std::cin.gcount()));
    if (bytes.size() > kMostBytes) return base::Fail("渡された図のデータが大きすぎます。");
  }
  return bytes;
}

base::Status Draw(const std::string& file, double scale) {
  const auto format = chart::FormatOf(file);
  if (!format) {
    return base::Fail(base::PathText(file) + " の種類は .png、.svg、.pdf のどれかです。");
  }
  const auto bytes = ReadStandardInput();
  if (!bytes) return base::Forward(bytes);
  const auto picture = chart::ReadDrawList(*bytes);
  if (!picture) return base::Forward(picture);
  const auto encoded = painting::EncodePicture(*picture, scale, *format);
  if (!encoded) return base::Fail("チャートの画像 " + base::PathText(file) + " を作れません。");
  return base::ReplaceFile(base::NativeFileSystem(), file, encoded->toStdString());
}

int Run(int argc, char** argv) {
  CLI::App parser("ミルテ：標準入力の図を画像のファイルに描く（orin-cli chart が使う）");
  parser.name("orin-draw");
  std::string file;
  double scale = 1;
  parser.add_option("FILE", file, "描くファイル（.png、.svg、.pdf）")->required()->type_name("");
  parser.add_option("--scale", scale, "画素の倍率（省略時は 1）")
      ->check(CheckScale)
      ->type_name("S");
  SpeakJapanese(parser);
  try {
    parser.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return ExplainUsage(parser, error);
  }

  // What the toolkit has to say of its surroundings is nothing for a user.
  qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
  // Fonts need an application; it has no window and needs no screen.
  std::array arguments = {std::string("orin-draw"), std::string("-platform"),
                          std::string("offscreen")};
  std::array<char*, 4> pointers = {arguments[0].data(), arguments[1].data(), arguments[2].data(),
                                   nullptr};
  int count = arguments.size();
  const QGuiApplication application(count, pointers.data());
  const base::Status drawn = Draw(file, scale);
  if (drawn) return kDone;
  std::cerr << base::Printable(drawn.error().message) << '\n';
  return kFailed;
}

}  // namespace

}  // namespace orin::app

int main(int argc, char** argv) {
  try {
    return orin::app::Run(argc, argv);
  } catch (const std::exception& failure) {
    // Nothing is known to throw; should it happen, the user still gets a sentence.
    std::cerr << "予期しない問題が起きたので中止しました（" << orin::base::Printable(failure.what())
              << "）。\n";
    return orin::app::kFailed;
  }
}
