#pragma once

#include <cstdint>
#include <string_view>

namespace orin::store {

/// CRC-32 with the reflected polynomial 0xEDB88320 (IEEE 802.3): "123456789" gives 0xCBF43926.
uint32_t Crc32(std::string_view bytes);

}  // namespace orin::store
