#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace orin::base {

/// Fixed-length records in a file image, numbered from 1. A piece at the end that is shorter
/// than a record does not count.
class RecordView {
 public:
  RecordView(std::string_view bytes, size_t record_length)
      : bytes_(bytes), record_length_(record_length) {}

  [[nodiscard]] int32_t Count() const {
    return static_cast<int32_t>(bytes_.size() / record_length_);
  }
  /// nullopt for a number below 1 or above Count().
  [[nodiscard]] std::optional<std::string_view> Record(int32_t number) const {
    if (number < 1 || number > Count()) return std::nullopt;
    return bytes_.substr(static_cast<size_t>(Offset(number)), record_length_);
  }
  [[nodiscard]] int64_t Offset(int32_t number) const {
    return (int64_t{number} - 1) * static_cast<int64_t>(record_length_);
  }
  [[nodiscard]] bool HasPartialRecord() const { return bytes_.size() % record_length_ != 0; }

 private:
  std::string_view bytes_;
  size_t record_length_;
};

}  // namespace orin::base
