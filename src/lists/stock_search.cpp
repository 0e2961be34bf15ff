#include "lists/stock_search.h"

#include <algorithm>
#include <array>
#include <optional>

#include "base/text.h"
#include "store/name_index.h"

namespace orin::lists {

namespace {

/// Longer texts than any name find nothing and need not be compared.
constexpr size_t kLongestText = 300;

std::string Folded(std::string_view text) {
  return store::SyllabaryKey(store::ReadingOfName(text));
}

std::vector<std::string> Words(std::string_view typed) {
  std::vector<std::string> words(1);
  for (const char c : Folded(typed)) {
    if (c != ' ' && c != '\t') {
      words.back() += c;
    } else if (!words.back().empty()) {
      words.emplace_back();
    }
  }
  if (words.back().empty()) words.pop_back();
  // A word typed twice finds no more than once.
  std::ranges::sort(words);
  words.erase(std::unique(words.begin(), words.end()), words.end());
  return words;
}

// How well a word fits; smaller is better.
constexpr int kWhole = 0;
constexpr int kCodeBegins = 1;
constexpr int kNameBegins = 2;
constexpr int kWordBegins = 3;
constexpr int kContained = 4;

std::optional<int> FitOfText(const std::string& text, const std::string& word) {
  std::optional<int> fit;
  for (size_t at = text.find(word); at != std::string::npos; at = text.find(word, at + 1)) {
    if (at == 0) return kNameBegins;
    if (text[at - 1] == ' ') return kWordBegins;
    fit = kContained;
  }
  return fit;
}

std::optional<int> FitOfCode(const std::string& code, const std::string& word) {
  if (code == word) return kWhole;
  if (code.starts_with(word)) return kCodeBegins;
  // The mark of an index is rarely typed.
  if (code.starts_with('^') && code.substr(1).starts_with(word)) return kCodeBegins;
  if (code.find(word) != std::string::npos) return kContained;
  return std::nullopt;
}

std::optional<int> Better(std::optional<int> a, std::optional<int> b) {
  if (!a || !b) return a ? a : b;
  return std::min(*a, *b);
}

}  // namespace

StockSearch::StockSearch(const store::StockMaster& master,
                         std::span<const store::IndexEntry> index) {
  const auto stocks = master.Stocks();
  for (size_t i = 0; i < stocks.size(); ++i) {
    if (stocks[i].code == store::StockCode()) continue;
    targets_.push_back({base::MasterRecord(static_cast<int32_t>(i) + 2),
                        Folded(stocks[i].code.Text()),
                        Folded(stocks[i].name),
                        {},
                        {}});
  }
  for (const store::IndexEntry& entry : index) {
    const auto target = std::ranges::lower_bound(targets_, entry.record, {}, &Target::record);
    if (target == targets_.end() || target->record != entry.record) continue;
    if (master.Stock(entry.record).code != entry.code) continue;
    // Most are the name again, which need not be searched twice.
    target->company = Folded(entry.company);
    target->reading = Folded(entry.reading);
    if (target->reading == target->company) target->reading.clear();
    if (target->company == target->name) target->company.clear();
  }
}

std::vector<base::MasterRecord> StockSearch::Find(std::string_view typed, size_t most) const {
  if (typed.size() > kLongestText) return {};
  const std::vector<std::string> words = Words(typed);
  if (words.empty()) return {};
  std::array<std::vector<base::MasterRecord>, kContained + 1> by_fit;
  for (const Target& target : targets_) {
    int worst = kWhole;
    bool is_match = true;
    for (const std::string& word : words) {
      std::optional<int> fit = FitOfCode(target.code, word);
      for (const std::string* text : {&target.name, &target.company, &target.reading}) {
        fit = Better(fit, FitOfText(*text, word));
      }
      is_match = fit.has_value();
      if (!is_match) break;
      worst = std::max(worst, *fit);
    }
    if (is_match) by_fit[static_cast<size_t>(worst)].push_back(target.record);
  }
  std::vector<base::MasterRecord> found;
  for (const auto& records : by_fit) {
    for (const base::MasterRecord record : records) {
      if (found.size() == most) return found;
      found.push_back(record);
    }
  }
  return found;
}

}  // namespace orin::lists
