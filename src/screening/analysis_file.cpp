#include "screening/analysis_file.h"

#include <algorithm>
#include <array>

#include "base/text.h"

namespace orin::screening {

namespace {

using base::Fail;
using base::Status;

constexpr std::string_view kSeparator = "：";
constexpr std::string_view kConditionKey = "分析項目";

struct Reading {
  AnalysisFile analysis;
  std::string file_name;
};

Status ReadDate(Reading& to, std::string_view value) {
  to.analysis.date = base::Date::Parse(value);
  if (to.analysis.date) return {};
  return Fail(to.file_name + " の分析日付「" + std::string(value) +
              "」は日付（yyyy/mm/dd）ではありません。");
}

Status ReadMarket(Reading& to, std::string_view value) {
  const auto market = ParseMarketChoice(value);
  if (!market) {
    return Fail(to.file_name + " の分析上場市場「" + std::string(value) +
                "」は選べる市場ではありません。");
  }
  to.analysis.market = *market;
  return {};
}

Status ReadSecondStock(Reading& to, std::string_view value) {
  const auto code = store::StockCode::Parse(value);
  if (!code) return Fail(to.file_name + " の第二銘柄コード：" + code.error().message);
  to.analysis.second_stock = *code;
  return {};
}

struct Key {
  std::string_view name;
  Status (*read)(Reading&, std::string_view value);
};

Status ReadText(std::string& to, std::string_view value) {
  to = std::string(value);
  return {};
}

constexpr std::array<Key, 5> kKeys = {{
    {"タイトル", [](Reading& to, std::string_view v) { return ReadText(to.analysis.title, v); }},
    {"分析結果格納場所",
     [](Reading& to, std::string_view v) { return ReadText(to.analysis.result_directory, v); }},
    {"分析日付", ReadDate},
    {"分析上場市場", ReadMarket},
    {"第二銘柄コード", ReadSecondStock},
}};

/// The value of a line "key：value" for one of the keys above.
Status ReadValue(Reading& to, std::string_view key, std::string_view value) {
  const auto found =
      std::find_if(kKeys.begin(), kKeys.end(), [key](const Key& k) { return k.name == key; });
  if (found == kKeys.end() || value.empty()) return {};
  return found->read(to, value);
}

}  // namespace

base::Result<AnalysisFile> ParseAnalysisFile(std::string_view utf8, const std::string& file_name) {
  Reading reading{{}, file_name};
  bool in_condition = false;
  for (const std::string_view line : base::SplitLines(utf8)) {
    const size_t at = line.find(kSeparator);
    if (at == std::string_view::npos) {
      if (in_condition) reading.analysis.condition += line;
      continue;
    }
    const std::string_view rest = line.substr(at + kSeparator.size());
    if (rest.find(kSeparator) != std::string_view::npos) continue;
    const std::string_view key = base::TrimBlanks(line.substr(0, at));
    in_condition = key == kConditionKey;
    if (in_condition) {
      reading.analysis.condition = std::string(rest);
    } else if (const Status read = ReadValue(reading, key, base::TrimBlanks(rest)); !read) {
      return base::Forward(read);
    }
  }
  return std::move(reading.analysis);
}

}  // namespace orin::screening
