#include "screening/result_list.h"

#include <string_view>

#include "base/cp932.h"
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

/// Character by character, for the rare text that cannot be encoded whole.
std::string EncodeLeniently(std::string_view utf8) {
  std::string bytes;
  for (size_t at = 0; at < utf8.size();) {
    size_t next = at + 1;
    while (next < utf8.size() && (utf8[next] & 0xc0) == 0x80) ++next;
    const auto encoded = base::EncodeCp932(utf8.substr(at, next - at));
    bytes += encoded ? *encoded : "?";
    at = next;
  }
  return bytes;
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
  const auto bytes = base::EncodeCp932(text);
  return base::ReplaceFile(files, path, bytes ? *bytes : EncodeLeniently(text));
}

}  // namespace orin::screening
