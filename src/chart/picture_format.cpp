#include "chart/picture_format.h"

#include <array>

namespace orin::chart {

namespace {

constexpr int64_t kMostPixels = 100'000'000;

struct Ending {
  const char* ending;
  PictureFormat format;
};
constexpr std::array kEndings = {Ending{".png", PictureFormat::kPng},
                                 Ending{".svg", PictureFormat::kSvg},
                                 Ending{".pdf", PictureFormat::kPdf}};

}  // namespace

std::optional<PictureFormat> FormatOf(const std::filesystem::path& file) {
  for (const Ending& row : kEndings) {
    if (file.extension() == row.ending) return row.format;
  }
  return std::nullopt;
}

bool IsPaintable(int32_t width, int32_t height) {
  return width >= 1 && height >= 1 && int64_t{width} * height <= kMostPixels;
}

}  // namespace orin::chart
