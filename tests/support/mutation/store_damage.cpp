#include <algorithm>
#include <array>
#include <functional>
#include <iterator>

#include "base/coding.h"
#include "store/master_format.h"
#include "store/price_format.h"
#include "support/mutation/store_image.h"

namespace orin::support {

namespace {

constexpr std::string_view kMaster = "system/orin.sys";

/// The records of a file, by the beginning of its path; the first family that fits counts.
struct Family {
  std::string_view beginning;
  size_t record_length;
  int weight;  // how often it is damaged
};
constexpr std::array<Family, 12> kFamilies = {{
    {"system/orin.sys", 52, 6},
    {"system/orin.ind", 110, 2},
    {"system/orin.add", 28, 2},
    {"system/orin.del", 28, 1},
    {"system/orin.lin", 320, 1},
    {"system/orin.fin", 128, 2},
    {"system/orin.acc", 256, 2},
    {"data/orins", 1600, 1},
    {"data/orint", 3520, 1},
    {"data/orin0", 4000, 8},
    {"data/orin", 16, 2},
    {"", 1, 1},
}};

const Family& FamilyOf(std::string_view name) {
  return *std::ranges::find_if(
      kFamilies, [&](const Family& family) { return name.starts_with(family.beginning); });
}

size_t Below(size_t limit, Random& random) {
  return limit == 0 ? 0 : std::uniform_int_distribution<size_t>(0, limit - 1)(random);
}

/// A file that is about to be damaged.
struct Victim {
  StoreImage& image;
  std::string name;
  size_t record_length;
  Random& random;

  [[nodiscard]] std::string& Content() const { return image[name]; }
  [[nodiscard]] size_t Records() const { return Content().size() / record_length; }
  [[nodiscard]] size_t Below(size_t limit) const { return support::Below(limit, random); }
  [[nodiscard]] std::string Noise(size_t length) const {
    std::string bytes(length, '\0');
    for (char& c : bytes) c = static_cast<char>(Below(256));
    return bytes;
  }
  [[nodiscard]] std::string Record(size_t index) const {
    return Content().substr(index * record_length, record_length);
  }
  void PutRecord(size_t index, std::string_view bytes) const {
    Content().replace(index * record_length, record_length, bytes);
  }
};

std::string SetHeaderField(const Victim& victim) {
  namespace at = store::header_offset;
  constexpr std::array<size_t, 6> kOffsets = {at::kDateRecord,  at::kFirstFile,
                                              at::kCurrentFile, at::kCurrentRecord,
                                              at::kCreditFirst, at::kCreditCurrent};
  constexpr std::array<int16_t, 12> kValues = {0, 1, 2, 3, 4, 5, 10, 99, 100, 999, -1, 32767};
  std::string& master = victim.image[std::string(kMaster)];
  const size_t offset = kOffsets[victim.Below(kOffsets.size())];
  const int16_t value = kValues[victim.Below(kValues.size())];
  base::PutInt16(master.data() + offset, value);
  return "offset " + std::to_string(offset) + " of orin.sys set to " + std::to_string(value);
}

std::string SetDateCode(const Victim& victim) {
  constexpr std::array<std::string_view, 5> kCodes = {"20200106", "        ", "20991231",
                                                      "20200527", "2020131x"};
  const std::string_view code = kCodes[victim.Below(kCodes.size())];
  victim.image[std::string(kMaster)].replace(store::header_offset::kDate, code.size(), code);
  return "date code of orin.sys set to " + std::string(code);
}

std::string FlipBit(const Victim& victim) {
  if (victim.Content().empty()) return "nothing to flip";
  const size_t place = victim.Below(victim.Content().size());
  const size_t bit = victim.Below(8);
  victim.Content()[place] = static_cast<char>(victim.Content()[place] ^ (1 << bit));
  return "bit " + std::to_string(bit) + " of byte " + std::to_string(place) + " flipped";
}

std::string Overwrite(const Victim& victim) {
  const size_t place = victim.Below(victim.Content().size() + 1);
  const std::string noise = victim.Noise(1 + victim.Below(64));
  victim.Content().replace(place, noise.size(), noise);
  return std::to_string(noise.size()) + " bytes of noise at " + std::to_string(place);
}

std::string BlankSector(const Victim& victim) {
  constexpr size_t kSector = 512;
  const size_t place = victim.Below(victim.Content().size() / kSector + 1) * kSector;
  const size_t length = std::min(kSector, victim.Content().size() - place);
  victim.Content().replace(place, length, std::string(length, '\0'));
  return "zeros from " + std::to_string(place) + " on";
}

std::string Cut(const Victim& victim) {
  victim.Content().resize(victim.Below(victim.Content().size() + 1));
  return "cut to " + std::to_string(victim.Content().size());
}

std::string CutAtRecord(const Victim& victim) {
  victim.Content().resize(victim.Below(victim.Records() + 1) * victim.record_length);
  return "cut to " + std::to_string(victim.Records()) + " records";
}

std::string AddStrayBytes(const Victim& victim) {
  const size_t length = 1 + victim.Below(victim.record_length - 1);
  victim.Content() += victim.Noise(length);
  return std::to_string(length) + " stray bytes at the end";
}

std::string AddRecord(const Victim& victim) {
  victim.Content() += victim.Record(victim.Below(victim.Records()));
  return "one record added";
}

std::string CopyRecord(const Victim& victim) {
  if (victim.Records() < 2) return "no record to copy";
  const size_t from = victim.Below(victim.Records());
  const size_t to = victim.Below(victim.Records());
  victim.PutRecord(to, victim.Record(from));
  return "record " + std::to_string(from + 1) + " copied over " + std::to_string(to + 1);
}

std::string ExchangeRecords(const Victim& victim) {
  if (victim.Records() < 2) return "no records to exchange";
  const size_t one = victim.Below(victim.Records());
  const size_t other = victim.Below(victim.Records());
  const std::string first = victim.Record(one);
  victim.PutRecord(one, victim.Record(other));
  victim.PutRecord(other, first);
  return "records " + std::to_string(one + 1) + " and " + std::to_string(other + 1) + " exchanged";
}

std::string BlankRecord(const Victim& victim) {
  if (victim.Records() == 0) return "no record to blank";
  const size_t index = victim.Below(victim.Records());
  victim.PutRecord(index, std::string(victim.record_length, '\0'));
  return "record " + std::to_string(index + 1) + " set to zeros";
}

std::string RemoveFile(const Victim& victim) {
  victim.image.erase(victim.name);
  return "removed";
}

std::string EmptyFile(const Victim& victim) {
  victim.Content().clear();
  return "emptied";
}

std::string CopyFileOver(const Victim& victim) {
  constexpr std::array<std::string_view, 6> kTargets = {"data/orin001.dat",  "data/orin002.dat",
                                                        "data/orin003.dat",  "data/orin004.dat",
                                                        "data/orins001.dat", "system/orin.acc"};
  const std::string_view target = kTargets[victim.Below(kTargets.size())];
  victim.image[std::string(target)] = victim.Content();
  return "copied over " + std::string(target);
}

std::string LeaveJournal(const Victim& victim) {
  victim.image["system/orin.jnl"] = victim.Noise(victim.Below(200));
  return "noise as journal";
}

using DamageKind = std::function<std::string(const Victim&)>;

const std::vector<DamageKind>& Kinds() {
  static const std::vector<DamageKind> kinds = {
      SetHeaderField,  SetHeaderField, SetDateCode, FlipBit,    FlipBit,
      FlipBit,         Overwrite,      BlankSector, Cut,        CutAtRecord,
      AddStrayBytes,   AddRecord,      CopyRecord,  CopyRecord, ExchangeRecords,
      ExchangeRecords, BlankRecord,    RemoveFile,  EmptyFile,  CopyFileOver,
      LeaveJournal};
  return kinds;
}

std::string PickFile(const StoreImage& image, Random& random) {
  std::vector<std::string> names;
  for (const auto& [name, bytes] : image) {
    const int weight = FamilyOf(name).weight;
    for (int i = 0; i < weight; ++i) names.push_back(name);
  }
  return names[Below(names.size(), random)];
}

}  // namespace

std::string Damage(StoreImage& image, Random& random) {
  const std::string name = PickFile(image, random);
  const Victim victim{image, name, FamilyOf(name).record_length, random};
  const DamageKind& kind = Kinds()[Below(Kinds().size(), random)];
  return name + ": " + kind(victim);
}

}  // namespace orin::support
