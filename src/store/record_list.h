#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

#include "base/currency.h"
#include "base/date.h"
#include "base/file_system.h"
#include "base/result.h"
#include "store/stock_code.h"

namespace orin::store {

// A list file: records of one length, record 1 a header, records 2.. the entries. Bytes that no
// field claims are 0.

namespace list_file_offset {         // of the header
inline constexpr size_t kMark = 0;   // 8, its last character the version of the format
inline constexpr size_t kCount = 8;  // 4, the number of entries
inline constexpr size_t kHeaderWidth = 12;
}  // namespace list_file_offset

/// A 16-bit integer in the file.
enum class TradeSide : int16_t { kBuy = 1, kSell = 2 };

enum class FieldRule {
  kFree,      // may be empty; a text that is too long is refused
  kRequired,  // must not be empty
  kCut,       // may be empty; a text that is too long is cut at a character
};

template <typename Record>
struct RecordField {
  using Member = std::variant<StockCode Record::*, base::Date Record::*, base::Currency Record::*,
                              TradeSide Record::*, std::string Record::*>;

  std::string_view title;  // for messages
  size_t offset;
  size_t width;  // bytes
  Member member;
  FieldRule rule = FieldRule::kFree;
};

template <typename Record>
struct RecordFormat {
  std::string_view mark;  // 8 bytes
  size_t record_length;
  std::span<const RecordField<Record>> fields;

  /// Whether header and fields lie within a record, one behind the other.
  [[nodiscard]] constexpr bool IsSound() const {
    size_t end = 0;
    for (const RecordField<Record>& field : fields) {
      if (field.offset < end) return false;
      end = field.offset + field.width;
    }
    return mark.size() == 8 && record_length >= list_file_offset::kHeaderWidth &&
           end <= record_length;
  }
};

/// What a list file gave: the entries that could be read and, where that is not all of them, a
/// sentence that names the file.
template <typename Record>
struct RecordList {
  std::vector<Record> entries;
  std::optional<std::string> problem;
};

// The value of a field; false where the bytes hold none.
bool DecodeField(std::string_view bytes, FieldRule rule, StockCode& value);
bool DecodeField(std::string_view bytes, FieldRule rule, base::Date& value);
bool DecodeField(std::string_view bytes, FieldRule rule, base::Currency& value);
bool DecodeField(std::string_view bytes, FieldRule rule, TradeSide& value);
bool DecodeField(std::string_view bytes, FieldRule rule, std::string& value);

// Exactly `width` bytes; the failure is the predicate of a sentence about the field.
base::Result<std::string> EncodeField(const StockCode& value, FieldRule rule, size_t width);
base::Result<std::string> EncodeField(base::Date value, FieldRule rule, size_t width);
base::Result<std::string> EncodeField(base::Currency value, FieldRule rule, size_t width);
base::Result<std::string> EncodeField(TradeSide value, FieldRule rule, size_t width);
base::Result<std::string> EncodeField(const std::string& value, FieldRule rule, size_t width);

/// The entries of a list file's bytes, and what is wrong with them as far as the header tells.
struct ListFileRecords {
  std::vector<std::string_view> records;
  std::optional<std::string> problem;
};
ListFileRecords SplitListFile(std::string_view bytes, std::string_view mark, size_t record_length,
                              const std::filesystem::path& path);
std::string ListFileHeader(std::string_view mark, size_t record_length, size_t count);
/// "「orin.per」のレコード2の登録日は…"
std::string FieldProblem(const std::filesystem::path& path, size_t record, std::string_view title,
                         std::string_view predicate);
/// Replaces the file whole; one that could not be read in full is kept beside it first, under its
/// name with ".bad".
base::Status ReplaceListFile(base::FileSystem& files, const std::filesystem::path& path,
                             std::string_view bytes, bool is_damaged);

/// Entries with a field that holds no value are left out; the first one is told, with the number
/// of the others.
template <typename Record>
RecordList<Record> DecodeRecords(const RecordFormat<Record>& format, std::string_view bytes,
                                 const std::filesystem::path& path) {
  const ListFileRecords split = SplitListFile(bytes, format.mark, format.record_length, path);
  RecordList<Record> list{{}, split.problem};
  for (size_t i = 0; i < split.records.size(); ++i) {
    Record entry;
    const RecordField<Record>* damaged = nullptr;
    for (const RecordField<Record>& field : format.fields) {
      const auto decode = [&](auto member) {
        return DecodeField(split.records[i].substr(field.offset, field.width), field.rule,
                           entry.*member);
      };
      if (damaged == nullptr && !std::visit(decode, field.member)) damaged = &field;
    }
    if (damaged == nullptr) {
      list.entries.push_back(std::move(entry));
    } else if (!list.problem) {
      list.problem = FieldProblem(path, i + 2, damaged->title,
                                  "が壊れています。読めないレコードは除いて使います。");
    }
  }
  return list;
}

/// The path of a list file as it exists, maybe with other upper and lower case in its name.
std::filesystem::path FoundListFile(const std::filesystem::path& path);

/// A missing file is an empty list.
template <typename Record>
RecordList<Record> LoadRecords(const RecordFormat<Record>& format,
                               const std::filesystem::path& named) {
  const std::filesystem::path path = FoundListFile(named);
  std::error_code failure;
  const auto type = std::filesystem::status(path, failure).type();
  if (type == std::filesystem::file_type::not_found) return {};
  const auto bytes = base::ReadFile(path);
  if (!bytes) return {{}, bytes.error().message};
  return DecodeRecords(format, *bytes, path);
}

/// Fails, with nothing written, where a text does not fit or code page 932 lacks a character.
template <typename Record>
base::Status SaveRecords(base::FileSystem& files, const RecordFormat<Record>& format,
                         const std::filesystem::path& named,
                         std::span<const std::type_identity_t<Record>> entries) {
  const std::filesystem::path path = FoundListFile(named);
  std::string bytes = ListFileHeader(format.mark, format.record_length, entries.size());
  for (const Record& entry : entries) {
    const size_t begin = bytes.size();
    bytes.resize(begin + format.record_length, '\0');
    for (const RecordField<Record>& field : format.fields) {
      const auto encode = [&](auto member) {
        return EncodeField(entry.*member, field.rule, field.width);
      };
      const base::Result<std::string> encoded = std::visit(encode, field.member);
      if (!encoded) {
        return base::Fail(FieldProblem(path, begin / format.record_length + 1, field.title,
                                       encoded.error().message));
      }
      bytes.replace(begin + field.offset, field.width, *encoded);
    }
  }
  return ReplaceListFile(files, path, bytes, LoadRecords(format, path).problem.has_value());
}

}  // namespace orin::store
