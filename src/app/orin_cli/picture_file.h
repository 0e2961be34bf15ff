#pragma once

#include <filesystem>
#include <optional>

#include "base/result.h"
#include "chart/draw_list.h"
#include "chart/picture_format.h"

namespace orin::app {

/// By the ending of the name: .png, .svg, .pdf; nullopt for others.
std::optional<chart::PictureFormat> FormatOf(const std::filesystem::path& file);

/// Writes the file whole or not at all. Fails with a sentence, also where the module that paints
/// is missing.
base::Status SavePicture(const chart::DrawList& picture, double scale,
                         const std::filesystem::path& file);

}  // namespace orin::app
