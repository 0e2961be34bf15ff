#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/progress.h"

namespace orin::support {

/// Answers "stop" to the n-th report.
class StopAt final : public base::Progress {
 public:
  explicit StopAt(int reports) : left_(reports) {}
  bool Report(std::string_view stage, int64_t, int64_t) override {
    if (stages.empty() || stages.back() != stage) stages.emplace_back(stage);
    return --left_ > 0;
  }
  std::vector<std::string> stages;

 private:
  int left_;
};

}  // namespace orin::support
