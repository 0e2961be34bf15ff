#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/date.h"
#include "base/ordinal.h"
#include "base/result.h"
#include "store/stock_code.h"

namespace orin::store {

/// 上場コード.
enum class Listing : int16_t { kNewYork = 1, kNasdaq = 2, kOther = 3 };
/// "ＮＹ市場", "ＮＡ市場", "他市場"; "未登録" for any other number.
std::string_view ListingName(int16_t listing_code);

/// 種別コード.
inline constexpr int16_t kKindCommonStock = 1;  // of a main market
inline constexpr int16_t kKindSmallCap = 2;     // of the small-cap section of ＮＡ市場
inline constexpr int16_t kKindIndex = 9;

/// 業種コード of the index stocks.
inline constexpr int16_t kSectorIndex = 926;

/// "原材料", "消費財", ... "指数"; "未登録" for a code outside the table.
std::string_view SectorName(int16_t sector_code);

/// A reserved part as a new record has it: `zeros` bytes of numbers, then texts.
template <size_t kWidth>
constexpr std::array<char, kWidth> NewReserved(size_t zeros) {
  std::array<char, kWidth> bytes{};
  for (size_t i = zeros; i < kWidth; ++i) bytes[i] = ' ';
  return bytes;
}

/// A stock's record of orin.sys.
struct StockRecord {
  StockCode code;
  base::SlotRecord slot;  // 銘柄レコード
  int16_t listing = 3;
  int16_t kind = 1;
  int16_t sector = 0;
  int16_t rank = 0;
  std::string name;                                    // UTF-8, at most 16 bytes in code page 932
  std::array<char, 18> reserved = NewReserved<18>(2);  // an int16, a text; kept as read
};

/// Record 1 of orin.sys: the state of the price files.
struct MasterHeader {
  base::Date date;             // the newest stored day; none in an empty store
  int16_t date_record = 1;     // number of the record of dates in every price file
  int16_t first_file = 1;      // oldest daily file in use
  int16_t current_file = 0;    // newest daily file; 0 while there is none
  int16_t current_record = 0;  // last used slot of the current file, 1..100
  int16_t credit_first = 0;
  int16_t credit_current = 0;
  /// A number of 8 bytes, an int16, texts of 8 and 14; kept as read.
  std::array<char, 32> reserved = NewReserved<32>(10);

  bool operator==(const MasterHeader&) const = default;
};

/// The whole stock master in memory.
class StockMaster {
 public:
  StockMaster() = default;
  StockMaster(const MasterHeader& header, std::vector<StockRecord> stocks);

  [[nodiscard]] const MasterHeader& Header() const { return header_; }
  void SetHeader(const MasterHeader& header) { header_ = header; }
  /// The stocks in record order; the first one is record 2.
  [[nodiscard]] std::span<const StockRecord> Stocks() const { return stocks_; }
  [[nodiscard]] const StockRecord& Stock(base::MasterRecord record) const;
  /// The records of all stocks, ascending.
  [[nodiscard]] std::vector<base::MasterRecord> AllRecords() const;
  /// Constant time; none where absent. The first of several stocks of one code.
  [[nodiscard]] base::MasterRecord Find(const StockCode& code) const;
  /// The stocks whose code begins with the letter, 1 for "a" and "A" ... 26; 0 for any other
  /// first character.
  [[nodiscard]] std::span<const base::MasterRecord> WithInitial(int letter) const;

  struct SectorGroup {
    int16_t sector;                                             // 100..926
    std::array<std::vector<base::MasterRecord>, 3> by_listing;  // listing codes 1, 2, 3
  };
  /// One group for each sector code in use, in ascending order.
  [[nodiscard]] std::vector<SectorGroup> GroupBySector() const;

 private:
  MasterHeader header_;
  std::vector<StockRecord> stocks_;
  std::unordered_map<StockCode, base::MasterRecord, StockCodeHash> by_code_;
  std::array<std::vector<base::MasterRecord>, 27> by_initial_;
};

}  // namespace orin::store
