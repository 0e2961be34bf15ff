#include "analysis/condition_rewriting.h"

#include <optional>
#include <vector>

#include "analysis/condition.h"
#include "analysis/condition_text.h"
#include "analysis/condition_words.h"
#include "analysis/items/item_catalogue.h"
#include "analysis/note_sentence.h"
#include "analysis/splitters.h"
#include "base/text.h"

namespace orin::analysis {

namespace {

using base::Fail;
using base::Result;

/// A text with the bytes at which its words begin and end.
struct PlacedWord {
  size_t begin = 0;
  size_t end = 0;
  WordKind kind = WordKind::kItem;
};

std::vector<PlacedWord> PlaceWords(std::string_view text) {
  std::vector<size_t> bytes;  // of each character
  for (size_t i = 0; i < text.size(); ++i) {
    if (BeginsCharacter(text[i])) bytes.push_back(i);
  }
  bytes.push_back(text.size());
  LineEnd state;
  std::vector<PlacedWord> placed;
  for (const MarkedWord& word : MarkWords(text, state)) {
    placed.push_back({bytes[word.first], bytes[word.first + word.count], word.kind});
  }
  return placed;
}

/// The place of the ")" that closes the "(" at `open`; nullopt where there is none.
std::optional<size_t> CloseOf(std::string_view text, const std::vector<PlacedWord>& words,
                              size_t open) {
  for (size_t i = open + 1; i < words.size(); ++i) {
    if (words[i].kind == WordKind::kParenthesis && text[words[i].begin] == ')') return i;
  }
  return std::nullopt;
}

std::optional<int32_t> ParseOffset(std::string_view text) {
  const std::string_view digits = text.starts_with('-') ? text.substr(1) : text;
  if (digits.empty() || digits.size() > 6 ||
      digits.find_first_not_of("0123456789") != std::string_view::npos) {
    return std::nullopt;
  }
  return std::stoi(std::string(text));
}

using OrTerms = std::vector<std::string>;

/// A term by itself, within as many braces as are open where it begins; `depth` becomes how many
/// are where it ends. That gives its operators the codes that they have in the whole condition.
std::string WithItsBraces(std::string_view term, size_t& depth) {
  std::string text(depth, '{');
  text += term;
  for (const char c : term) {
    if (c == '{') ++depth;
    if (c == '}' && depth > 0) --depth;
  }
  return text.append(depth, '}');
}

/// Of a condition, without its comments.
Result<OrTerms> OrTermsOf(std::string_view text) {
  if (const auto compiled = CompileCondition(text); !compiled) {
    return Fail(NoteSentence(compiled.error()));
  }
  const ConditionText decoded = ConditionText::Decode(text);
  const auto pieces = SplitQuotes(decoded.View());
  if (!pieces) return Fail(NoteSentence(pieces.error()));
  ConditionText plain;
  for (size_t i = 0; i < pieces->size(); i += 2) plain.Append((*pieces)[i]);
  const auto terms = SplitOr(plain.View());
  if (!terms) return Fail(NoteSentence(terms.error()));
  OrTerms texts;
  size_t depth = 0;
  for (const TextView& term : *terms) {
    texts.push_back(WithItsBraces(TrimAllBlanks(term.bytes), depth));
  }
  return texts;
}

bool IsEmpty(std::string_view text) { return TrimAllBlanks(text).empty(); }

/// The condition of the Or-terms that `combine` makes of those of both; one that is empty leaves
/// the other.
Result<std::string> Joined(std::string_view a, std::string_view b,
                           Result<OrTerms> (*combine)(const OrTerms&, const OrTerms&)) {
  if (IsEmpty(a)) return std::string(b);
  if (IsEmpty(b)) return std::string(a);
  const auto left = OrTermsOf(a);
  if (!left) return base::Forward(left);
  const auto right = OrTermsOf(b);
  if (!right) return base::Forward(right);
  const auto terms = combine(*left, *right);
  if (!terms) return base::Forward(terms);
  std::string joined;
  for (const std::string& term : *terms) {
    if (!joined.empty()) joined += " Or ";
    joined += term;
  }
  const auto compiled = CompileCondition(joined);
  if (!compiled) return Fail(NoteSentence(compiled.error()));
  return joined;
}

}  // namespace

Result<std::string> ShiftedBack(std::string_view text, int32_t days) {
  const std::vector<PlacedWord> words = PlaceWords(text);
  std::string shifted;
  size_t taken = 0;
  for (size_t i = 0; i < words.size(); ++i) {
    const std::string_view name = text.substr(words[i].begin, words[i].end - words[i].begin);
    // It may be part of a name with a comment in its midst, which would silently keep its day.
    if (words[i].kind == WordKind::kUnknownItem) {
      return Fail(Quoted(name) + "が何か分からないので、日をずらせません。");
    }
    if (words[i].kind != WordKind::kItem) continue;
    if (FindItem(name).entry->family->ending != ItemFamily::Ending::kOffset) continue;
    size_t open = i + 1;
    while (words[open].kind == WordKind::kComment) ++open;
    const auto close = CloseOf(text, words, open);
    if (!close) return Fail("「" + std::string(name) + "」の括弧が閉じていません。");
    // The last argument begins behind the last comma, or behind the parenthesis.
    size_t before = open;
    for (size_t j = open + 1; j < *close; ++j) {
      if (words[j].kind == WordKind::kParenthesis) before = j;
    }
    const std::string_view written =
        text.substr(words[before].end, words[*close].begin - words[before].end);
    const auto offset = ParseOffset(TrimAllBlanks(written));
    if (!offset) {
      return Fail("「" +
                  std::string(text.substr(words[i].begin, words[*close].end - words[i].begin)) +
                  "」は何日前かが数字でないので、日をずらせません。");
    }
    shifted += text.substr(taken, words[before].end - taken);
    shifted += std::to_string(*offset - days);
    taken = words[*close].begin;
  }
  return shifted += text.substr(taken);
}

Result<std::string> JoinedWithAnd(std::string_view a, std::string_view b) {
  return Joined(a, b, [](const OrTerms& left, const OrTerms& right) -> Result<OrTerms> {
    const size_t count = left.size() * right.size();
    if (count > CompiledCondition::kMaximumOrTerms) {
      return Fail("Or で区切った部分が" + std::to_string(count) + "になり、" +
                  std::to_string(CompiledCondition::kMaximumOrTerms) +
                  "を超えるので、And でつなげません。");
    }
    OrTerms terms;
    terms.reserve(count);
    for (const std::string& first : left) {
      for (const std::string& second : right) {
        terms.push_back(first);
        terms.back() += " And ";
        terms.back() += second;
      }
    }
    return terms;
  });
}

Result<std::string> JoinedWithOr(std::string_view a, std::string_view b) {
  return Joined(a, b, [](const OrTerms& left, const OrTerms& right) -> Result<OrTerms> {
    OrTerms terms = left;
    terms.insert(terms.end(), right.begin(), right.end());
    return terms;
  });
}

}  // namespace orin::analysis
