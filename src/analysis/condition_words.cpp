#include "analysis/condition_words.h"

#include <algorithm>

#include "analysis/condition_text.h"
#include "analysis/items/day_keywords.h"
#include "analysis/items/item_catalogue.h"
#include "analysis/operator_codes.h"

namespace orin::analysis {

namespace {

constexpr std::string_view kParentheses = "(),";
constexpr std::string_view kArithmetic = "?^*/\\+-";

bool IsBlankAt(std::string_view text) {
  return text[0] == ' ' || text[0] == '\t' || text.starts_with(kFullWidthBlank);
}

bool IsNumber(std::string_view word) {
  return word.find_first_not_of("0123456789.") == std::string_view::npos &&
         word.find_first_of("0123456789") != std::string_view::npos;
}

/// Reads a line from left to right.
class LineReader {
 public:
  LineReader(std::string_view line, LineEnd& state) : line_(line), state_(state) {}

  std::vector<MarkedWord> Read() {
    while (at_ < line_.size()) {
      const std::string_view rest = line_.substr(at_);
      if (state_.in_comment || rest[0] == '"') {
        ReadComment();
      } else if (IsBlankAt(rest)) {
        Skip(rest[0] == ' ' || rest[0] == '\t' ? 1 : kFullWidthBlank.size());
      } else if (!ReadSign(rest)) {
        ReadWord();
      }
    }
    return std::move(words_);
  }

 private:
  /// The bytes up to at_ + length become a word.
  void Add(size_t length, WordKind kind, int32_t depth = 0) {
    const std::string_view text = line_.substr(at_, length);
    const auto count = static_cast<size_t>(std::ranges::count_if(text, BeginsCharacter));
    words_.push_back({character_, count, kind, depth});
    character_ += count;
    at_ += length;
    before_ = text;
  }

  void Skip(size_t length) {
    at_ += length;
    ++character_;
  }

  void ReadComment() {
    const size_t begin = state_.in_comment ? at_ : at_ + 1;
    const size_t quote = line_.find('"', begin);
    state_.in_comment = quote == std::string_view::npos;
    const size_t end = state_.in_comment ? line_.size() : quote + 1;
    const std::string_view before = before_;
    Add(end - at_, WordKind::kComment);
    before_ = before;
  }

  bool ReadSign(std::string_view rest) {
    if (rest[0] == '{') {
      Add(1, WordKind::kBrace, ++state_.depth);
    } else if (rest[0] == '}') {
      Add(1, WordKind::kBrace, state_.depth);
      state_.depth = std::max(0, state_.depth - 1);
    } else if (kParentheses.find(rest[0]) != std::string_view::npos) {
      Add(1, WordKind::kParenthesis);
    } else if (const auto relation = RelationAt(rest)) {
      Add(relation->length, WordKind::kRelation);
    } else if (rest[0] == '-' && (before_ == "(" || before_ == ",")) {
      const size_t digits = rest.find_first_not_of("0123456789.", 1);
      Add(std::min(digits, rest.size()), WordKind::kNumber);
    } else if (kArithmetic.find(rest[0]) != std::string_view::npos) {
      const bool is_of_keyword = rest[0] == '-' && EndsWithDayKeyword(line_.substr(0, at_));
      Add(1, WordKind::kArithmetic, is_of_keyword ? 0 : CodedDepth());
    } else if (StartsWithKeyword(rest, kModForms)) {
      Add(kModForms[0].size(), WordKind::kArithmetic, CodedDepth());
    } else if (StartsWithKeyword(rest, kAndForms)) {
      Add(kAndForms[0].size(), WordKind::kLogic);
    } else if (StartsWithKeyword(rest, kOrForms)) {
      Add(kOrForms[0].size(), WordKind::kLogic);
    } else {
      return false;
    }
    return true;
  }

  [[nodiscard]] int32_t CodedDepth() const {
    return state_.depth <= static_cast<int32_t>(kDeepestCode) ? state_.depth : 0;
  }

  void ReadWord() {
    size_t end = at_;
    while (end < line_.size() && !EndsWord(line_.substr(end))) ++end;
    const std::string_view word = line_.substr(at_, end - at_);
    const size_t next = BehindComments(end);
    Add(word.size(), KindOf(word, next < line_.size() && line_[next] == '('));
  }

  /// What the compiler, which drops comments first, reads next.
  [[nodiscard]] size_t BehindComments(size_t at) const {
    while (at < line_.size() && line_[at] == '"') {
      const size_t quote = line_.find('"', at + 1);
      if (quote == std::string_view::npos) return line_.size();
      at = quote + 1;
    }
    return at;
  }

  static bool EndsWord(std::string_view rest) {
    constexpr std::string_view kSigns = "{}()<>=,?^*/\\+-\" \t";
    return kSigns.find(rest[0]) != std::string_view::npos || rest.starts_with(kFullWidthBlank) ||
           StartsWithKeyword(rest, kAndForms) || StartsWithKeyword(rest, kOrForms) ||
           StartsWithKeyword(rest, kModForms);
  }

  static WordKind KindOf(std::string_view word, bool is_call) {
    if (IsNumber(word)) return WordKind::kNumber;
    if (FindDayKeyword(word)) return WordKind::kDayKeyword;
    const ItemEntry* entry = FindItem(word).entry;
    if (entry == nullptr) return WordKind::kUnknownItem;
    if (is_call) return WordKind::kItem;
    return entry->family->ending == ItemFamily::Ending::kOptionalZero ? WordKind::kDayKeyword
                                                                      : WordKind::kUnknownItem;
  }

  std::string_view line_;
  LineEnd& state_;
  std::vector<MarkedWord> words_;
  std::string_view before_;  // the word before, comments apart
  size_t at_ = 0;            // in bytes
  size_t character_ = 0;     // the same in characters
};

}  // namespace

std::vector<MarkedWord> MarkWords(std::string_view line, LineEnd& state) {
  return LineReader(line, state).Read();
}

}  // namespace orin::analysis
