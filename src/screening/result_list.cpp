#include "screening/result_list.h"

#include <string_view>

#include "base/cp932.h"
#include "base/temporary_file.h"
#include "base/text.h"

namespace orin::screening {

namespace {

constexpr size_t kNameWidth = 16;
constexpr size_t kMarketWidth = 8;
constexpr size_t kPriceWidth = 14;
constexpr std::string_view kLineEnd = "\r\n";

std::string PriceColumn(const std::optional<base::Currency>& price, bool with_sign) {
  if (!price) return base::PadLeft("-", kPriceWidth);
  const bool plus = with_sign && *price > base::Currency();
  return base::PadLeft((plus ? "+" : "") + price->ToText(), kPriceWidth);
}

std::string FormatLine(const SelectedStock& selected) {
  const store::StockRecord& stock = selected.stock;
  std::string line(stock.code.Padded());
  line += " " + base::PadRight(stock.name, kNameWidth);
  line += " " + base::PadRight(store::ListingName(stock.listing), kMarketWidth);
  line += " " + PriceColumn(selected.close, false);
  line += " " + PriceColumn(selected.change, true);
  return line;
}

}  // namespace

std::string ResultListName(base::Date date) { return "k" + date.ToCompact() + ".txt"; }

std::string FormatResultList(const std::string& title, base::Date date,
                             const std::vector<SelectedStock>& selected) {
  std::string text = "T:" + title;
  text += kLineEnd;
  text += "D:" + date.ToText();
  text += kLineEnd;
  for (const SelectedStock& stock : selected) {
    text += FormatLine(stock);
    text += kLineEnd;
  }
  return text;
}

base::Status WriteResultList(base::FileSystem& files, const std::filesystem::path& path,
                             const std::string& text) {
  const base::Status written = base::ReplaceFile(files, path, base::EncodeCp932Lossy(text));
  // Temporaries of a killed run do no harm, so a failure to remove them is ignored.
  if (written) static_cast<void>(base::RemoveLeftTemporaries(files, path.parent_path()));
  return written;
}

}  // namespace orin::screening
