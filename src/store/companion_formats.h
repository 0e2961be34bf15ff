#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/ordinal.h"
#include "base/result.h"
#include "store/stock_code.h"

namespace orin::store {

// orin.ind: records of 110 bytes, one a stock, in syllabary order of the readings; no header.
inline constexpr size_t kIndexRecordLength = 110;

namespace index_offset {
inline constexpr size_t kCompany = 0;   // 50
inline constexpr size_t kReading = 50;  // 50
inline constexpr size_t kCode = 100;    // 8
inline constexpr size_t kRecord = 108;  // 2
inline constexpr size_t kTextWidth = 50;
}  // namespace index_offset

struct IndexEntry {
  std::string company;  // 登記社名
  std::string reading;  // 銘柄名（読み）, half-width katakana
  StockCode code;       // blank where the file holds none
  base::MasterRecord record;
};

/// `record` is kIndexRecordLength bytes.
IndexEntry DecodeIndexEntry(std::string_view record);
/// Exactly kIndexRecordLength bytes; texts are cut at a character.
base::Result<std::string> EncodeIndexEntry(const IndexEntry& entry);

// orin.add and orin.del: records of 28 bytes, record 1 a header, records 2.. the stocks.
inline constexpr size_t kListRecordLength = 28;

namespace list_header_offset {
inline constexpr size_t kCount = 0;            // 2
inline constexpr size_t kSpare = 2;            // 3 × 2: 予備１, 予備２, 予備３
inline constexpr size_t kDeletionCounter = 8;  // 2, 削除カウンタ; spare in orin.add
inline constexpr size_t kRest = 10;            // 18, kept as read
}  // namespace list_header_offset

namespace list_offset {
inline constexpr size_t kCode = 0;     // 8
inline constexpr size_t kName = 8;     // 16
inline constexpr size_t kRecord = 24;  // 2
inline constexpr size_t kFlag = 26;    // 2
inline constexpr size_t kNameWidth = 16;
}  // namespace list_offset

/// The flag of orin.del.
enum class DeletionState : int16_t {
  kTrue = -1,   // "True": trading suspended or ended
  kFalse = 0,   // "False": the stock is kept
  kDelete = 1,  // "Delete": to be taken out of the master
};

struct ListedStock {
  StockCode code;    // blank where the entry has been emptied or holds no code
  std::string name;  // UTF-8
  base::MasterRecord record;
  int16_t flag = 0;
};

/// orin.add or orin.del as a whole.
struct StockList {
  std::string header = std::string(kListRecordLength, '\0');  // but for the count, kept as read
  std::vector<ListedStock> stocks;

  [[nodiscard]] int16_t DeletionCounter() const;
  void SetDeletionCounter(int16_t counter);
};

/// The count of the header; 0 where there is no whole header.
int16_t CountInHeader(std::string_view bytes);
/// As many stocks as the header counts and the bytes hold.
StockList DecodeStockList(std::string_view bytes);
base::Result<std::string> EncodeStockList(const StockList& list);

}  // namespace orin::store
