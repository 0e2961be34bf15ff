#include "shell/error_log.h"

#include <array>
#include <ctime>
#include <string>

#include "base/cp932.h"
#include "base/text.h"
#include "store/stored_file.h"

namespace orin::shell {

namespace {

constexpr std::string_view kHeading = "ミルテエラーＮＯ：";
constexpr std::string_view kLineEnd = "\r\n";

std::string Now() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  std::array<char, 32> text{};
  const size_t length = std::strftime(text.data(), text.size(), "%Y/%m/%d %H:%M:%S", &local);
  return {text.data(), length};
}

std::string EntryText(int32_t number, std::string_view stage, std::string_view sentence) {
  std::string text = std::string(kHeading) + std::to_string(number);
  text += kLineEnd;
  text += Now() + " " + std::string(stage);
  text += kLineEnd;
  for (const std::string_view line : base::SplitLines(sentence)) {
    text += line;
    text += kLineEnd;
  }
  text += kLineEnd;
  return text;
}

int64_t SizeOf(const std::filesystem::path& path) {
  std::error_code failure;
  const auto size = std::filesystem::file_size(path, failure);
  return failure ? 0 : static_cast<int64_t>(size);
}

}  // namespace

base::Status ErrorLog::Append(int32_t number, std::string_view stage,
                              std::string_view sentence) const {
  if (files_ == nullptr) return {};
  if (SizeOf(path_) > kGreatestSize) {
    if (const base::Status dropped = DropOlderHalf(); !dropped) return dropped;
  }
  const auto file = store::Exists(path_) ? files_->OpenForUpdate(path_) : files_->Create(path_);
  if (!file) return base::Forward(file);
  return (*file)->WriteAt(SizeOf(path_),
                          base::EncodeCp932Lossy(EntryText(number, stage, sentence)));
}

base::Status ErrorLog::DropOlderHalf() const {
  const auto bytes = base::ReadFile(path_);
  if (!bytes) return base::Forward(bytes);
  // Only whole entries stay.
  const std::string heading = std::string(kLineEnd) + base::EncodeCp932Lossy(kHeading);
  const size_t found = bytes->find(heading, bytes->size() / 2);
  const size_t begin = found == std::string::npos ? bytes->size() : found + kLineEnd.size();
  return base::ReplaceFile(*files_, path_, std::string_view(*bytes).substr(begin));
}

}  // namespace orin::shell
