#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "store/file_names.h"

namespace orin::store {

// orin.jnl: the changes of one transaction, all of which can be made again and again with the
// same outcome. All numbers are little-endian.
//   0   8  "ORINJNL" and 0x1A
//   8   4  version, 1
//  12   8  length of the whole file
//  20      the steps
//  end 4   CRC-32 of everything before
// A step:
//   0   1  kind
//   1   2  length n of the file name
//   3   n  file name, UTF-8; the name tells the directory
// and then, for a write and a fill:
//       8  offset in the file
//       8  number of times the bytes are written, one after the other (1 for a write)
//       4  length m of the bytes
//       m  the bytes
inline constexpr std::string_view kJournalMagic = "ORINJNL\x1a";
inline constexpr uint32_t kJournalVersion = 1;

namespace journal_offset {
inline constexpr size_t kVersion = 8;
inline constexpr size_t kLength = 12;
inline constexpr size_t kSteps = 20;
inline constexpr size_t kChecksumLength = 4;
}  // namespace journal_offset

/// The longest file a journal writes to: 32767 records of 4000 bytes are far below.
inline constexpr int64_t kLongestFile = int64_t{1} << 30;

struct JournalStep {
  enum class Kind : uint8_t {
    kWrite = 1,    // puts `bytes` `times` times, beginning at `offset`
    kReplace = 2,  // gives the staged file its name
    kRemove = 3,
  };

  Kind kind = Kind::kWrite;
  StoreFile file;
  int64_t offset = 0;
  int64_t times = 1;
  std::string_view bytes;  // of the journal

  /// Where the write ends in the file.
  [[nodiscard]] int64_t End() const { return offset + times * static_cast<int64_t>(bytes.size()); }
};

/// A journal in the making.
class JournalWriter {
 public:
  JournalWriter();
  void Add(const JournalStep& step);
  [[nodiscard]] bool IsEmpty() const { return bytes_.size() == journal_offset::kSteps; }
  /// The whole file; nothing is added afterwards.
  std::string Finish();

 private:
  std::string bytes_;
};

/// The steps of a whole journal, as views of `bytes`. Fails where anything is wrong with it: a
/// file name that is not the store's, a place out of range, a wrong checksum.
base::Result<std::vector<JournalStep>> DecodeJournal(std::string_view bytes);

}  // namespace orin::store
