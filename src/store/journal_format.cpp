#include "store/journal_format.h"

#include <optional>

#include "base/coding.h"
#include "store/crc32.h"

namespace orin::store {

namespace {

constexpr size_t kNumbersLength = 8 + 8 + 4;  // of a write: offset, times, length

void AppendUint16(std::string& bytes, uint16_t value) {
  bytes.resize(bytes.size() + 2);
  base::PutUint16(bytes.data() + bytes.size() - 2, value);
}

void AppendUint32(std::string& bytes, uint32_t value) {
  bytes.resize(bytes.size() + 4);
  base::PutUint32(bytes.data() + bytes.size() - 4, value);
}

void AppendInt64(std::string& bytes, int64_t value) {
  bytes.resize(bytes.size() + 8);
  base::PutUint64(bytes.data() + bytes.size() - 8, static_cast<uint64_t>(value));
}

/// Takes pieces from the front of the steps.
class Reader {
 public:
  explicit Reader(std::string_view bytes) : rest_(bytes) {}

  [[nodiscard]] bool AtEnd() const { return rest_.empty(); }

  std::optional<std::string_view> Take(size_t length) {
    if (length > rest_.size()) return std::nullopt;
    const std::string_view piece = rest_.substr(0, length);
    rest_.remove_prefix(length);
    return piece;
  }

 private:
  std::string_view rest_;
};

std::optional<StoreFile> TakeFile(Reader& reader) {
  const auto length = reader.Take(2);
  if (!length) return std::nullopt;
  const auto name = reader.Take(base::GetUint16(length->data()));
  if (!name) return std::nullopt;
  const auto file = ParseFileName(*name);
  // Names outside the store would let damaged bytes write anywhere.
  if (!file || file->kind == FileKind::kJournal) return std::nullopt;
  return file;
}

bool TakeWrite(Reader& reader, JournalStep& step) {
  const auto numbers = reader.Take(kNumbersLength);
  if (!numbers) return false;
  step.offset = static_cast<int64_t>(base::GetUint64(numbers->data()));
  step.times = static_cast<int64_t>(base::GetUint64(numbers->data() + 8));
  const auto bytes = reader.Take(base::GetUint32(numbers->data() + 16));
  if (!bytes || bytes->empty()) return false;
  step.bytes = *bytes;
  // Divided rather than multiplied: the product may be out of range.
  const bool in_range = step.offset >= 0 && step.offset <= kLongestFile && step.times >= 1 &&
                        step.times <= kLongestFile / static_cast<int64_t>(bytes->size());
  return in_range && step.End() <= kLongestFile;
}

std::optional<JournalStep> TakeStep(Reader& reader) {
  const auto kind = reader.Take(1);
  if (!kind) return std::nullopt;
  JournalStep step;
  step.kind = static_cast<JournalStep::Kind>(kind->front());
  const auto file = TakeFile(reader);
  if (!file) return std::nullopt;
  step.file = *file;
  switch (step.kind) {
    case JournalStep::Kind::kWrite:
      return TakeWrite(reader, step) ? std::optional(step) : std::nullopt;
    case JournalStep::Kind::kReplace:
    case JournalStep::Kind::kRemove:
      return step;
  }
  return std::nullopt;
}

bool IsWhole(std::string_view bytes) {
  namespace at = journal_offset;
  if (bytes.size() < at::kSteps + at::kChecksumLength) return false;
  const size_t checked = bytes.size() - at::kChecksumLength;
  return bytes.starts_with(kJournalMagic) &&
         base::GetUint32(bytes.data() + at::kVersion) == kJournalVersion &&
         base::GetUint64(bytes.data() + at::kLength) == bytes.size() &&
         base::GetUint32(bytes.data() + checked) == Crc32(bytes.substr(0, checked));
}

}  // namespace

JournalWriter::JournalWriter() : bytes_(kJournalMagic) {
  AppendUint32(bytes_, kJournalVersion);
  AppendInt64(bytes_, 0);
}

void JournalWriter::Add(const JournalStep& step) {
  const std::string name = FileName(step.file);
  bytes_ += static_cast<char>(step.kind);
  AppendUint16(bytes_, static_cast<uint16_t>(name.size()));
  bytes_ += name;
  if (step.kind != JournalStep::Kind::kWrite) return;
  AppendInt64(bytes_, step.offset);
  AppendInt64(bytes_, step.times);
  AppendUint32(bytes_, static_cast<uint32_t>(step.bytes.size()));
  bytes_ += step.bytes;
}

std::string JournalWriter::Finish() {
  namespace at = journal_offset;
  base::PutUint64(bytes_.data() + at::kLength, bytes_.size() + at::kChecksumLength);
  AppendUint32(bytes_, Crc32(bytes_));
  return std::move(bytes_);
}

base::Result<std::vector<JournalStep>> DecodeJournal(std::string_view bytes) {
  namespace at = journal_offset;
  const base::Error broken{"更新記録ファイル「" + FileName({FileKind::kJournal, 0}) +
                           "」が壊れています。"};
  if (!IsWhole(bytes)) return tl::unexpected(broken);
  Reader reader(bytes.substr(at::kSteps, bytes.size() - at::kSteps - at::kChecksumLength));
  std::vector<JournalStep> steps;
  while (!reader.AtEnd()) {
    const auto step = TakeStep(reader);
    if (!step) return tl::unexpected(broken);
    steps.push_back(*step);
  }
  return steps;
}

}  // namespace orin::store
