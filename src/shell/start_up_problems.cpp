#include "shell/start_up_problems.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace orin::shell {

namespace {

struct StepTitle {
  StartUpStep step;
  std::string_view title;
};

constexpr std::array kTitles = {
    StepTitle{StartUpStep::kProgramMarker, "起動の印の確認"},
    StepTitle{StartUpStep::kSettings, "設定の読み込み"},
    StepTitle{StartUpStep::kUserMarker, "起動の印の確認"},
    StepTitle{StartUpStep::kSystemFiles, "システム情報の読み込み"},
    StepTitle{StartUpStep::kTrades, "取引明細情報の読み込み"},
    StepTitle{StartUpStep::kMultipleStart, "異常状態の回復"},
    StepTitle{StartUpStep::kInitialStock, "最初の銘柄の読み込み"},
    StepTitle{StartUpStep::kRankings, "ランキング情報の読み込み"},
    StepTitle{StartUpStep::kPriceCompanions, "日中の足と信用残高の読み込み"},
    StepTitle{StartUpStep::kRamDisk, "ＲＡＭディスクへのコピー"},
    StepTitle{StartUpStep::kShutDown, "終了"},
};

}  // namespace

void LogProblem(const ProgramState& state, StartUpStep step, const std::string& sentence) {
  const auto* title = std::ranges::find(kTitles, step, &StepTitle::step);
  static_cast<void>(state.error_log.Append(static_cast<int32_t>(step), title->title, sentence));
}

void StartUpProblems::Add(StartUpStep step, const std::string& sentence) {
  if (!state_.told_problems.insert(sentence).second) return;
  LogProblem(state_, step, sentence);
  untold_.push_back(sentence);
}

void StartUpProblems::AddAll(StartUpStep step, const std::vector<std::string>& sentences) {
  for (const std::string& sentence : sentences) Add(step, sentence);
}

void StartUpProblems::Show(std::string_view consequence) {
  if (untold_.empty()) return;
  std::string text;
  if (untold_.size() > kMostLines) {
    text = std::to_string(untold_.size()) + "件のうち" + std::to_string(kMostLines) +
           "件を示します。すべては「orinerr.txt」にあります。\n";
    untold_.resize(kMostLines);
  }
  for (const std::string& sentence : untold_) text += sentence + "\n";
  text += consequence;
  if (consequence.empty()) text.pop_back();
  untold_.clear();
  messages_.Warn(std::move(text));
}

}  // namespace orin::shell
