#include "fuzz/damaged_store.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <unistd.h>
#include <vector>

#include "base/coding.h"
#include "fuzz/require.h"
#include "store/crc32.h"
#include "store/journal_format.h"
#include "store/stock_store.h"
#include "store/trend_lines.h"

namespace orin::fuzz {

namespace {

namespace fs = std::filesystem;

constexpr int32_t kDays = 103;           // the second price file has three days
constexpr int32_t kFirstSerial = 43836;  // 2020/01/06
constexpr int64_t kDiskSize = int64_t{1} << 20;
constexpr size_t kLongestContent = size_t{1} << 17;

enum class Edit : uint8_t { kReplace, kOverwrite, kCut, kRemove };

// Price files are in the data directory, all others in the system directory, which are the same.
constexpr size_t kSealedJournal = 7;
constexpr std::array<std::string_view, 20> kEditedFiles = {
    "orin.sys",        "orin.ind",        "orin.add",     "orin.del",     "orin.lin",
    "株式分割.txt",    "orin.jnl",        "orin.jnl",     "orin001.dat",  "orin002.dat",
    "orin001.dat.tmp", "orin002.dat.tmp", "orin003.dat",  "orin.sys.tmp", "株式分割.txt.tmp",
    "orin.jnl.tmp",    "orin.sum",        "orinc001.dat", "orinc002.dat", "orinc003.dat"};

store::StockCode Code(std::string_view text) { return *store::StockCode::Parse(text); }

void Done(const base::Status& status) {
  Require(status.has_value(), "the sound store can be made");
}

/// Two stocks and the index, split and trend lines, a stock in each of the lists.
void MakeSoundStore(const store::StoreLocation& location) {
  base::FileSystem& files = base::NativeFileSystem();
  Done(store::StockStore::Create(location, files));
  auto opened = store::StockStore::Open(location, {store::Access::kWrite, {}}, files);
  Require(opened.has_value(), "a new store can be opened");
  const std::vector<store::NewStock> stocks = {{Code("^DJI"), "ダウ平均", 3, 9, 926},
                                               {Code("AAPL"), "アップル", 2, 1, 811},
                                               {Code("BRK.B"), "ﾊﾞｰｸｼﾔｰ", 1, 1, 400}};
  Done(opened->AddStocks(stocks));
  std::vector<base::Date> days;
  days.reserve(kDays);
  for (int32_t day = 0; day < kDays; ++day) {
    days.push_back(base::Date::FromSerial(kFirstSerial + day / 5 * 7 + day % 5));
  }
  Done(opened->AddDays(days));
  std::vector<store::BarChange> changes;
  for (int32_t day = 1; day <= kDays; ++day) {
    const base::Currency price = base::Currency::FromInt(100 + day % 10);
    const base::Bar bar = {{}, price, price, price, price, base::Currency::FromInt(day)};
    if (day % 7 != 3) changes.push_back({base::SlotRecord(3), base::DayIndex(day), bar});
  }
  Done(opened->ChangeBars(changes));
  Done(opened->SaveSplits(store::SplitList({{Code("AAPL"), "アップル", 4, "4", days[50]}})));
  store::TrendLines lines;
  lines[0] = {days[0], base::Currency::FromInt(1), days[9], base::Currency::FromInt(2)};
  Done(store::SaveTrendLines(location, base::SlotRecord(3), lines, files));
}

std::string Seal(std::string_view steps) {
  namespace at = store::journal_offset;
  std::string bytes(store::kJournalMagic);
  bytes.resize(at::kSteps);
  base::PutUint32(bytes.data() + at::kVersion, store::kJournalVersion);
  base::PutUint64(bytes.data() + at::kLength, at::kSteps + steps.size() + at::kChecksumLength);
  bytes += steps;
  bytes.resize(bytes.size() + at::kChecksumLength);
  const size_t checked = bytes.size() - at::kChecksumLength;
  base::PutUint32(bytes.data() + checked, store::Crc32(std::string_view(bytes).substr(0, checked)));
  return bytes;
}

void ApplyEdit(Edit edit, std::string& content, size_t place, std::string_view bytes) {
  switch (edit) {
    case Edit::kReplace:
    case Edit::kRemove:
      content = bytes;
      break;
    case Edit::kOverwrite:
      if (content.size() < place + bytes.size()) content.resize(place + bytes.size());
      content.replace(place, bytes.size(), bytes);
      break;
    case Edit::kCut:
      content.resize(place);
      break;
  }
}

std::string ReadWhole(const fs::path& path) {
  auto bytes = base::ReadFile(path);
  Require(bytes.has_value(), "a file of the sound store can be read");
  return std::move(*bytes);
}

fs::path PathIn(const fs::path& directory, std::string_view name) {
  return directory / std::u8string(name.begin(), name.end());
}

class SmallFile final : public base::WritableFile {
 public:
  explicit SmallFile(std::unique_ptr<base::WritableFile> file) : file_(std::move(file)) {}

  base::Status WriteAt(int64_t offset, std::string_view bytes) override {
    if (offset + static_cast<int64_t>(bytes.size()) > kDiskSize) return DiskFull();
    return file_->WriteAt(offset, bytes);
  }
  base::Status Truncate(int64_t length) override {
    return length > kDiskSize ? DiskFull() : file_->Truncate(length);
  }
  base::Status Reserve(int64_t length) override {
    return length > kDiskSize ? DiskFull() : file_->Reserve(length);
  }
  base::Status Sync() override { return {}; }

 private:
  static base::Status DiskFull() { return base::Fail("ディスクに空きがありません。"); }

  std::unique_ptr<base::WritableFile> file_;
};

using Opened = base::Result<std::unique_ptr<base::WritableFile>>;

Opened OnSmallDisk(Opened opened) {
  if (!opened) return opened;
  return std::make_unique<SmallFile>(std::move(*opened));
}

}  // namespace

DamagedStore::DamagedStore() {
  std::error_code failure;
  const bool in_memory = fs::is_directory("/dev/shm", failure);
  root_ = fs::path(in_memory ? "/dev/shm" : "/tmp") / ("orin-fuzz-" + std::to_string(getpid()));
  location_ = {root_, root_};
  MakeSoundStore(location_);
  for (const auto& entry : fs::directory_iterator(root_)) {
    sound_[base::PathText(entry.path().filename())] = ReadWhole(entry.path());
  }
}

DamagedStore::~DamagedStore() {
  std::error_code ignored;
  fs::remove_all(root_, ignored);
}

void DamagedStore::Write(std::string_view input) const {
  Contents contents = sound_;
  constexpr size_t kEditLength = 6;
  while (input.size() >= kEditLength) {
    const auto* head = reinterpret_cast<const unsigned char*>(input.data());
    const size_t file = ((head[0] & 0x0Fu) | (head[0] >> 2 & 0x10u)) % kEditedFiles.size();
    const auto edit = static_cast<Edit>(head[0] >> 4 & 3);
    const size_t place = base::GetUint32(input.data()) >> 8;
    const size_t length = base::GetUint16(input.data() + 4);
    const std::string_view bytes = input.substr(kEditLength, length);
    input.remove_prefix(kEditLength + bytes.size());
    const std::string name(kEditedFiles[file]);
    if (edit == Edit::kRemove) {
      contents.erase(name);
    } else if (file == kSealedJournal) {
      contents[name] = Seal(bytes);
    } else if (place <= kLongestContent) {
      ApplyEdit(edit, contents[name], place, bytes);
    }
  }
  std::error_code ignored;
  for (const auto& entry : fs::directory_iterator(root_)) fs::remove(entry.path(), ignored);
  for (const auto& [name, bytes] : contents) {
    std::ofstream(PathIn(root_, name), std::ios::binary) << bytes;
  }
}

Opened SmallDisk::OpenForUpdate(const fs::path& path) {
  return OnSmallDisk(base::NativeFileSystem().OpenForUpdate(path));
}

Opened SmallDisk::Create(const fs::path& path) {
  return OnSmallDisk(base::NativeFileSystem().Create(path));
}

Opened SmallDisk::CreateNew(const fs::path& path) {
  Opened file = base::NativeFileSystem().CreateNew(path);
  return file && !*file ? std::move(file) : OnSmallDisk(std::move(file));
}

base::Status SmallDisk::Rename(const fs::path& from, const fs::path& to) {
  return base::NativeFileSystem().Rename(from, to);
}

base::Status SmallDisk::Remove(const fs::path& path) {
  return base::NativeFileSystem().Remove(path);
}

base::Status SmallDisk::MakeDirectory(const fs::path& path) {
  return base::NativeFileSystem().MakeDirectory(path);
}

base::Status SmallDisk::SyncDirectory(const fs::path& /*path*/) { return {}; }

}  // namespace orin::fuzz
