#include "analysis/condition_notes.h"

#include <utility>

#include "analysis/operator_codes.h"
#include "base/text.h"

namespace orin::analysis {

namespace {

struct Keyword {
  const KeywordForms& forms;
  std::string_view shown;
};

constexpr Keyword kKeywords[] = {
    {kAndForms, "and、AND、And"},
    {kOrForms, "or、OR、Or"},
    {kNotForms, "not、NOT、Not"},
    {kModForms, "mod、MOD、Mod"},
};

std::string Quoted(std::string_view text) { return "「" + std::string(text) + "」"; }

const Keyword* KeywordOfAnyCase(std::string_view text) {
  for (const Keyword& keyword : kKeywords) {
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

}  // namespace

void AddNote(std::vector<Note>& notes, size_t position, std::string message) {
  if (notes.size() < kMaximumNotes) notes.push_back({position, std::move(message)});
}

void NoteDoubtfulWords(TextView text, std::vector<Note>& notes) {
  size_t parentheses = 0;
  bool letter_before = false;  // a run of code letters is noted once
  for (size_t i = 0; i < text.bytes.size();) {
    const std::string_view rest = text.bytes.substr(i);
    if (const Keyword* keyword = KeywordOfAnyCase(rest)) {
      const std::string_view word = rest.substr(0, keyword->forms[0].size());
      std::string doubt = DoubtAbout(word, *keyword);
      if (!doubt.empty()) AddNote(notes, text.positions[i], std::move(doubt));
      letter_before = false;
      i += word.size();
      continue;
    }
    const bool letter = parentheses == 0 && IsCodeLetter(rest);
    if (letter && !letter_before) AddNote(notes, text.positions[i], DoubtAboutLetter(rest));
    letter_before = letter;
    if (rest[0] == '(') ++parentheses;
    if (rest[0] == ')' && parentheses > 0) --parentheses;
    ++i;
  }
}

}  // namespace orin::analysis
