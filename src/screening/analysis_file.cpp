#include "screening/analysis_file.h"

#include <algorithm>
#include <array>

#include "base/text.h"
#include "screening/analysis_lines.h"

namespace orin::screening {

namespace {

using base::Fail;
using base::Status;

struct Reading {
  AnalysisFile analysis;
  std::string file_name;
  size_t line = 0;
  bool in_condition = false;

  void Note(const std::string& what) {
    analysis.notes.push_back(std::to_string(line) + "行目：" + what);
  }
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
  // No stock has such a code. That is no more than a stock that is missing.
  if (!code) to.Note("第二銘柄コードの" + code.error().message);
  to.analysis.second_stock = code ? std::optional(*code) : std::nullopt;
  to.analysis.is_second_stock_wrong = !code;
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
  if (found != kKeys.end()) return value.empty() ? Status() : found->read(to, value);
  if (to.in_condition) {
    to.Note("項目名「" + std::string(key) +
            "」は知らないので読み飛ばし、分析項目はその前の行で終わります。");
  }
  return {};
}

/// A line that is no "key：value".
void ReadOther(Reading& to, std::string_view line) {
  if (to.in_condition && ContinuesCondition(line)) {
    to.analysis.condition += line;
  } else if (line.find(kSeparator) != std::string_view::npos) {
    to.Note("「：」が二つ以上あるので読み飛ばしました。");
  } else if (!base::TrimBlanks(line).empty()) {
    to.Note("「：」がないので読み飛ばしました。");
  }
}

Status ReadLine(Reading& to, std::string_view line) {
  const auto parts = PartsOfLine(line);
  if (!parts) {
    ReadOther(to, line);
    return {};
  }
  if (parts->key == kConditionKey) {
    to.in_condition = true;
    to.analysis.condition = std::string(parts->value);
    return {};
  }
  const Status read = ReadValue(to, parts->key, base::TrimBlanks(parts->value));
  to.in_condition = false;
  return read;
}

}  // namespace

base::Result<AnalysisFile> ParseAnalysisFile(std::string_view utf8, const std::string& file_name) {
  Reading reading{{}, file_name};
  for (const std::string_view line : base::SplitLines(utf8)) {
    ++reading.line;
    if (const Status read = ReadLine(reading, line); !read) return base::Forward(read);
  }
  return std::move(reading.analysis);
}

}  // namespace orin::screening
