#include "store/findings.h"

namespace orin::store {

namespace {

constexpr std::string_view kFullStop = "。";

}  // namespace

void Findings::AddOfKind(std::string_view kind, std::string sentence) {
  const auto found = group_.find(kind);
  if (found != group_.end()) {
    ++found->second.others;
    return;
  }
  group_.emplace(kind, Repeated{sentences_.size(), 0});
  Add(std::move(sentence));
}

void Findings::EndGroup() {
  for (const auto& [kind, repeated] : group_) {
    if (repeated.others == 0) continue;
    std::string& sentence = sentences_[repeated.position];
    if (sentence.ends_with(kFullStop)) sentence.resize(sentence.size() - kFullStop.size());
    sentence += "（ほか" + std::to_string(repeated.others) + "件）。";
  }
  group_.clear();
}

std::vector<std::string> Findings::Take() {
  EndGroup();
  return std::move(sentences_);
}

}  // namespace orin::store
