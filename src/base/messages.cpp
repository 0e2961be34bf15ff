#include "base/messages.h"

#include <utility>

namespace orin::base {

std::string StageCaption(const std::string& stage) {
  return std::string(kProductName) + "（" + stage + "）";
}

void Messages::Inform(std::string text, std::string caption) {
  Show({.caption = std::move(caption), .text = std::move(text)});
}

void Messages::Warn(std::string text, std::string caption) {
  Show({.caption = std::move(caption), .text = std::move(text), .icon = Icon::kWarning});
}

bool Messages::AskYesNo(std::string text, std::string caption, Answer default_answer) {
  const Answer answer = Show({.caption = std::move(caption),
                              .text = std::move(text),
                              .icon = Icon::kQuestion,
                              .buttons = Buttons::kYesNo,
                              .default_answer = default_answer});
  return answer == Answer::kYes;
}

}  // namespace orin::base
