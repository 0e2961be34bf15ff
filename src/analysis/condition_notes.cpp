#include "analysis/condition_notes.h"

#include <algorithm>
#include <utility>

#include "analysis/items/item_catalogue.h"
#include "analysis/operator_codes.h"
#include "base/text.h"

namespace orin::analysis {

namespace {

struct Keyword {
  const KeywordForms& forms;
  std::string_view shown;
};

constexpr Keyword kJoiningWords[] = {
    {kAndForms, "and、AND、And"},
    {kOrForms, "or、OR、Or"},
    {kNotForms, "not、NOT、Not"},
    {kModForms, "mod、MOD、Mod"},
};

const Keyword* KeywordOfAnyCase(std::string_view text) {
  for (const Keyword& keyword : kJoiningWords) {
    const std::string_view form = keyword.forms[0];
    if (base::EqualsIgnoreCase(text.substr(0, form.size()), form)) return &keyword;
  }
  return nullptr;
}

// Empty where the writer means what the system reads.
std::string DoubtAbout(std::string_view word, const Keyword& keyword) {
  if (StartsWithKeyword(word, kNotForms)) {
    return Quoted(word) + "は株価分析では使えないので、この条件は成り立ちません。";
  }
  if (StartsWithKeyword(word, keyword.forms)) return "";
  if (OperatorAt(word)) {
    return Quoted(word) + "はシステム内部の記号です。" + std::string(keyword.shown) +
           "のいずれかで書いてください。";
  }
  return Quoted(word) + "は大文字と小文字の組み合わせが違います。" + std::string(keyword.shown) +
         "のいずれかで書いてください。";
}

bool IsCodeLetter(std::string_view text) {
  if (text[0] < 'A' || text[0] > 'Z') return false;
  const auto code = OperatorAt(text);
  return code && code->length == 1;
}

std::string DoubtAboutLetter(std::string_view text) {
  const auto kind = static_cast<size_t>(OperatorAt(text)->kind);
  return Quoted(text.substr(0, 1)) + "はシステム内部で演算子" +
         Quoted(kOperatorRows[kind].codes[0]) + "を表す文字なので、演算子として計算されます。";
}

// In bytes; keeps the search for a name short wherever the text has no end of one.
constexpr size_t kLongestName = 100;

// Whether the name of a call holds code letters, and what stands behind the last of them is no
// item either: then no reading of the letters gives the call a value.
bool ReadsAsOperators(std::string_view name) {
  if (name.empty() || (name[0] >= '0' && name[0] <= '9')) return false;
  size_t tail = 0;
  for (size_t i = 0; i < name.size(); ++i) {
    if (IsCodeLetter(name.substr(i))) tail = i + 1;
  }
  return tail > 0 && FindItem(name.substr(tail)).entry == nullptr;
}

// What cannot be part of an item name; the operators in their typed form come with it.
constexpr std::string_view kNameEnds = " \t{}()<>=,?^*/\\+-\"";

// The length of an item call at the start of `text`, without regard to what the name means; 0
// where no name directly before a "(" stands there.
size_t LengthOfCall(std::string_view text) {
  const size_t open = text.substr(0, kLongestName + 1).find_first_of(kNameEnds);
  if (open == 0 || open == text.npos || text[open] != '(') return 0;
  const size_t close = text.find_first_of(")<>=", open);
  return (close != text.npos && text[close] == ')' ? close : open) + 1;
}

// Walks the text word by word.
class WordReader {
 public:
  WordReader(TextView text, std::vector<Note>& notes, std::vector<Stretch>& explained)
      : text_(text), notes_(notes), explained_(explained) {}

  void Run() {
    while (at_ < text_.bytes.size()) at_ += Read(text_.bytes.substr(at_));
  }

 private:
  // Gives the number of bytes dealt with.
  size_t Read(std::string_view rest) {
    if (const size_t length = ReadHalfWidthItem(rest)) return length;
    if (const Keyword* keyword = KeywordOfAnyCase(rest)) {
      const std::string_view word = rest.substr(0, keyword->forms[0].size());
      std::string doubt = DoubtAbout(word, *keyword);
      if (!doubt.empty()) AddNote(notes_, text_.positions[at_], std::move(doubt));
      letter_before_ = false;
      name_begins_ = true;
      return word.size();
    }
    const bool letter = parentheses_ == 0 && IsCodeLetter(rest);
    if (letter && !letter_before_) AddNote(notes_, text_.positions[at_], DoubtAboutLetter(rest));
    letter_before_ = letter;
    if (rest[0] == '(') ++parentheses_;
    if (rest[0] == ')' && parentheses_ > 0) --parentheses_;
    const bool wide_blank = rest.starts_with(kFullWidthBlank);
    name_begins_ = wide_blank || kNameEnds.find(rest[0]) != kNameEnds.npos;
    return wide_blank ? kFullWidthBlank.size() : 1;
  }

  // Its letters are operators to the system, so that every part of the call would be noted.
  size_t ReadHalfWidthItem(std::string_view rest) {
    if (!name_begins_ || parentheses_ > 0 || notes_.size() >= kMaximumNotes) return 0;
    const size_t length = LengthOfCall(rest);
    // Asked within the call alone: a search of the rest at every word would take quadratic time.
    const std::string_view call = rest.substr(0, length);
    const std::string_view name = call.substr(0, call.find('('));
    if (!ReadsAsOperators(name)) return 0;
    AddNote(notes_, text_.positions[at_], UnknownItem(name));
    explained_.push_back({text_.positions[at_], text_.positions[at_ + length - 1]});
    letter_before_ = false;
    name_begins_ = false;
    return length;
  }

  TextView text_;
  std::vector<Note>& notes_;
  std::vector<Stretch>& explained_;
  size_t at_ = 0;
  size_t parentheses_ = 0;
  bool letter_before_ = false;  // a run of code letters is noted once
  bool name_begins_ = true;     // here, if one does
};

}  // namespace

void AddNote(std::vector<Note>& notes, size_t position, std::string message) {
  if (notes.size() >= kMaximumNotes) return;
  Note note = {position, std::move(message)};
  if (std::find(notes.begin(), notes.end(), note) == notes.end()) notes.push_back(std::move(note));
}

void NoteDoubtfulWords(TextView text, std::vector<Note>& notes, std::vector<Stretch>& explained) {
  WordReader(text, notes, explained).Run();
}

}  // namespace orin::analysis
