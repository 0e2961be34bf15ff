#pragma once

#include <cstdint>
#include <string>

#include "chart/draw_list.h"

namespace orin::chart {

enum class PictureFormat : uint8_t { kPng, kSvg, kPdf };

/// The entry of the module orin-painter.so, which paints for programs that have no window toolkit
/// of their own. False where the picture cannot be made; `bytes` is the file.
using PictureEncoder = bool (*)(const DrawList& picture, double scale, PictureFormat format,
                                std::string& bytes);
inline constexpr const char* kPictureEncoderName = "OrinEncodePicture";

}  // namespace orin::chart
