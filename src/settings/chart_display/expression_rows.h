#pragma once

#include <array>
#include <string>

#include "settings/chart_display/display_rows.h"

namespace orin::settings {

/// How a chart of expressions chooses its vertical scale.
inline constexpr std::array kScaleChoices = {
    SettingChoice{0, "０：変更しない"},
    SettingChoice{1, "１：チャートの最大値、最小値に合わせて変更"},
    SettingChoice{2, "２：０～１００に変更"},
    SettingChoice{3, "３：－１００～１００に変更"},
};

/// Days with a rise among the days of a rise or a fall, in percent.
inline constexpr const char* kPsychologicalLine =
    "株価上昇日数(12,0) / { 株価上昇日数(12,0) + 株価下降日数(12,0) } * 100";

struct ExpressionDefault {
  std::string stem;  // of its keys, as "original1"
  std::string name;  // in labels; may be empty
  const char* check;
  const char* label;
  const char* expression;
  const char* color;
};

/// Adds the keys of an ExpressionLine that `find` gives.
template <typename Find>
void AddExpressionRows(const ExpressionDefault& line, Find find, DisplayHeading& heading) {
  const auto at = [&find](auto member) { return PartOf(find, member); };
  const std::string of = line.name.empty() ? "" : line.name + "の";
  heading.rows.push_back({line.stem + "_check", at(&ExpressionLine::check), line.check, Check(),
                          of + "表示", "この線を表示します。"});
  heading.rows.push_back({line.stem + "_koumoku", at(&ExpressionLine::label), line.label, Text(),
                          of + "項目名", "値の前に表示する線の名前です。"});
  heading.rows.push_back({line.stem + "_analysis", at(&ExpressionLine::expression), line.expression,
                          Expression(), of + "式", "線の値を求める式です。空なら線はありません。"});
  heading.rows.push_back({line.stem + "_color", at(&ExpressionLine::color), line.color, Paint(),
                          of + "色", "線の色です。"});
}

}  // namespace orin::settings
