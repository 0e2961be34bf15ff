#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/result.h"
#include "store/file_names.h"
#include "store/stock_code.h"

namespace orin::store {

// orin.fin and orin.acc: record 1 is the header, record 銘柄レコード is that of the stock in that
// slot. A header is the mark and zeros. A stock's record is its code, currency values and zeros
// that are kept as read; the code is blank where the record is nobody's.
struct CompanyFile {
  FileKind kind;
  std::string_view mark;  // 8 bytes, the last one the version of the format
  size_t record_length;
};
inline constexpr std::array<CompanyFile, 2> kCompanyFiles = {{
    {FileKind::kCompanies, "ORINFIN1", 128},
    {FileKind::kStatements, "ORINACC1", 256},
}};

namespace company_offset {
inline constexpr size_t kCode = 0;    // 8
inline constexpr size_t kValues = 8;  // 8 each, kNoCompanyValue where nothing is known
}  // namespace company_offset

/// The integer of a value that is not known; it lies outside the range of currency.
inline constexpr int64_t kNoCompanyValue = INT64_MIN;

/// A field of a stock, by the name that items and lists use.
struct CompanyField {
  std::string_view name;
  size_t file;   // in kCompanyFiles
  size_t place;  // among the values of a record of that file, from 0

  [[nodiscard]] constexpr size_t Offset() const { return company_offset::kValues + place * 8; }
};

inline constexpr std::array<CompanyField, 41> kCompanyFields = {{
    {"時価総額", 0, 0},
    {"発行済株式数", 0, 1},
    {"配当利回り", 0, 2},
    {"一株配当", 0, 3},
    {"株価収益率", 0, 4},
    {"一株利益", 0, 5},
    {"純資産倍率", 0, 6},
    {"一株株主資本", 0, 7},
    {"株主資本比率", 0, 8},
    {"株主資本利益率", 0, 9},
    {"総資産利益率", 0, 10},
    {"決算月", 0, 11},
    {"売買単位", 0, 12},
    {"単独売上高", 1, 0},
    {"単独営業利益", 1, 1},
    {"単独経常利益", 1, 2},
    {"単独当期利益", 1, 3},
    {"単独1株当たり利益", 1, 4},
    {"単独1株当たり株主資本", 1, 5},
    {"単独発行済み株式数", 1, 6},
    {"単独総資産", 1, 7},
    {"単独株主資本", 1, 8},
    {"単独資本金", 1, 9},
    {"単独有利子負債", 1, 10},
    {"単独繰越損益", 1, 11},
    {"単独株主資本比率", 1, 12},
    {"単独含み損益", 1, 13},
    {"単独総資産経常利益率", 1, 14},
    {"連結売上高", 1, 15},
    {"連結営業利益", 1, 16},
    {"連結経常利益", 1, 17},
    {"連結当期利益", 1, 18},
    {"連結1株当たり利益", 1, 19},
    {"連結1株当たり株主資本", 1, 20},
    {"連結総資産", 1, 21},
    {"連結株主資本", 1, 22},
    {"連結資本金", 1, 23},
    {"連結有利子負債", 1, 24},
    {"連結株主資本比率", 1, 25},
    {"連結含み損益", 1, 26},
    {"連結総資産経常利益率", 1, 27},
}};

/// nullptr for a name that no field has.
constexpr const CompanyField* FindCompanyField(std::string_view name) {
  for (const CompanyField& field : kCompanyFields) {
    if (field.name == name) return &field;
  }
  return nullptr;
}

/// Record 1 of a file.
std::string CompanyHeader(const CompanyFile& file);
/// The record of no stock, without values.
std::string EmptyCompanyRecord(const CompanyFile& file);
/// Fails, with a sentence that names the file, unless the bytes are the header and whole records.
base::Status CheckCompanyBytes(const StoreLocation& location, const CompanyFile& file,
                               std::string_view bytes);

}  // namespace orin::store
