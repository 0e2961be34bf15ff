#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "base/result.h"
#include "store/companion_formats.h"
#include "store/company_format.h"
#include "store/file_names.h"
#include "store/master_format.h"
#include "store/store_location.h"
#include "store/transaction.h"

namespace orin::store {

// orin.sum: records of 24 bytes; record 1 a header, records 2.. a file of the system directory
// each. It is always replaced as a whole, together with a file that it names.
//   header   0   8  the mark
//            8   8  zeros
//           16   8  XXH3 sum of everything behind the header
//   a file   0   8  its name
//            8   4  its number of records
//           12   4  zeros
//           16   8  XXH3 sum of the whole file; of orin.sys without its record 1
inline constexpr size_t kCompanionSumLength = 24;
inline constexpr std::string_view kCompanionSumMark = "ORINCSM1";

/// The files that have a record in orin.sum. orin.del has none: its own header counts its
/// records, and its flags are set from outside. Nor has orin.lin, which every line drawn changes.
struct SummedCompanion {
  FileKind kind;
  size_t record_length;
  size_t unsummed = 0;  // bytes at the beginning that are not in the sum
};
inline constexpr std::array<SummedCompanion, 5> kSummedCompanions = {{
    // The header has a commit of its own, and the price files prove it.
    {FileKind::kMaster, kMasterRecordLength, kMasterRecordLength},
    {FileKind::kNameIndex, kIndexRecordLength},
    {FileKind::kAdded, kListRecordLength},
    {kCompanyFiles[0].kind, kCompanyFiles[0].record_length},
    {kCompanyFiles[1].kind, kCompanyFiles[1].record_length},
}};

struct CompanionSum {
  int32_t records = 0;
  uint64_t sum = 0;

  bool operator==(const CompanionSum&) const = default;
};

/// Of a file's content.
CompanionSum SumOfCompanion(const SummedCompanion& file, std::string_view bytes);

/// orin.sum as a whole.
class CompanionSums {
 public:
  /// nullopt where the bytes are no whole, undamaged orin.sum.
  static std::optional<CompanionSums> Decode(std::string_view bytes);
  /// nullopt where there is none that can be used.
  static std::optional<CompanionSums> Load(const StoreLocation& location);

  /// nullopt for a file that was not there.
  [[nodiscard]] std::optional<CompanionSum> Of(FileKind kind) const;
  void Set(FileKind kind, const CompanionSum& sum) { sums_[kind] = sum; }
  [[nodiscard]] std::string Encode() const;

 private:
  std::map<FileKind, CompanionSum> sums_;
};

/// The sums of companions that a transaction gives new contents. A store without an orin.sum that
/// can be used keeps what it has. What was damaged before differs from its sum afterwards, unless
/// the new content puts back what the sum stands for.
class CompanionSumChange {
 public:
  explicit CompanionSumChange(const StoreLocation& location)
      : location_(location), sums_(CompanionSums::Load(location)) {}

  /// Puts the new content into the transaction.
  base::Status Replace(FileKind kind, std::string_view bytes, Transaction& transaction);
  /// For content that the caller puts there; the file is as it was before.
  void Take(FileKind kind, std::string_view bytes);
  /// Puts orin.sum into the transaction; to be called last.
  base::Status AddTo(Transaction& transaction);

 private:
  const StoreLocation& location_;
  std::optional<CompanionSums> sums_;
  bool is_changed_ = false;
};

}  // namespace orin::store
