#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "base/currency.h"

namespace orin::base {

// Little-endian numbers at a place in a file image. The caller owns the bounds.

inline uint16_t GetUint16(const char* from) {
  const auto* bytes = reinterpret_cast<const unsigned char*>(from);
  return static_cast<uint16_t>(bytes[0] | bytes[1] << 8);
}

inline int16_t GetInt16(const char* from) { return static_cast<int16_t>(GetUint16(from)); }

inline uint64_t GetUint64(const char* from) {
  // Compilers do not see a plain load in a loop over the bytes, and prices are read by the million.
  uint64_t value = 0;
  std::memcpy(&value, from, sizeof value);
  return std::endian::native == std::endian::little ? value : __builtin_bswap64(value);
}

inline uint32_t GetUint32(const char* from) {
  return static_cast<uint32_t>(GetUint16(from)) | static_cast<uint32_t>(GetUint16(from + 2)) << 16;
}

inline void PutUint16(char* to, uint16_t value) {
  to[0] = static_cast<char>(value & 0xff);
  to[1] = static_cast<char>(value >> 8);
}

inline void PutInt16(char* to, int16_t value) { PutUint16(to, static_cast<uint16_t>(value)); }

inline void PutUint32(char* to, uint32_t value) {
  PutUint16(to, static_cast<uint16_t>(value & 0xffff));
  PutUint16(to + 2, static_cast<uint16_t>(value >> 16));
}

inline void PutUint64(char* to, uint64_t value) {
  for (int i = 0; i < 8; ++i) to[i] = static_cast<char>(value >> (8 * i) & 0xff);
}

inline Currency GetCurrency(const char* from) {
  return Currency::FromRaw(static_cast<int64_t>(GetUint64(from)));
}

inline void PutCurrency(char* to, Currency value) {
  PutUint64(to, static_cast<uint64_t>(value.Raw()));
}

inline double GetDouble(const char* from) {
  const uint64_t bits = GetUint64(from);
  double value = 0;
  std::memcpy(&value, &bits, sizeof value);
  return value;
}

inline void PutDouble(char* to, double value) {
  uint64_t bits = 0;
  std::memcpy(&bits, &value, sizeof bits);
  PutUint64(to, bits);
}

}  // namespace orin::base
