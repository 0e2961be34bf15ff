#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "store/company_addresses.h"
#include "store/list_formats.h"

namespace orin::shell {

/// The further files beside orin.sys, in memory. They are saved with store::SaveRecords into the
/// store's own system directory, never into a RAM disk's copy.
struct SystemFiles {
  std::vector<store::ListedCode> selection;           // orin.swk
  std::vector<store::ListedCode> comparison;          // orin.cwk
  std::vector<store::PersonalStock> personal;         // orin.per
  std::vector<store::RecentFile> recent_series;       // orin.ser
  std::vector<store::RecentFile> recent_comparisons;  // orin.com
  std::vector<store::FeeStep> fees;  // orin.fee; without it "ＸＸ証券" free of charge
  std::vector<store::RecentFile> recent_analyses;  // orin.ana
  store::CompanyAddresses addresses;               // 企業url.txt
};

inline constexpr const char* kAddressFile = "企業url.txt";

/// A missing file is an empty one. What could not be read is told in `problems`, a sentence that
/// names the file; the other files are read all the same.
SystemFiles LoadSystemFiles(const std::filesystem::path& system_directory,
                            std::vector<std::string>& problems);

}  // namespace orin::shell
