#pragma once

#include <cstdint>
#include <filesystem>
#include <string_view>
#include <utility>

#include "base/file_system.h"
#include "base/result.h"

namespace orin::shell {

/// orinerr.txt in the program directory: what went wrong at run time, code page 932, "\r\n".
class ErrorLog {
 public:
  /// A log beyond this many bytes loses its older half.
  static constexpr int64_t kGreatestSize = int64_t{1} << 20;

  /// Writes nowhere.
  ErrorLog() = default;
  ErrorLog(std::filesystem::path path, base::FileSystem& files)
      : path_(std::move(path)), files_(&files) {}

  /// Appends an entry: "ミルテエラーＮＯ：" and the number, the time and the stage, the sentence,
  /// an empty line. What code page 932 lacks is written as its number. Fails where the file cannot
  /// be written.
  base::Status Append(int32_t number, std::string_view stage, std::string_view sentence) const;

 private:
  base::Status DropOlderHalf() const;

  std::filesystem::path path_;
  base::FileSystem* files_ = nullptr;
};

}  // namespace orin::shell
