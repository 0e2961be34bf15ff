#include "store/name_index.h"

#include <algorithm>
#include <array>
#include <tuple>
#include <unordered_map>

#include "base/record_file.h"
#include "base/utf8.h"

namespace orin::store {

namespace {

// Half-width forms of U+30A1 (ァ) to U+30F6 (ヶ), one blank-separated piece each.
constexpr std::string_view kKatakana =
    "ｧ ｱ ｨ ｲ ｩ ｳ ｪ ｴ ｫ ｵ ｶ ｶﾞ ｷ ｷﾞ ｸ ｸﾞ ｹ ｹﾞ ｺ ｺﾞ ｻ ｻﾞ ｼ ｼﾞ ｽ ｽﾞ ｾ ｾﾞ ｿ ｿﾞ ﾀ ﾀﾞ ﾁ ﾁﾞ ｯ ﾂ ﾂﾞ "
    "ﾃ ﾃﾞ ﾄ ﾄﾞ ﾅ ﾆ ﾇ ﾈ ﾉ ﾊ ﾊﾞ ﾊﾟ ﾋ ﾋﾞ ﾋﾟ ﾌ ﾌﾞ ﾌﾟ ﾍ ﾍﾞ ﾍﾟ ﾎ ﾎﾞ ﾎﾟ ﾏ ﾐ ﾑ ﾒ ﾓ ｬ ﾔ ｭ ﾕ ｮ ﾖ "
    "ﾗ ﾘ ﾙ ﾚ ﾛ ﾜ ﾜ ｲ ｴ ｦ ﾝ ｳﾞ ｶ ｹ";
constexpr char32_t kFirstKatakana = 0x30A1;
constexpr char32_t kFirstHiragana = 0x3041;
constexpr char32_t kLastHiragana = 0x3096;
constexpr char32_t kFullWidthBlank = 0x3000;
constexpr char32_t kFirstFullWidthAscii = 0xFF01;
constexpr char32_t kLastFullWidthAscii = 0xFF5E;

struct Folding {
  char32_t from;
  char32_t to;
};

constexpr std::array<Folding, 8> kPunctuation = {{{0x3001, 0xFF64},    // 、
                                                  {0x3002, 0xFF61},    // 。
                                                  {0x300C, 0xFF62},    // 「
                                                  {0x300D, 0xFF63},    // 」
                                                  {0x309B, 0xFF9E},    // ゛
                                                  {0x309C, 0xFF9F},    // ゜
                                                  {0x30FB, 0xFF65},    // ・
                                                  {0x30FC, 0xFF70}}};  // ー

// Half-width kana: small ones U+FF67 (ｧ) to U+FF6F (ｯ), large ones U+FF71 (ｱ) to U+FF9D (ﾝ).
constexpr char32_t kHalfWo = 0xFF66;
constexpr char32_t kHalfWa = 0xFF9C;
constexpr char32_t kHalfN = 0xFF9D;
constexpr char32_t kFirstSmall = 0xFF67;
constexpr std::array<char32_t, 9> kLargeOfSmall = {0xFF71, 0xFF72, 0xFF73, 0xFF74, 0xFF75,
                                                   0xFF94, 0xFF95, 0xFF96, 0xFF82};
constexpr std::array<char32_t, 3> kMarks = {0xFF70, 0xFF9E, 0xFF9F};

std::vector<std::string_view> SplitKatakana() {
  std::vector<std::string_view> pieces;
  std::string_view rest = kKatakana;
  while (!rest.empty()) {
    const size_t end = rest.find(' ');
    pieces.push_back(rest.substr(0, end));
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
  }
  return pieces;
}

void AppendFolded(std::string& reading, char32_t value) {
  static const std::vector<std::string_view> katakana = SplitKatakana();
  if (value >= kFirstHiragana && value <= kLastHiragana) {
    value += kFirstKatakana - kFirstHiragana;
  }
  if (value >= kFirstKatakana && value - kFirstKatakana < katakana.size()) {
    reading += katakana[value - kFirstKatakana];
    return;
  }
  if (value >= kFirstFullWidthAscii && value <= kLastFullWidthAscii) {
    value -= kFirstFullWidthAscii - U'!';
  }
  if (value == kFullWidthBlank) value = U' ';
  if (value >= U'a' && value <= U'z') value -= U'a' - U'A';
  const auto* folding = std::ranges::find(kPunctuation, value, &Folding::from);
  base::AppendUtf8(reading, folding == kPunctuation.end() ? value : folding->to);
}

char32_t CollationOf(char32_t kana) {
  if (kana >= kFirstSmall && kana - kFirstSmall < kLargeOfSmall.size()) {
    return kLargeOfSmall[kana - kFirstSmall];
  }
  // "ｦ" stands before "ｧ" in the code table; its place is between "ﾜ" and "ﾝ".
  if (kana == kHalfWo) return kHalfWa + 1;
  return kana == kHalfN ? kHalfN + 1 : kana;
}

struct KeyedEntry {
  std::string key;
  IndexEntry entry;
  std::string bytes;
};

bool ComesBefore(const KeyedEntry& a, const KeyedEntry& b) {
  return std::tie(a.key, a.entry.reading, a.entry.record) <
         std::tie(b.key, b.entry.reading, b.entry.record);
}

IndexEntry NewEntry(const StockRecord& stock, base::MasterRecord record,
                    std::span<const CompanyName> companies) {
  const auto company = std::ranges::lower_bound(companies, record, {}, &CompanyName::record);
  const bool is_given = company != companies.end() && company->record == record;
  const std::string& name = is_given ? company->name : stock.name;
  return IndexEntry{name, ReadingOfName(name), stock.code, record};
}

}  // namespace

std::string ReadingOfName(std::string_view name) {
  std::string reading;
  while (!name.empty()) {
    const base::CodePoint point = base::FirstCodePoint(name);
    AppendFolded(reading, point.value);
    name.remove_prefix(point.length);
  }
  return reading;
}

base::MasterRecord FindTyped(const StockMaster& master, std::string_view typed) {
  // Codes are upper case but for a few.
  for (const std::string& text : {std::string(typed), ReadingOfName(typed)}) {
    const auto code = StockCode::Parse(text);
    const base::MasterRecord found = code ? master.Find(*code) : base::MasterRecord();
    if (!found.IsNone()) return found;
  }
  return {};
}

std::string SyllabaryKey(std::string_view reading) {
  std::string key;
  while (!reading.empty()) {
    const base::CodePoint point = base::FirstCodePoint(reading);
    const bool is_mark = std::ranges::find(kMarks, point.value) != kMarks.end();
    if (!is_mark) base::AppendUtf8(key, CollationOf(point.value));
    reading.remove_prefix(point.length);
  }
  return key;
}

base::Result<std::string> BuildNameIndex(const StockMaster& master,
                                         std::span<const IndexEntry> known,
                                         std::span<const CompanyName> companies) {
  std::unordered_map<StockCode, const IndexEntry*, StockCodeHash> known_by_code;
  for (const IndexEntry& entry : known) known_by_code.try_emplace(entry.code, &entry);
  std::vector<KeyedEntry> entries;
  base::MasterRecord record(2);
  for (const StockRecord& stock : master.Stocks()) {
    const auto found = known_by_code.find(stock.code);
    IndexEntry entry =
        found == known_by_code.end() ? NewEntry(stock, record, companies) : *found->second;
    entry.record = record;
    auto encoded = EncodeIndexEntry(entry);
    if (!encoded) return base::Forward(encoded);
    // The order is that of the readings as stored, which are cut.
    entry = DecodeIndexEntry(*encoded);
    std::string key = SyllabaryKey(entry.reading);
    entries.push_back(KeyedEntry{std::move(key), std::move(entry), std::move(*encoded)});
    record = base::MasterRecord(record.Value() + 1);
  }
  std::ranges::sort(entries, ComesBefore);
  std::string bytes;
  bytes.reserve(entries.size() * kIndexRecordLength);
  for (const KeyedEntry& keyed : entries) bytes += keyed.bytes;
  return bytes;
}

std::vector<IndexEntry> DecodeNameIndex(std::string_view bytes) {
  const base::RecordView records(bytes, kIndexRecordLength);
  std::vector<IndexEntry> entries;
  for (int32_t number = 1; number <= records.Count(); ++number) {
    entries.push_back(DecodeIndexEntry(*records.Record(number)));
  }
  return entries;
}

}  // namespace orin::store
