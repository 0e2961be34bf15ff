#include "support/mutation/mutation_run.h"

#include <algorithm>
#include <optional>
#include <stdexcept>
#include <unistd.h>

#include "base/record_file.h"
#include "store/master_format.h"
#include "store/price_format.h"
#include "store/store_check.h"
#include "support/faulty_file_system.h"
#include "support/mutation/store_users.h"
#include "support/store_builder.h"

namespace orin::support {

namespace {

namespace fs = std::filesystem;
using store::StoreLocation;

/// The bars with data that a reader sees, by code and date.
using View = std::map<std::pair<std::string, base::Date>, base::Bar>;

/// Takes what is wrong in a round.
class Faults {
 public:
  explicit Faults(std::vector<std::string>& faults) : faults_(faults) {}

  void Add(std::string fault) { faults_.push_back(std::move(fault)); }
  void AddIfAny(std::string_view told, const std::string& what) {
    if (!what.empty()) Add(std::string(told) + what);
  }
  void RequireSentence(std::string_view message, std::string_view who) {
    // The last one ends the sentence about an earlier version's ranking file.
    for (const std::string_view end : {"。", "？", "）", "使用できません"}) {
      if (message.ends_with(end)) return;
    }
    Add(std::string(who) + " fails without a sentence: " + std::string(message));
  }

 private:
  std::vector<std::string>& faults_;
};

}  // namespace

struct MutationRun::Sound {
  StoreImage image;
  View view;
};

namespace {

std::optional<View> Look(const StoreLocation& location, Faults& faults) {
  const auto store = store::StockStore::Open(location, {}, base::NativeFileSystem());
  if (!store) {
    faults.RequireSentence(store.error().message, "a reader");
    return std::nullopt;
  }
  View view;
  base::BarColumns bars;
  for (const store::StockRecord& stock : store->Master().Stocks()) {
    store->LoadBars(stock.slot, base::DayIndex(1), store->Days().Last(), bars);
    for (size_t i = 0; i < bars.Size(); ++i) {
      const base::Bar bar = bars.At(i);
      if (bar.HasData()) view.try_emplace({std::string(stock.code.Text()), bar.date}, bar);
    }
  }
  return view;
}

bool IsClean(const StoreLocation& location, Faults& faults) {
  base::SilentProgress progress;
  const auto findings = store::CheckStore(location, progress);
  if (!findings) {
    faults.RequireSentence(findings.error().message, "check");
    return false;
  }
  for (const std::string& finding : *findings) faults.RequireSentence(finding, "a finding");
  return findings->empty();
}

/// The first bar of `before` that `after` lacks or has otherwise; those of one code do not count.
std::string FirstLost(const View& before, const View& after, std::string_view but_of) {
  for (const auto& [key, bar] : before) {
    if (key.first == but_of) continue;
    const auto found = after.find(key);
    if (found != after.end() && found->second == bar) continue;
    return key.first + " of " + key.second.ToText();
  }
  return "";
}

/// The first committed entry of the sound store's price files that lies in `before` and no longer
/// in `after`.
std::string FirstOverwritten(const StoreImage& sound, const StoreImage& before,
                             const StoreImage& after, base::SlotRecord but_of) {
  const auto header =
      store::DecodeMasterHeader(sound.at("system/orin.sys").substr(0, store::kMasterRecordLength));
  for (int16_t file = 1; file <= header.current_file; ++file) {
    const std::string name = "data/" + store::FileName({store::FileKind::kDaily, file});
    if (!before.contains(name)) continue;
    const auto found = after.find(name);
    if (found == after.end()) return name + " is gone";
    const size_t days = file < header.current_file ? size_t{store::kDaysPerFile}
                                                   : static_cast<size_t>(header.current_record);
    const size_t length = days * store::kBarLength;
    // Behind the sound store's last record there is nothing to lose.
    const size_t end = std::min(before.at(name).size(), sound.at(name).size());
    for (size_t begin = store::kDailyRecordLength; begin + length <= end;
         begin += store::kDailyRecordLength) {
      const size_t record = begin / store::kDailyRecordLength + 1;
      if (record == static_cast<size_t>(but_of.Value())) continue;
      if (before.at(name).compare(begin, length, found->second, begin, length) == 0) continue;
      return name + ", record " + std::to_string(record);
    }
  }
  return "";
}

base::SlotRecord SlotOf(const StoreImage& sound, std::string_view code) {
  const base::RecordView records(sound.at("system/orin.sys"), store::kMasterRecordLength);
  for (int32_t number = 2; number <= records.Count(); ++number) {
    const store::StockRecord stock = store::DecodeStockRecord(*records.Record(number));
    if (stock.code.Text() == code) return stock.slot;
  }
  return base::SlotRecord(0);
}

/// Damages of a sound store, written below `root` again for each who meets them.
template <typename Sound>
class Patient {
 public:
  Patient(const fs::path& root, const Sound& sound, Random& random)
      : root_(root), sound_(sound), damaged_(sound.image), damage_(Damage(damaged_, random)) {}

  [[nodiscard]] Round Meet(const StoreReader& reader) const {
    Round round{damage_, std::string(reader.name), {}};
    Faults faults(round.faults);
    WriteImage(damaged_, root_);
    const base::Status read = reader.read(Location());
    if (!read) faults.RequireSentence(read.error().message, "the reader");
    return round;
  }

  /// The writer is stopped at an operation where that is not 0.
  [[nodiscard]] Round Meet(const StoreWriter& writer, int64_t stop_at) const {
    Round round{damage_, std::string(writer.name), {}};
    if (stop_at > 0) round.user += ", stopped at operation " + std::to_string(stop_at);
    Faults faults(round.faults);
    WriteImage(damaged_, root_);
    const auto before = Look(Location(), faults);
    RequireFoundOrSound(before, "", "before", faults);
    const StoreImage image_before = ReadImage(root_);

    FaultyFileSystem files;
    if (stop_at > 0) files.DieAt(stop_at);
    const base::Status written = writer.write(Location(), files);
    if (!written && !files.IsDead()) faults.RequireSentence(written.error().message, "the writer");

    const auto after = Look(Location(), faults);
    RequireKept(before, after, writer, faults);
    if (!writer.moves_bars) {
      faults.AddIfAny("overwritten: ",
                      FirstOverwritten(sound_.image, image_before, ReadImage(root_),
                                       SlotOf(sound_.image, writer.changed_code)));
    }
    RequireFoundOrSound(after, writer.changed_code, "after", faults);
    return round;
  }

 private:
  [[nodiscard]] StoreLocation Location() const { return LocationBelow(root_); }

  static void RequireKept(const std::optional<View>& before, const std::optional<View>& after,
                          const StoreWriter& writer, Faults& faults) {
    if (!before) return;
    if (!after) {
      faults.Add("nobody can open the store any more");
      return;
    }
    faults.AddIfAny("changed: ", FirstLost(*before, *after, writer.changed_code));
  }

  /// A store without findings reads as the sound one.
  void RequireFoundOrSound(const std::optional<View>& view, std::string_view but_of,
                           std::string_view when, Faults& faults) const {
    if (!IsClean(Location(), faults)) return;
    const std::string told = "check finds nothing " + std::string(when) + " the writer, but ";
    if (view) {
      faults.AddIfAny(told + "lost: ", FirstLost(sound_.view, *view, but_of));
    } else {
      faults.Add(told + "nobody can open the store");
    }
  }

  const fs::path& root_;
  const Sound& sound_;
  StoreImage damaged_;
  std::string damage_;
};

/// 0, to let the writer come to its end, in two cases of three.
int64_t PickStop(Random& random) {
  constexpr size_t kOperations = 40;
  return Below(3, random) == 0 ? static_cast<int64_t>(1 + Below(kOperations, random)) : 0;
}

fs::path ScratchRoot() {
  std::error_code failure;
  const bool in_memory = fs::is_directory("/dev/shm", failure);
  return fs::path(in_memory ? "/dev/shm" : "/tmp") / ("orin-mutate-" + std::to_string(getpid()));
}

}  // namespace

MutationRun::MutationRun(uint64_t seed) : seed_(seed), root_(ScratchRoot()) {
  std::vector<std::string> problems;
  Faults faults(problems);
  for (const CurrentFile current_file : {CurrentFile::kHasRoom, CurrentFile::kIsFull}) {
    StoreImage image = MakeSoundImage(current_file);
    WriteImage(image, root_);
    const auto view = Look(LocationBelow(root_), faults);
    if (!view || !IsClean(LocationBelow(root_), faults)) {
      throw std::runtime_error("the store that is to be damaged is not sound");
    }
    sound_.push_back({std::move(image), *view});
  }
}

MutationRun::~MutationRun() {
  std::error_code ignored;
  fs::remove_all(root_, ignored);
}

Random MutationRun::RandomOf(uint64_t number) const {
  std::seed_seq seeds{seed_, seed_ >> 32, number, number >> 32};
  return Random(seeds);
}

std::vector<Round> MutationRun::RunOne(uint64_t number) {
  Random random = RandomOf(number);
  const Patient patient(root_, sound_[Below(sound_.size(), random)], random);
  const std::span<const StoreReader> readers = StoreReaders();
  const std::span<const StoreWriter> writers = StoreWriters();
  std::vector<Round> rounds = {patient.Meet(readers[Below(readers.size(), random)])};
  const StoreWriter& writer = writers[Below(writers.size(), random)];
  rounds.push_back(patient.Meet(writer, PickStop(random)));
  return rounds;
}

std::vector<Round> MutationRun::RunAll(uint64_t number) {
  Random random = RandomOf(number);
  const Patient patient(root_, sound_[Below(sound_.size(), random)], random);
  std::vector<Round> rounds;
  for (const StoreReader& reader : StoreReaders()) rounds.push_back(patient.Meet(reader));
  for (const StoreWriter& writer : StoreWriters()) {
    rounds.push_back(patient.Meet(writer, 0));
    rounds.push_back(patient.Meet(writer, 1 + PickStop(random)));
  }
  return rounds;
}

}  // namespace orin::support
