#pragma once

#include <filesystem>

#include "base/result.h"
#include "chart/draw_list.h"

namespace orin::app {

/// Writes the file whole or not at all, by the program orin-draw beside this one. The ending of the
/// file chooses the format. Fails with one sentence, also where that program is missing or dies.
base::Status SavePicture(const chart::DrawList& picture, double scale,
                         const std::filesystem::path& file);

}  // namespace orin::app
