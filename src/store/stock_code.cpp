#include "store/stock_code.h"

#include <algorithm>

namespace orin::store {

namespace {

bool IsAllowed(char c) { return c > ' ' && c <= '~' && c != ','; }

}  // namespace

base::Result<StockCode> StockCode::Parse(std::string_view text) {
  while (text.ends_with(' ')) text.remove_suffix(1);
  const bool well_formed = !text.empty() && text.size() <= kWidth &&
                           std::ranges::all_of(text, IsAllowed) && text != kEmptiedCode;
  if (!well_formed) {
    return base::Fail("「" + std::string(text) + "」は銘柄コードとして正しくありません。");
  }
  StockCode code;
  std::ranges::copy(text, code.padded_.begin());
  return code;
}

std::string_view StockCode::Text() const {
  std::string_view text = Padded();
  while (text.ends_with(' ')) text.remove_suffix(1);
  return text;
}

}  // namespace orin::store
