#include "app/orin_cli/picture_file.h"

#include <array>
#include <charconv>
#include <string>

#include "app/orin_cli/program_beside.h"
#include "chart/draw_list_bytes.h"

namespace orin::app {

base::Status SavePicture(const chart::DrawList& picture, double scale,
                         const std::filesystem::path& file) {
  std::array<char, 32> digits;
  const auto end = std::to_chars(digits.begin(), digits.end(), scale).ptr;
  return RunProgramBeside("チャートを描くプログラム", "orin-draw",
                          {"--scale", std::string(digits.begin(), end), "--", file.string()},
                          chart::DrawListBytes(picture));
}

}  // namespace orin::app
