#pragma once

#include <deque>
#include <filesystem>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/messages.h"

namespace orin::support {

/// Answers in the user's place and keeps what was shown. A message with an OK button alone needs
/// no answer; a question without one prepared fails the test and is then cancelled (or answered
/// no), as is an answer that the question does not offer.
///   AnsweredMessages messages;
///   messages.WillAnswer(shell::Answer::kNo);
///   Job(messages);
///   EXPECT_EQ(messages.Texts(), std::vector<std::string>{"…"});
///   EXPECT_TRUE(messages.IsEveryAnswerUsed());
class AnsweredMessages final : public base::Messages {
 public:
  AnsweredMessages& WillAnswer(base::Answer answer) {
    answers_.push_back(answer);
    return *this;
  }
  /// nullopt: cancelled.
  AnsweredMessages& WillChoose(std::optional<std::filesystem::path> path) {
    paths_.push_back(std::move(path));
    return *this;
  }
  AnsweredMessages& WillType(std::optional<std::string> text) {
    texts_.push_back(std::move(text));
    return *this;
  }

  base::Answer Show(const base::Message& message) override {
    shown_.push_back(message);
    if (message.buttons == base::Buttons::kOk) return base::Answer::kOk;
    const bool can_cancel = message.buttons == base::Buttons::kYesNoCancel;
    const base::Answer closed = can_cancel ? base::Answer::kCancel : base::Answer::kNo;
    const auto answer = TakeFirst(answers_, message.text);
    if (!answer) return closed;
    const bool offered =
        *answer != base::Answer::kOk && (can_cancel || *answer != base::Answer::kCancel);
    EXPECT_TRUE(offered) << "not an answer to: " << message.text;
    return offered ? *answer : closed;
  }

  std::optional<std::filesystem::path> ChooseFile(const base::FileQuestion& question) override {
    file_questions_.push_back(question);
    return TakeFirst(paths_, question.caption).value_or(std::nullopt);
  }

  std::optional<std::string> AskText(const base::TextQuestion& question) override {
    text_questions_.push_back(question);
    return TakeFirst(texts_, question.text).value_or(std::nullopt);
  }

  [[nodiscard]] const std::vector<base::Message>& Shown() const { return shown_; }
  [[nodiscard]] const std::vector<base::FileQuestion>& FileQuestions() const {
    return file_questions_;
  }
  [[nodiscard]] const std::vector<base::TextQuestion>& TextQuestions() const {
    return text_questions_;
  }
  /// The texts of Shown().
  [[nodiscard]] std::vector<std::string> Texts() const {
    std::vector<std::string> texts;
    for (const base::Message& message : shown_) texts.push_back(message.text);
    return texts;
  }
  [[nodiscard]] bool IsEveryAnswerUsed() const {
    return answers_.empty() && paths_.empty() && texts_.empty();
  }
  /// Forgets what was shown; prepared answers stay.
  void ForgetShown() {
    shown_.clear();
    file_questions_.clear();
    text_questions_.clear();
  }

 private:
  template <typename T>
  static std::optional<T> TakeFirst(std::deque<T>& prepared, const std::string& question) {
    if (prepared.empty()) {
      ADD_FAILURE() << "unexpected question: " << question;
      return std::nullopt;
    }
    T first = std::move(prepared.front());
    prepared.pop_front();
    return first;
  }

  std::deque<base::Answer> answers_;
  std::deque<std::optional<std::filesystem::path>> paths_;
  std::deque<std::optional<std::string>> texts_;
  std::vector<base::Message> shown_;
  std::vector<base::FileQuestion> file_questions_;
  std::vector<base::TextQuestion> text_questions_;
};

}  // namespace orin::support
