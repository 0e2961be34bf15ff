#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "base/result.h"
#include "store/stock_master.h"

namespace orin::store {

// orin.sys: records of 52 bytes, record 1 the header, records 2.. the stocks. Numbers are 16-bit
// signed little-endian; texts are code page 932, padded on the right with blanks.

inline constexpr size_t kMasterRecordLength = 52;

namespace master_offset {                // of a stock record
inline constexpr size_t kCode = 0;       // 8
inline constexpr size_t kSlot = 8;       // 2
inline constexpr size_t kListing = 10;   // 2
inline constexpr size_t kKind = 12;      // 2
inline constexpr size_t kSector = 14;    // 2
inline constexpr size_t kRank = 16;      // 2
inline constexpr size_t kName = 18;      // 16
inline constexpr size_t kReserved = 34;  // 18
inline constexpr size_t kNameWidth = kReserved - kName;
}  // namespace master_offset

namespace header_offset {
inline constexpr size_t kDate = 0;            // 8, "yyyymmdd"; blanks in an empty store
inline constexpr size_t kDateRecord = 8;      // 2
inline constexpr size_t kFirstFile = 10;      // 2
inline constexpr size_t kCurrentFile = 12;    // 2
inline constexpr size_t kCurrentRecord = 14;  // 2
inline constexpr size_t kCreditFirst = 16;    // 2
inline constexpr size_t kCreditCurrent = 18;  // 2
inline constexpr size_t kReserved = 20;       // 32
inline constexpr size_t kDateWidth = 8;
}  // namespace header_offset

using MasterRecordBytes = std::array<char, kMasterRecordLength>;

inline std::string_view AsText(const MasterRecordBytes& bytes) {
  return {bytes.data(), bytes.size()};
}

// `record` is kMasterRecordLength bytes. Decoding never fails: a code that is none is left blank
// and a date that is none is left out.
StockRecord DecodeStockRecord(std::string_view record);
MasterHeader DecodeMasterHeader(std::string_view record);

/// Cuts the name at a character; fails where code page 932 lacks one of its characters.
base::Result<MasterRecordBytes> EncodeStockRecord(const StockRecord& stock);
MasterRecordBytes EncodeMasterHeader(const MasterHeader& header);

}  // namespace orin::store
