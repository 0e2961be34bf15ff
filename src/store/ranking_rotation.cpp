#include <algorithm>
#include <optional>

#include "store/file_names.h"
#include "store/ranking_files.h"
#include "store/stored_file.h"

namespace orin::store {

namespace {

StoreFile RankingNumber(int32_t number) {
  return {FileKind::kRanking, static_cast<int16_t>(number)};
}

/// The date of a ranking file; none where there is no file that can be used.
std::optional<base::Date> DateOf(const StoreLocation& location, int32_t number) {
  if (!Exists(location, RankingNumber(number))) return std::nullopt;
  const auto file = RankingFile::Open(PathOf(location, RankingNumber(number)));
  return file ? std::optional(file->Date()) : std::nullopt;
}

/// The number behind all files of later dates, or that of the file of the same date.
int32_t NumberFor(const StoreLocation& location, base::Date date) {
  int32_t behind = 0;
  for (int32_t number = 0; number <= kLastFileNumber; ++number) {
    const auto found = DateOf(location, number);
    if (found == date) return number;
    if (found && *found > date) behind = number + 1;
  }
  return behind;
}

/// Frees a number: the files from it up to the next free number move up by one, the oldest first,
/// so that a stop in between leaves a gap and no file is lost but the one that `keep` drops.
base::Status MakeRoom(base::FileSystem& files, const StoreLocation& location, int32_t number,
                      int32_t keep) {
  int32_t free = number;
  while (free < keep && Exists(location, RankingNumber(free))) ++free;
  for (int32_t to = std::min(free, keep - 1); to > number; --to) {
    const auto moved =
        files.Rename(PathOf(location, RankingNumber(to - 1)), PathOf(location, RankingNumber(to)));
    if (!moved) return moved;
  }
  return {};
}

base::Status RemoveFrom(base::FileSystem& files, const StoreLocation& location, int32_t keep) {
  for (int32_t number = keep; number <= kLastFileNumber; ++number) {
    if (!Exists(location, RankingNumber(number))) continue;
    const auto removed = files.Remove(PathOf(location, RankingNumber(number)));
    if (!removed) return removed;
  }
  return {};
}

}  // namespace

base::Status WriteRankingFile(base::FileSystem& files, const StoreLocation& location,
                              const RankingContent& content, int32_t keep) {
  const auto bytes = EncodeRanking(content);
  if (!bytes) return base::Forward(bytes);
  keep = std::clamp<int32_t>(keep, 1, kLastFileNumber + 1);
  const int32_t number = NumberFor(location, content.date);
  if (number >= keep) {
    return base::Fail("残すランキングファイル" + std::to_string(keep) + "個はどれも " +
                      content.date.ToText() + " より新しいので、この日のランキングは残せません。");
  }
  if (DateOf(location, number) != content.date) {
    const auto made = MakeRoom(files, location, number, keep);
    if (!made) return made;
  }
  const auto written = base::ReplaceFile(files, PathOf(location, RankingNumber(number)), *bytes);
  if (!written) return written;
  const auto removed = RemoveFrom(files, location, keep);
  if (!removed) return removed;
  return CopyNewestRanking(files, location);
}

base::Status CopyNewestRanking(base::FileSystem& files, const StoreLocation& location) {
  const StoreFile first = RankingNumber(0);
  if (!Exists(location, first)) return {};
  const auto bytes = base::ReadFile(PathOf(location, first));
  if (!bytes) return base::Forward(bytes);
  const auto copy = ReadIfThere(location, kNewestRankingFile);
  if (copy && *copy == *bytes) return {};
  return base::ReplaceFile(files, PathOf(location, kNewestRankingFile), *bytes);
}

}  // namespace orin::store
