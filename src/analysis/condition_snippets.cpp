#include "analysis/condition_snippets.h"

#include <optional>

#include "analysis/condition_rewriting.h"
#include "analysis/condition_text.h"
#include "analysis/note_sentence.h"
#include "analysis/program.h"

namespace orin::analysis {

namespace {

using base::Fail;
using base::Result;
using Kind = SnippetField::Kind;
using Values = std::span<const std::string>;

constexpr const char* kCrosses = "交差";
constexpr const char* kSpans = "期間";
constexpr const char* kHighs = "高値と安値";
constexpr const char* kTrends = "流れ";
constexpr const char* kStrength = "強さ";

constexpr SnippetField kDays = {Kind::kNumber, "日数", "25", 1, 1000};

int32_t Number(const std::string& text) { return std::stoi(text); }

/// `before` held between both a day earlier, `after` holds between them now.
Result<std::string> Crossing(Values values, const char* before, const char* after) {
  const auto left = ShiftedBack(values[0], 1);
  if (!left) return base::Forward(left);
  const auto right = ShiftedBack(values[1], 1);
  if (!right) return base::Forward(right);
  return *left + before + *right + " And " + values[0] + after + values[1];
}

Result<std::string> CrossAbove(Values values) { return Crossing(values, " <= ", " > "); }
Result<std::string> CrossBelow(Values values) { return Crossing(values, " >= ", " < "); }

/// The condition on each of the last days, joined by `join`.
Result<std::string> OnEachDay(Values values,
                              Result<std::string> (*join)(std::string_view, std::string_view)) {
  std::string joined;
  for (int32_t day = 0; day < Number(values[1]); ++day) {
    const auto shifted = ShiftedBack(values[0], day);
    if (!shifted) return base::Forward(shifted);
    auto longer = join(joined, *shifted);
    if (!longer) return base::Forward(longer);
    joined = std::move(*longer);
  }
  return joined;
}

Result<std::string> Within(Values values) { return OnEachDay(values, JoinedWithOr); }
Result<std::string> InARow(Values values) { return OnEachDay(values, JoinedWithAnd); }

Result<std::string> NewHigh(Values v) { return "高値(0) > 最高値(" + v[0] + ",-1)"; }
Result<std::string> NewLow(Values v) { return "安値(0) < 最安値(" + v[0] + ",-1)"; }
Result<std::string> NewClosingHigh(Values v) { return "終値(0) > 終値最高値(" + v[0] + ",-1)"; }
Result<std::string> NewClosingLow(Values v) { return "終値(0) < 終値最安値(" + v[0] + ",-1)"; }
Result<std::string> NearHigh(Values v) {
  return "終値(0) >= 最高値(" + v[0] + ",0) * {100 - " + v[1] + "} / 100";
}
Result<std::string> NearLow(Values v) {
  return "終値(0) <= 最安値(" + v[0] + ",0) * {100 + " + v[1] + "} / 100";
}

Result<std::string> PerfectOrder(Values v) {
  return "移動平均(" + v[0] + ",0) > 移動平均(" + v[1] + ",0) > 移動平均(" + v[2] + ",0)";
}

/// A comparison of each day's close with that of the day before.
std::string Steps(int32_t days, const char* relation) {
  std::string text;
  for (int32_t day = 0; day < days; ++day) {
    if (day > 0) text += " And ";
    text += "終値(" + std::to_string(-day) + ")";
    text += relation;
    text += "終値(" + std::to_string(-day - 1) + ")";
  }
  return text;
}
Result<std::string> Rising(Values v) { return Steps(Number(v[0]), " > "); }
Result<std::string> Falling(Values v) { return Steps(Number(v[0]), " < "); }

Result<std::string> AverageTurnsUp(Values v) {
  return "移動平均(" + v[0] + ",-2) >= 移動平均(" + v[0] + ",-1) And 移動平均(" + v[0] +
         ",-1) < 移動平均(" + v[0] + ",0)";
}
Result<std::string> WeeklyUp(Values v) {
  return "週間終値(0) > 週間移動平均(" + v[0] + ",0) And 週間移動平均(" + v[0] +
         ",0) > 週間移動平均(" + v[0] + ",-1)";
}
Result<std::string> GapUp(Values v) { return "安値(0) > 高値(-1) * {100 + " + v[0] + "} / 100"; }
Result<std::string> GapDown(Values v) { return "高値(0) < 安値(-1) * {100 - " + v[0] + "} / 100"; }

Result<std::string> Volume(Values v) {
  return "出来高(0) >= 出来高合計(" + v[0] + ",-1) / " + v[0] + " * " + v[1];
}
Result<std::string> RsiBelow(Values v) { return "ＲＳＩ(" + v[0] + ",0) <= " + v[1]; }
Result<std::string> RsiAbove(Values v) { return "ＲＳＩ(" + v[0] + ",0) >= " + v[1]; }
Result<std::string> BandAbove(Values v) {
  return "終値(0) > ボリンジャーバンド(" + v[0] + "," + v[1] + ",0)";
}
Result<std::string> BandBelow(Values v) {
  return "終値(0) < ボリンジャーバンド(" + v[0] + ",-" + v[1] + ",0)";
}
Result<std::string> FarAbove(Values v) { return "移動平均乖離率(" + v[0] + ",0) >= " + v[1]; }
Result<std::string> FarBelow(Values v) { return "移動平均乖離率(" + v[0] + ",0) <= -" + v[1]; }
Result<std::string> StrongerThanSecond(Values v) {
  return "終値(0) / 終値(-" + v[0] + ") > 第二銘柄終値(0) / 第二銘柄終値(-" + v[0] + ")";
}

const SnippetField kShort = {Kind::kOperand, "短い方", "移動平均(25,0)"};
const SnippetField kLong = {Kind::kOperand, "長い方", "移動平均(75,0)"};
const SnippetField kPercent = {Kind::kNumber, "何％", "3", 0, 1000};

const std::vector<Snippet>& Table() {
  static const std::vector<Snippet> snippets = {
      {kCrosses,
       "上抜け（ゴールデンクロス）",
       "短い方が長い方を、この日に下から上へ抜けた銘柄。",
       {kShort, kLong},
       CrossAbove},
      {kCrosses,
       "下抜け（デッドクロス）",
       "短い方が長い方を、この日に上から下へ抜けた銘柄。",
       {kShort, kLong},
       CrossBelow},
      {kSpans,
       "最近n日以内に一度でも",
       "n日のうち一日でも条件が成り立った銘柄（週間・月間の項目は週・月で数える）。",
       {{Kind::kCondition, "条件", "前日比(0) > 0"}, {Kind::kNumber, "日数", "5", 1, 100}},
       Within},
      {kSpans,
       "n日続けて",
       "n日のすべてで条件が成り立った銘柄（週間・月間の項目は週・月で数える）。",
       {{Kind::kCondition, "条件", "前日比(0) > 0"}, {Kind::kNumber, "日数", "3", 1, 100}},
       InARow},
      {kHighs,
       "n日来の新高値",
       "高値が、前日までのn日の最高値を超えた銘柄。",
       {{Kind::kNumber, "日数", "250", 1, 1000}},
       NewHigh},
      {kHighs,
       "n日来の新安値",
       "安値が、前日までのn日の最安値を下回った銘柄。",
       {{Kind::kNumber, "日数", "250", 1, 1000}},
       NewLow},
      {kHighs,
       "終値の新高値",
       "終値が、前日までのn日のどの終値よりも高い銘柄。",
       {kDays},
       NewClosingHigh},
      {kHighs,
       "終値の新安値",
       "終値が、前日までのn日のどの終値よりも安い銘柄。",
       {kDays},
       NewClosingLow},
      {kHighs,
       "高値に近い",
       "終値が、n日の最高値から何％かの中にある銘柄。",
       {kDays, kPercent},
       NearHigh},
      {kHighs,
       "安値に近い",
       "終値が、n日の最安値から何％かの中にある銘柄。",
       {kDays, kPercent},
       NearLow},
      {kTrends,
       "パーフェクトオーダー",
       "三つの移動平均が、短い順に上から並んでいる銘柄。",
       {{Kind::kNumber, "短い日数", "25", 1, 1000},
        {Kind::kNumber, "中くらいの日数", "75", 1, 1000},
        {Kind::kNumber, "長い日数", "200", 1, 1000}},
       PerfectOrder},
      {kTrends,
       "n日続けて上昇",
       "終値がn日続けて前の日より高い銘柄。",
       {{Kind::kNumber, "日数", "3", 1, 100}},
       Rising},
      {kTrends,
       "n日続けて下降",
       "終値がn日続けて前の日より安い銘柄。",
       {{Kind::kNumber, "日数", "3", 1, 100}},
       Falling},
      {kTrends,
       "移動平均が上向きに変わった",
       "移動平均が前日まで上がらず、この日に上がった銘柄。",
       {kDays},
       AverageTurnsUp},
      {kTrends,
       "週足が上向き",
       "週足の終値が移動平均の上にあり、その移動平均も上がっている銘柄。",
       {{Kind::kNumber, "週数", "13", 1, 1000}},
       WeeklyUp},
      {kTrends, "窓を開けて上昇", "安値が、前日の高値より何％か高い銘柄。", {kPercent}, GapUp},
      {kTrends, "窓を開けて下降", "高値が、前日の安値より何％か安い銘柄。", {kPercent}, GapDown},
      {kStrength,
       "出来高急増",
       "出来高が、前日までのn日の平均の何倍か以上の銘柄。",
       {kDays, {Kind::kNumber, "何倍", "2", 1, 1000}},
       Volume},
      {kStrength,
       "ＲＳＩが低い（売られすぎ）",
       "ＲＳＩが決めた値以下の銘柄。",
       {{Kind::kNumber, "日数", "14", 1, 1000}, {Kind::kNumber, "値", "30", 0, 100}},
       RsiBelow},
      {kStrength,
       "ＲＳＩが高い（買われすぎ）",
       "ＲＳＩが決めた値以上の銘柄。",
       {{Kind::kNumber, "日数", "14", 1, 1000}, {Kind::kNumber, "値", "70", 0, 100}},
       RsiAbove},
      {kStrength,
       "ボリンジャーバンドを上抜け",
       "終値が、移動平均から上の偏差の線より高い銘柄。",
       {kDays, {Kind::kNumber, "偏差", "2", 1, 3}},
       BandAbove},
      {kStrength,
       "ボリンジャーバンドを下抜け",
       "終値が、移動平均から下の偏差の線より安い銘柄。",
       {kDays, {Kind::kNumber, "偏差", "2", 1, 3}},
       BandBelow},
      {kStrength,
       "移動平均から上に離れた",
       "移動平均乖離率が何％か以上の銘柄。",
       {kDays, {Kind::kNumber, "何％", "10", 0, 1000}},
       FarAbove},
      {kStrength,
       "移動平均から下に離れた",
       "移動平均乖離率がマイナス何％か以下の銘柄。",
       {kDays, {Kind::kNumber, "何％", "10", 0, 1000}},
       FarBelow},
      {kStrength,
       "第二銘柄より強い",
       "n日前からの値上がりが、第二銘柄より大きい銘柄。",
       {{Kind::kNumber, "日数", "60", 1, 1000}},
       StrongerThanSecond},
  };
  return snippets;
}

std::optional<std::string> FaultOfNumber(const SnippetField& field, const std::string& value) {
  const std::string label(field.label);
  const bool is_number = !value.empty() && value.size() <= 6 &&
                         value.find_first_not_of("0123456789") == std::string::npos;
  if (is_number && Number(value) >= field.minimum && Number(value) <= field.maximum) {
    return std::nullopt;
  }
  return label + "は" + std::to_string(field.minimum) + "から" + std::to_string(field.maximum) +
         "までの数字で指定して下さい。";
}

std::optional<std::string> FaultOf(const SnippetField& field, const std::string& value) {
  if (field.kind == Kind::kNumber) return FaultOfNumber(field, value);
  const std::string label(field.label);
  if (TrimAllBlanks(value).empty()) return label + "が空です。";
  const auto program = BuildProgram(value);
  if (!program) return label + "の" + NoteSentence(program.error());
  if (!program->Notes().empty()) return label + "の" + NoteSentence(program->Notes().front());
  if (field.kind == Kind::kOperand && !program->IsValue()) {
    return label + "は値の式でなければなりません。比較は書けません。";
  }
  if (field.kind == Kind::kCondition && program->IsValue()) {
    return label + "には比較が必要です。";
  }
  return std::nullopt;
}

}  // namespace

std::span<const Snippet> Snippets() { return Table(); }

Result<std::string> MakeSnippet(const Snippet& snippet, Values values) {
  std::vector<std::string> used;
  for (size_t i = 0; i < snippet.fields.size(); ++i) {
    const SnippetField& field = snippet.fields[i];
    if (const auto fault = FaultOf(field, values[i])) return Fail(*fault);
    used.emplace_back(TrimAllBlanks(values[i]));
  }
  return snippet.make(used);
}

}  // namespace orin::analysis
