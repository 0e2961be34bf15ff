#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "shell/start_up.h"
#include "support/answered_messages.h"

namespace orin::support {

/// A start without windows: what it showed, and the user's answers. Being asked for paths or a
/// market without an answer prepared fails the test and counts as given up.
class AnsweredScreen final : public shell::StartUpScreen {
 public:
  using Edit = std::function<bool(settings::Settings&)>;
  using Offer = std::function<bool(const shell::ProgramState&)>;

  AnsweredScreen& WillEditPaths(Edit edit) {
    edits_.push_back(std::move(edit));
    return *this;
  }
  AnsweredScreen& WillBeOffered(Offer offer) {
    offers_.push_back(std::move(offer));
    return *this;
  }
  /// The user stops a long job at its n-th report, from 1.
  void StopAt(int64_t report) { stop_at_ = report; }

  void ShowStatus(std::string_view status) override { statuses_.emplace_back(status); }
  AnsweredMessages& Questions() override { return messages_; }

  bool EditPaths(settings::Settings& settings) override {
    if (edits_.empty()) {
      ADD_FAILURE() << "unexpected call of EditPaths";
      return false;
    }
    const Edit edit = std::move(edits_.front());
    edits_.pop_front();
    return edit(settings);
  }

  bool OfferMarket(const shell::ProgramState& state) override {
    if (offers_.empty()) {
      ADD_FAILURE() << "unexpected call of OfferMarket";
      return false;
    }
    const Offer offer = std::move(offers_.front());
    offers_.pop_front();
    return offer(state);
  }

  [[nodiscard]] bool Report(std::string_view /*stage*/, int64_t done, int64_t total) override {
    EXPECT_LE(done, total);
    ++reports_;
    return stop_at_ == 0 || reports_ < stop_at_;
  }

  [[nodiscard]] const std::vector<std::string>& Statuses() const { return statuses_; }
  [[nodiscard]] int64_t Reports() const { return reports_; }
  [[nodiscard]] std::vector<std::string> Texts() const { return messages_.Texts(); }
  [[nodiscard]] bool IsEveryAnswerUsed() const {
    return messages_.IsEveryAnswerUsed() && edits_.empty() && offers_.empty();
  }
  void ForgetShown() {
    statuses_.clear();
    messages_.ForgetShown();
  }

 private:
  AnsweredMessages messages_;
  std::deque<Edit> edits_;
  std::deque<Offer> offers_;
  std::vector<std::string> statuses_;
  int64_t reports_ = 0;
  int64_t stop_at_ = 0;
};

}  // namespace orin::support
