#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

namespace orin::chart {

enum class PictureFormat : uint8_t { kPng, kSvg, kPdf };

/// By the ending of the name: .png, .svg, .pdf; nullopt for others.
std::optional<PictureFormat> FormatOf(const std::filesystem::path& file);

/// Whether a picture of this size is at least a pixel and takes no more than 400 megabytes.
bool IsPaintable(int32_t width, int32_t height);

}  // namespace orin::chart
