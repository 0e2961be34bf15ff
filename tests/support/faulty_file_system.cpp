#include "support/faulty_file_system.h"

#include <algorithm>
#include <fstream>
#include <string>
#include <utility>

namespace orin::support {

namespace {

namespace fs = std::filesystem;
using base::Result;
using base::Status;

constexpr size_t kSector = 512;

int64_t LengthOf(const fs::path& path) {
  std::error_code failure;
  const auto length = fs::file_size(path, failure);
  return failure ? 0 : static_cast<int64_t>(length);
}

std::string BytesOf(const fs::path& path, int64_t offset, int64_t length) {
  std::string bytes(static_cast<size_t>(std::max<int64_t>(length, 0)), '\0');
  std::ifstream file(path, std::ios::binary);
  file.seekg(offset);
  file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  bytes.resize(static_cast<size_t>(file.gcount()));
  return bytes;
}

std::string BytesOf(const fs::path& path) { return BytesOf(path, 0, LengthOf(path)); }

/// Makes the file `length` bytes long with `bytes` at `offset`.
void Restore(const fs::path& path, int64_t offset, const std::string& bytes, int64_t length) {
  if (!fs::exists(path)) std::ofstream(path, std::ios::binary).flush();
  {
    std::fstream file(path, std::ios::binary | std::ios::in | std::ios::out);
    file.seekp(offset);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  }
  fs::resize_file(path, static_cast<uintmax_t>(length));
}

Status Died() { return base::Fail("試験のためここで停止しました。"); }

Status DiskFull(const fs::path& path) {
  return base::Fail("「" + base::PathText(path) +
                    "」に書き込めません（ディスクに空きがありません）。");
}

}  // namespace

class FaultyFileSystem::File final : public base::WritableFile {
 public:
  File(FaultyFileSystem& files, Place place, std::unique_ptr<base::WritableFile> file)
      : files_(files), place_(std::move(place)), file_(std::move(file)) {}

  Status WriteAt(int64_t offset, std::string_view bytes) override {
    const bool was_dead = files_.IsDead();
    if (const Status alive = files_.Begin(); !alive) {
      const bool tear = !was_dead && files_.torn_ && files_.loss_ == Loss::kNothing;
      if (tear && bytes.size() > kSector) {
        static_cast<void>(file_->WriteAt(offset, bytes.substr(0, bytes.size() / 2)));
      }
      return alive;
    }
    const auto size = static_cast<int64_t>(bytes.size());
    const int64_t growth = std::max<int64_t>(offset + size - Allocated(), 0);
    const int64_t missing = growth - files_.TakeSpace(growth);
    const int64_t fitting = std::max<int64_t>(size - missing, 0);
    PendChange(offset, fitting);
    Status written = file_->WriteAt(offset, bytes.substr(0, static_cast<size_t>(fitting)));
    return written && missing > 0 ? DiskFull(*place_) : written;
  }

  Status Truncate(int64_t length) override {
    if (const Status alive = files_.Begin(); !alive) return alive;
    PendChange(length, LengthOf(*place_) - length);
    reserved_ = std::min(reserved_, length);
    return file_->Truncate(length);
  }

  Status Reserve(int64_t length) override {
    if (const Status alive = files_.Begin(); !alive) return alive;
    const int64_t growth = std::max<int64_t>(length - Allocated(), 0);
    if (growth > files_.space_.value_or(growth)) return DiskFull(*place_);
    files_.TakeSpace(growth);
    reserved_ = std::max(reserved_, length);
    return file_->Reserve(length);
  }

  Status Sync() override {
    if (const Status alive = files_.Begin(); !alive) return alive;
    files_.ContentsAreSafe(place_);
    return file_->Sync();
  }

 private:
  [[nodiscard]] int64_t Allocated() const { return std::max(LengthOf(*place_), reserved_); }

  void PendChange(int64_t offset, int64_t size) {
    files_.PendContents(place_,
                        [place = place_, offset, bytes = BytesOf(*place_, offset, size),
                         length = LengthOf(*place_)] { Restore(*place, offset, bytes, length); });
  }

  FaultyFileSystem& files_;
  Place place_;
  std::unique_ptr<base::WritableFile> file_;
  int64_t reserved_ = 0;
};

FaultyFileSystem::FaultyFileSystem() = default;
FaultyFileSystem::~FaultyFileSystem() = default;

Status FaultyFileSystem::Begin() {
  const bool was_dead = IsDead();
  ++operations_;
  if (!IsDead()) return {};
  if (!was_dead) {
    while (!pending_.empty()) {
      pending_.back().undo();
      pending_.pop_back();
    }
  }
  return Died();
}

FaultyFileSystem::Place FaultyFileSystem::PlaceOf(const fs::path& path) {
  Place& place = places_[path.lexically_normal()];
  if (!place) place = std::make_shared<fs::path>(path);
  return place;
}

void FaultyFileSystem::PendContents(const Place& file, std::function<void()> undo) {
  if (loss_ != Loss::kNothing) pending_.push_back(Pending{file, {}, std::move(undo)});
}

void FaultyFileSystem::PendName(const fs::path& path, std::function<void()> undo) {
  if (loss_ != Loss::kWritesAndNames) return;
  pending_.push_back(Pending{nullptr, path.lexically_normal().parent_path(), std::move(undo)});
}

void FaultyFileSystem::ContentsAreSafe(const Place& file) {
  std::erase_if(pending_, [&](const Pending& pending) { return pending.file == file; });
}

int64_t FaultyFileSystem::TakeSpace(int64_t bytes) {
  if (!space_) return bytes;
  const int64_t granted = std::min(bytes, *space_);
  *space_ -= granted;
  return granted;
}

Result<std::unique_ptr<base::WritableFile>> FaultyFileSystem::OpenForUpdate(const fs::path& path) {
  if (const Status alive = Begin(); !alive) return base::Forward(alive);
  auto file = base::NativeFileSystem().OpenForUpdate(path);
  if (!file) return file;
  return std::make_unique<File>(*this, PlaceOf(path), std::move(*file));
}

Result<std::unique_ptr<base::WritableFile>> FaultyFileSystem::Create(const fs::path& path) {
  if (const Status alive = Begin(); !alive) return base::Forward(alive);
  const bool existed = fs::exists(path);
  const Place place = PlaceOf(path);
  const std::string old_bytes = existed ? BytesOf(path) : "";
  auto file = base::NativeFileSystem().Create(path);
  if (!file) return file;
  if (existed) {
    PendContents(place, [place, old_bytes] {
      Restore(*place, 0, old_bytes, static_cast<int64_t>(old_bytes.size()));
    });
  } else {
    PendName(path, [place] { fs::remove(*place); });
  }
  return std::make_unique<File>(*this, place, std::move(*file));
}

Result<std::unique_ptr<base::WritableFile>> FaultyFileSystem::CreateNew(const fs::path& path) {
  if (const Status alive = Begin(); !alive) return base::Forward(alive);
  auto file = base::NativeFileSystem().CreateNew(path);
  if (!file || !*file) return file;
  const Place place = PlaceOf(path);
  PendName(path, [place] { fs::remove(*place); });
  return std::make_unique<File>(*this, place, std::move(*file));
}

Status FaultyFileSystem::Rename(const fs::path& from, const fs::path& to) {
  if (const Status alive = Begin(); !alive) return alive;
  const bool replaces = fs::exists(to);
  const std::string old_bytes = replaces ? BytesOf(to) : "";
  if (const Status renamed = base::NativeFileSystem().Rename(from, to); !renamed) return renamed;
  // Nothing but its bytes at this moment is left of the file that was there.
  ContentsAreSafe(PlaceOf(to));
  const Place place = PlaceOf(from);
  places_.erase(from.lexically_normal());
  places_[to.lexically_normal()] = place;
  *place = to;
  PendName(to, [place, from, to, replaces, old_bytes] {
    fs::rename(to, from);
    *place = from;
    if (replaces) Restore(to, 0, old_bytes, static_cast<int64_t>(old_bytes.size()));
  });
  return {};
}

Status FaultyFileSystem::Remove(const fs::path& path) {
  if (const Status alive = Begin(); !alive) return alive;
  const bool existed = fs::is_regular_file(path);
  const std::string old_bytes = existed ? BytesOf(path) : "";
  if (const Status removed = base::NativeFileSystem().Remove(path); !removed) return removed;
  if (!existed) return {};
  ContentsAreSafe(PlaceOf(path));
  places_.erase(path.lexically_normal());
  PendName(path, [path, old_bytes] {
    Restore(path, 0, old_bytes, static_cast<int64_t>(old_bytes.size()));
  });
  return {};
}

Status FaultyFileSystem::MakeDirectory(const fs::path& path) {
  if (const Status alive = Begin(); !alive) return alive;
  return base::NativeFileSystem().MakeDirectory(path);
}

Status FaultyFileSystem::SyncDirectory(const fs::path& path) {
  if (const Status alive = Begin(); !alive) return alive;
  std::error_code failure;
  std::erase_if(pending_, [&](const Pending& pending) {
    return !pending.file && fs::equivalent(pending.directory, path, failure);
  });
  return base::NativeFileSystem().SyncDirectory(path);
}

}  // namespace orin::support
