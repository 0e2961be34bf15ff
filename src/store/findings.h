#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace orin::store {

/// The sentences of a check, in order.
class Findings {
 public:
  /// `sentence` ends with "。".
  void Add(std::string sentence) { sentences_.push_back(std::move(sentence)); }
  /// Of several findings of one kind in a group the first is told, the others are counted in it.
  void AddOfKind(std::string_view kind, std::string sentence);
  void EndGroup();
  std::vector<std::string> Take();

 private:
  struct Repeated {
    size_t position;  // in sentences_
    int64_t others = 0;
  };
  std::vector<std::string> sentences_;
  std::map<std::string, Repeated, std::less<>> group_;
};

}  // namespace orin::store
