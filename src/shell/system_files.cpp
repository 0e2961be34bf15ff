#include "shell/system_files.h"

#include <iterator>
#include <utility>

#include "base/file_system.h"
#include "base/paths.h"
#include "store/stored_file.h"

namespace orin::shell {

namespace {

class Reader {
 public:
  Reader(const std::filesystem::path& directory, std::vector<std::string>& problems)
      : directory_(directory), problems_(problems) {}

  template <typename Record>
  void Read(const char* name, const store::RecordFormat<Record>& format,
            std::vector<Record>& entries) {
    store::RecordList<Record> list = store::LoadRecords(format, directory_ / name);
    entries = std::move(list.entries);
    if (list.problem) problems_.push_back(std::move(*list.problem));
  }

  void ReadAddresses(store::CompanyAddresses& addresses) {
    const std::filesystem::path path = base::NativePath(kAddressFile, directory_);
    if (!store::Exists(path)) return;
    const auto bytes = base::ReadFile(path);
    if (bytes) {
      addresses = store::ParseCompanyAddresses(*bytes, path.filename().string(), problems_);
    } else {
      problems_.push_back(bytes.error().message);
    }
  }

 private:
  const std::filesystem::path& directory_;
  std::vector<std::string>& problems_;
};

}  // namespace

SystemFiles LoadSystemFiles(const std::filesystem::path& system_directory,
                            std::vector<std::string>& problems) {
  SystemFiles loaded;
  Reader reader(system_directory, problems);
  reader.Read("orin.swk", store::kSelectionFormat, loaded.selection);
  reader.Read("orin.cwk", store::kComparisonFormat, loaded.comparison);
  reader.Read("orin.per", store::kPersonalFormat, loaded.personal);
  reader.Read("orin.ser", store::kRecentSeriesFormat, loaded.recent_series);
  reader.Read("orin.com", store::kRecentComparisonFormat, loaded.recent_comparisons);
  reader.Read("orin.fee", store::kFeeFormat, loaded.fees);
  if (loaded.fees.empty()) loaded.fees.push_back({std::string(store::kDefaultBroker), {}, {}, {}});
  reader.Read("orin.ana", store::kRecentAnalysisFormat, loaded.recent_analyses);
  reader.ReadAddresses(loaded.addresses);
  return loaded;
}

}  // namespace orin::shell
