#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orin::acquire {

/// Something wrong with a line of a file handed in.
struct LineProblem {
  int32_t line = 0;     // from 1; 0: the file as a whole
  std::string message;  // what is wrong, with the value; no file name, no full stop
};

/// The problems of one file. The first hundred are kept, the rest counted: a file of nothing but
/// rubbish must not fill the memory.
class LineProblems {
 public:
  static constexpr size_t kKept = 100;

  void Add(int32_t line, std::string message) {
    if (kept_.size() < kKept) {
      kept_.push_back({line, std::move(message)});
    } else {
      ++further_;
    }
  }
  [[nodiscard]] const std::vector<LineProblem>& Kept() const { return kept_; }
  [[nodiscard]] size_t Further() const { return further_; }

 private:
  std::vector<LineProblem> kept_;
  size_t further_ = 0;
};

/// A value for a message, in 「」: control characters replaced, cut to a readable length.
std::string Quoted(std::string_view value);

}  // namespace orin::acquire
