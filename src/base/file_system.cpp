#include "base/file_system.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <optional>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "base/file_descriptor.h"
#include "base/system_error.h"
#include "base/temporary_file.h"

namespace orin::base {

namespace fs = std::filesystem;

namespace {

constexpr mode_t kNewFileMode = 0666;

class NativeFile final : public WritableFile {
 public:
  NativeFile(FileDescriptor file, std::filesystem::path path)
      : file_(std::move(file)), path_(std::move(path)) {}

  Status WriteAt(int64_t offset, std::string_view bytes) override {
    while (!bytes.empty()) {
      const ssize_t written = RetryInterrupted(
          [&] { return pwrite(file_.Number(), bytes.data(), bytes.size(), offset); });
      // A write of nothing without an error would loop for ever.
      if (written <= 0) return FailSystemCall(path_, kCannotWrite, written < 0 ? errno : ENOSPC);
      bytes.remove_prefix(static_cast<size_t>(written));
      offset += written;
    }
    return {};
  }

  Status Truncate(int64_t length) override {
    const int result = RetryInterrupted([&] { return ftruncate(file_.Number(), length); });
    if (result != 0) return FailSystemCall(path_, "の長さを変えられません", errno);
    return {};
  }

  Status Reserve(int64_t length) override {
    if (length <= 0) return {};
    const int result =
        RetryInterrupted([&] { return fallocate(file_.Number(), FALLOC_FL_KEEP_SIZE, 0, length); });
    if (result == 0 || errno == EOPNOTSUPP || errno == ENOSYS || errno == EINVAL) return {};
    return FailSystemCall(path_, kCannotWrite, errno);
  }

  Status Sync() override {
    // Brings the length to the disk as well, but not the time stamps.
    if (RetryInterrupted([&] { return fdatasync(file_.Number()); }) != 0) {
      return FailSystemCall(path_, kCannotWrite, errno);
    }
    return {};
  }

 private:
  static constexpr std::string_view kCannotWrite = "に書き込めません";

  FileDescriptor file_;
  std::filesystem::path path_;
};

Result<std::unique_ptr<WritableFile>> OpenNative(const std::filesystem::path& path, int flags,
                                                 std::string_view failure) {
  FileDescriptor file = FileDescriptor::Open(path, O_RDWR | flags, kNewFileMode);
  if (!file.IsOpen()) return FailSystemCall(path, failure, errno);
  return std::make_unique<NativeFile>(std::move(file), path);
}

/// False where another process has the lock or has removed the file. Disks without locks give none.
bool LockUnlessRemoved(const FileDescriptor& file) {
  const int locked = RetryInterrupted([&] { return flock(file.Number(), LOCK_EX | LOCK_NB); });
  if (locked != 0 && errno == EWOULDBLOCK) return false;
  struct stat about = {};
  return fstat(file.Number(), &about) != 0 || about.st_nlink > 0;
}

class NativeFiles final : public FileSystem {
 public:
  Result<std::unique_ptr<WritableFile>> OpenForUpdate(const std::filesystem::path& path) override {
    return OpenNative(path, 0, "を書き込み用に開けません");
  }

  Result<std::unique_ptr<WritableFile>> Create(const std::filesystem::path& path) override {
    return OpenNative(path, O_CREAT | O_TRUNC, "を作成できません");
  }

  Result<std::unique_ptr<WritableFile>> CreateNew(const std::filesystem::path& path) override {
    // A link that has the name is not followed either.
    FileDescriptor file = FileDescriptor::Open(path, O_RDWR | O_CREAT | O_EXCL, kNewFileMode);
    if (!file.IsOpen()) {
      if (errno == EEXIST) return nullptr;
      return FailSystemCall(path, "を作成できません", errno);
    }
    // A process that removes what others left may have been quicker.
    if (!LockUnlessRemoved(file)) return nullptr;
    return std::make_unique<NativeFile>(std::move(file), path);
  }

  Status Rename(const std::filesystem::path& from, const std::filesystem::path& to) override {
    if (rename(from.c_str(), to.c_str()) != 0) {
      return FailSystemCall(from, "の名前を「" + PathText(to) + "」に変えられません", errno);
    }
    return {};
  }

  Status Remove(const std::filesystem::path& path) override {
    if (unlink(path.c_str()) != 0 && errno != ENOENT) {
      return FailSystemCall(path, "を削除できません", errno);
    }
    return {};
  }

  Status MakeDirectory(const std::filesystem::path& path) override {
    std::error_code failure;
    std::filesystem::create_directories(path, failure);
    if (failure) return FailSystemCall(path, "を作成できません", failure.value());
    return {};
  }

  Status SyncDirectory(const std::filesystem::path& path) override {
    const FileDescriptor directory = FileDescriptor::Open(path, O_RDONLY | O_DIRECTORY);
    if (!directory.IsOpen()) return FailSystemCall(path, "を開けません", errno);
    const int result = RetryInterrupted([&] { return fsync(directory.Number()); });
    // Some network disks cannot flush a directory; there is nothing more to be had from them.
    if (result != 0 && errno != EINVAL && errno != EOPNOTSUPP) {
      return FailSystemCall(path, "に書き込めません", errno);
    }
    return {};
  }
};

/// The file that a chain of symbolic links leads to, whether it exists or not.
Result<fs::path> FollowLinks(const fs::path& path) {
  constexpr int kMostLinks = 40;
  fs::path end = path;
  for (int i = 0; i < kMostLinks; ++i) {
    std::error_code no_link;
    const fs::path next = fs::read_symlink(end, no_link);
    if (no_link) return end;
    end = end.parent_path() / next;
  }
  return FailSystemCall(path, "に書き込めません", ELOOP);
}

/// What the new contents of `path` are to have; none for what the system gives a new file.
std::optional<fs::perms> PermissionsFor(const fs::path& path, Readers readers_of_new_file) {
  std::error_code failure;
  const fs::file_status status = fs::status(path, failure);
  if (status.type() == fs::file_type::regular) return status.permissions();
  if (readers_of_new_file == Readers::kByDefault) return std::nullopt;
  return fs::perms::owner_read | fs::perms::owner_write;
}

/// The permissions are there before the first byte is; they do not matter to a file that is open.
Status WriteWhole(FileSystem& files, const TemporaryFile& temporary,
                  std::optional<fs::perms> permissions, std::string_view bytes) {
  Status status;
  if (permissions) status = files.SetPermissions(temporary.path, *permissions);
  if (status) status = temporary.file->WriteAt(0, bytes);
  return status ? temporary.file->Sync() : status;
}

/// A rename would put a file in the place of a device or a pipe.
Status CheckReplaceable(const fs::path& path) {
  std::error_code failure;
  const fs::file_type type = fs::status(path, failure).type();
  if (type == fs::file_type::directory) return FailSystemCall(path, "に書き込めません", EISDIR);
  // None: it cannot be looked at, and writing beside it tells the reason.
  if (type == fs::file_type::regular || type == fs::file_type::not_found ||
      type == fs::file_type::none) {
    return {};
  }
  return Fail("「" + PathText(path) + "」は通常のファイルではないので、書き込めません。");
}

}  // namespace

Status FileSystem::SetPermissions(const fs::path& path, fs::perms permissions) {
  std::error_code failure;
  fs::permissions(path, permissions, failure);
  // Disks of other systems have no permissions to set.
  if (failure && failure != std::errc::operation_not_supported &&
      failure != std::errc::operation_not_permitted) {
    return FailSystemCall(path, "のアクセス権を変えられません", failure.value());
  }
  return {};
}

FileSystem& NativeFileSystem() {
  static NativeFiles files;
  return files;
}

Status ReplaceFile(FileSystem& files, const fs::path& path, std::string_view bytes,
                   Readers readers_of_new_file) {
  if (const Status checked = CheckReplaceable(path); !checked) return checked;
  const auto target = FollowLinks(path);
  if (!target) return Forward(target);
  const auto temporary = CreateTemporary(files, *target);
  if (!temporary) return Forward(temporary);
  Status status =
      WriteWhole(files, *temporary, PermissionsFor(*target, readers_of_new_file), bytes);
  if (status) status = files.Rename(temporary->path, *target);
  if (!status) {
    // Best effort: the first failure is the one to report.
    static_cast<void>(files.Remove(temporary->path));
    return status;
  }
  const fs::path directory = target->parent_path();
  return files.SyncDirectory(directory.empty() ? "." : directory);
}

Result<std::string> ReadFile(const std::filesystem::path& path, int64_t limit) {
  const auto file = OpenRegularFile(path);
  if (!file) return Forward(file);
  if (file->size > limit) {
    return Fail("「" + PathText(path) + "」は大きすぎるため読み込めません（" +
                std::to_string(file->size) + "バイト、上限" + std::to_string(limit) + "バイト）。");
  }
  std::string bytes(static_cast<size_t>(file->size), '\0');
  size_t filled = 0;
  while (filled < bytes.size()) {
    const ssize_t got = RetryInterrupted([&] {
      return pread(file->descriptor.Number(), bytes.data() + filled, bytes.size() - filled,
                   static_cast<off_t>(filled));
    });
    if (got < 0) return FailSystemCall(path, "を読み込めません", errno);
    if (got == 0) break;  // another program made the file shorter
    filled += static_cast<size_t>(got);
  }
  bytes.resize(filled);
  return bytes;
}

std::string PathText(const std::filesystem::path& path) { return path.string(); }

}  // namespace orin::base
