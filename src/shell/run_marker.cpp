#include "shell/run_marker.h"

#include <array>
#include <string_view>

#include "base/coding.h"
#include "store/stored_file.h"

namespace orin::shell {

namespace {

constexpr uint16_t kFree = 0;
constexpr uint16_t kInUse = 65535;

base::Result<uint16_t> ReadMarker(const std::filesystem::path& path) {
  if (!store::Exists(path)) return kFree;
  const auto bytes = base::ReadFile(path);
  if (!bytes) return base::Forward(bytes);
  return bytes->size() < sizeof kInUse ? kFree : base::GetUint16(bytes->data());
}

base::Status WriteMarker(base::FileSystem& files, const std::filesystem::path& path) {
  std::array<char, sizeof kInUse> bytes{};
  base::PutUint16(bytes.data(), kInUse);
  const auto file = files.Create(path);
  if (!file) return base::Forward(file);
  base::Status written = (*file)->WriteAt(0, {bytes.data(), bytes.size()});
  if (written) written = (*file)->Sync();
  // What is left must not look like a running instance; the first failure is the one to report.
  if (!written) static_cast<void>(files.Remove(path));
  return written;
}

}  // namespace

base::Status RunMarker::Claim(base::FileSystem& files) {
  holder_ = Holder::kUnknown;
  const auto value = ReadMarker(path_);
  if (!value) return base::Forward(value);
  if (*value == kFree) return Reset(files);
  holder_ = Holder::kAnother;
  return {};
}

base::Status RunMarker::Reset(base::FileSystem& files) {
  base::Status written = WriteMarker(files, path_);
  if (written) holder_ = Holder::kThisInstance;
  return written;
}

base::Status RunMarker::Release(base::FileSystem& files) {
  if (!IsOwn()) return {};
  base::Status removed = files.Remove(path_);
  if (removed) holder_ = Holder::kUnknown;
  return removed;
}

}  // namespace orin::shell
