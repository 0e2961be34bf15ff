#include "store/company_addresses.h"

#include <algorithm>
#include <array>
#include <optional>

#include "base/cp932.h"
#include "base/text.h"

namespace orin::store {

namespace {

constexpr std::string_view kSeparator = "：";
constexpr std::array<std::string_view, 3> kSeparators = {kSeparator, "\t", ","};
// An ASCII colon is no part of a code, so that these are never entries.
constexpr std::array<std::string_view, 2> kTitleLines = {"T:", "D:"};
constexpr std::string_view kHeading = "銘柄コード";

bool IsEntry(std::string_view line) {
  return !line.empty() && !line.starts_with(kHeading) &&
         std::ranges::none_of(kTitleLines,
                              [line](std::string_view title) { return line.starts_with(title); });
}

struct Entry {
  StockCode code;
  std::string_view address;
};

std::optional<Entry> ParseEntry(std::string_view line) {
  size_t end = std::string_view::npos;
  size_t width = 0;
  for (const std::string_view separator : kSeparators) {
    const size_t found = line.find(separator);
    if (found >= end) continue;
    end = found;
    width = separator.size();
  }
  if (end == std::string_view::npos) return std::nullopt;
  const auto code = StockCode::Parse(base::TrimBlanks(line.substr(0, end)));
  const std::string_view address = base::TrimBlanks(line.substr(end + width));
  if (!code || address.empty()) return std::nullopt;
  return Entry{*code, address};
}

}  // namespace

CompanyAddresses ParseCompanyAddresses(std::string_view bytes, const std::string& file_name,
                                       std::vector<std::string>& problems) {
  const std::string text = base::DecodeText(bytes).text;
  CompanyAddresses addresses;
  int64_t number = 0;
  for (const std::string_view line : base::SplitLines(text)) {
    ++number;
    const std::string_view trimmed = base::TrimBlanks(line);
    if (!IsEntry(trimmed)) continue;
    if (const auto entry = ParseEntry(trimmed)) {
      addresses.insert_or_assign(entry->code, std::string(entry->address));
    } else {
      problems.push_back("「" + file_name + "」の" + std::to_string(number) +
                         "行目は、銘柄コードとアドレスを「：」で分けた形ではありません。");
    }
  }
  return addresses;
}

base::Result<std::string> SerializeCompanyAddresses(const CompanyAddresses& addresses) {
  std::string text;
  for (const auto& [code, address] : addresses) {
    text += code.Text();
    text += kSeparator;
    text += address;
    text += "\r\n";
  }
  return base::EncodeCp932(text);
}

}  // namespace orin::store
