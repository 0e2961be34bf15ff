#include "store/splits.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>
#include <tuple>

#include "base/cp932.h"
#include "base/text.h"
#include "store/file_names.h"

namespace orin::store {

namespace {

constexpr std::string_view kTitle = "T:株式分割銘柄,株式減資銘柄";
constexpr std::string_view kDate = "D:2100/01/01";
constexpr std::string_view kColumns = "銘柄コード,銘柄名,分割倍率,権利付最終日";
constexpr std::string_view kLineEnd = "\r\n";
constexpr size_t kFewestFields = 4;

/// A line that is no event. The text of a title or date line is the user's, but a new list has
/// its own.
bool IsHeader(std::string_view line) {
  return line.empty() || line.starts_with("T:") || line.starts_with("D:") || line == kColumns;
}

/// An entry that is not used: its code is the sentinel, whole or as a field of eight holds it.
bool IsEmptied(std::string_view line) { return line.starts_with(kEmptiedCode); }

/// The text between the first field and the last two: a name may hold commas.
std::string JoinName(const std::vector<std::string_view>& fields) {
  std::string name(fields[1]);
  for (size_t i = 2; i + 2 < fields.size(); ++i) name += "," + std::string(fields[i]);
  return name;
}

base::Result<SplitEvent> ParseEvent(std::string_view line) {
  const auto fields = base::SplitByDelimiter(line, ",");
  if (!fields) return base::Forward(fields);
  if (fields->size() < kFewestFields) return base::Fail("項目が4つありません。");
  const auto code = StockCode::Parse(base::TrimBlanks(fields->front()));
  if (!code) return base::Forward(code);
  const std::string_view ratio_text = base::TrimBlanks((*fields)[fields->size() - 2]);
  const auto ratio = ParseSplitRatio(ratio_text);
  if (!ratio) return base::Forward(ratio);
  const std::string_view day_text = base::TrimBlanks(fields->back());
  const auto day = base::Date::Parse(day_text);
  if (!day) return base::Fail("権利付最終日「" + std::string(day_text) + "」が正しくありません。");
  return SplitEvent{*code, JoinName(*fields), *ratio, std::string(ratio_text), *day};
}

std::optional<base::Bar> Adjust(const base::Bar& bar, double ratio) {
  const auto divided = [ratio](base::Currency price) {
    return base::Currency::FromDouble(price.ToDouble() / ratio);
  };
  const auto open = divided(bar.open);
  const auto high = divided(bar.high);
  const auto low = divided(bar.low);
  const auto close = divided(bar.close);
  const auto volume = base::Currency::FromDouble(bar.volume.ToDouble() * ratio);
  if (!open || !high || !low || !close || !volume) return std::nullopt;
  return base::Bar{bar.date, *open, *high, *low, *close, *volume};
}

std::string WithoutLineBreaks(std::string text) {
  std::erase_if(text, [](char c) { return c == '\r' || c == '\n'; });
  return text;
}

std::string RatioText(const SplitEvent& event) {
  if (!event.ratio_text.empty()) return WithoutLineBreaks(event.ratio_text);
  std::array<char, 400> text{};  // the longest double without an exponent has 309 digits
  const auto result =
      std::to_chars(text.data(), text.data() + text.size(), event.ratio, std::chars_format::fixed);
  return std::string(text.data(), result.ptr);
}

}  // namespace

base::Result<double> ParseSplitRatio(std::string_view text) {
  text = base::TrimBlanks(text);
  double ratio = 0;
  const char* end = text.data() + text.size();
  // Independent of the locale, and strict about what follows the number.
  const auto [rest, failure] = std::from_chars(text.data(), end, ratio, std::chars_format::fixed);
  const bool is_ratio = failure == std::errc{} && rest == end && std::isfinite(ratio) && ratio > 0;
  if (is_ratio) return ratio;
  return base::Fail("分割倍率「" + std::string(text) +
                    "」が正しくありません（0より大きい十進数に限ります）。");
}

SplitList::SplitList(std::vector<SplitEvent> events) : events_(std::move(events)) {
  // The file keeps its own order; looking up needs another.
  sorted_ = events_;
  std::ranges::stable_sort(sorted_, {}, [](const SplitEvent& event) {
    return std::make_tuple(event.code, event.last_day_with_rights);
  });
  for (size_t i = 0; i < sorted_.size(); ++i) {
    Range& range = by_code_.try_emplace(sorted_[i].code, Range{i, 0}).first->second;
    ++range.count;
  }
}

SplitList SplitList::Parse(std::string_view bytes, const std::string& file_name,
                           std::vector<std::string>& problems) {
  // Users edit the list with editors of either encoding.
  const base::DecodedText decoded = base::DecodeText(bytes);
  const bool is_utf8 = decoded.encoding == base::TextEncoding::kUtf8;
  std::vector<SplitEvent> events;
  std::vector<std::string> unread;
  std::string unwritable;
  size_t number = 0;
  for (const std::string_view stored : base::SplitLines(is_utf8 ? decoded.text : bytes)) {
    ++number;
    const std::string line = is_utf8 ? std::string(stored) : base::DecodeCp932(stored);
    auto event = ParseEvent(line);
    if (event) {
      events.push_back(std::move(*event));
      continue;
    }
    const std::string_view text = base::TrimBlanks(line);
    if (IsHeader(text)) continue;
    const std::string where = "「" + file_name + "」の" + std::to_string(number) + "行目：";
    auto kept = is_utf8 ? base::EncodeCp932(stored) : std::string(stored);
    if (kept) {
      unread.push_back(std::move(*kept));
    } else if (unwritable.empty()) {
      unwritable = where + kept.error().message;
    }
    if (IsEmptied(text)) continue;
    problems.push_back(where + event.error().message);
  }
  SplitList list(std::move(events));
  list.unread_lines_ = std::move(unread);
  list.unread_problem_ = std::move(unwritable);
  return list;
}

std::span<const SplitEvent> SplitList::EventsOf(const StockCode& code) const {
  const auto found = by_code_.find(code);
  if (found == by_code_.end()) return {};
  return std::span(sorted_).subspan(found->second.begin, found->second.count);
}

base::Result<std::string> SplitList::Serialize() const {
  if (!unread_problem_.empty()) return base::Fail(unread_problem_);
  std::string header;
  for (const std::string_view line : {kTitle, kDate, kColumns}) {
    header += std::string(line) + std::string(kLineEnd);
  }
  auto bytes = base::EncodeCp932(header);
  if (!bytes) return bytes;
  for (const SplitEvent& event : events_) {
    const std::string code(event.code.Text());
    const auto line =
        base::EncodeCp932(code + "," + WithoutLineBreaks(event.name) + "," + RatioText(event) +
                          "," + event.last_day_with_rights.ToText() + std::string(kLineEnd));
    if (!line) {
      return base::Fail("「" + FileName({FileKind::kSplits, 0}) + "」に書く銘柄" + code +
                        "の株式分割：" + line.error().message);
    }
    *bytes += *line;
  }
  for (const std::string& line : unread_lines_) *bytes += line + std::string(kLineEnd);
  return bytes;
}

void AdjustForSplit(const SplitEvent& event, base::BarColumns& bars) {
  const auto end = std::ranges::upper_bound(bars.dates, event.last_day_with_rights);
  const auto count = static_cast<size_t>(end - bars.dates.begin());
  for (size_t i = 0; i < count; ++i) {
    const base::Bar bar = bars.At(i);
    if (!bar.HasData()) continue;
    base::Bar without_data;
    without_data.date = bar.date;
    bars.Put(i, Adjust(bar, event.ratio).value_or(without_data));
  }
}

}  // namespace orin::store
