#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/condition.h"
#include "analysis/condition_words.h"
#include "analysis/evaluator.h"
#include "analysis/pasted_condition.h"
#include "analysis/program.h"
#include "analysis/stock_context.h"
#include "base/cp932.h"
#include "fuzz/require.h"

namespace {

using orin::analysis::CompiledCondition;
using orin::analysis::Evaluator;
using orin::analysis::Program;
using orin::analysis::StockContext;
using orin::analysis::Value;
using orin::base::Bar;
using orin::base::BarColumns;
using orin::base::Currency;
using orin::base::Date;
using orin::base::DayIndex;
using orin::base::ValueColumn;
using orin::fuzz::Require;

constexpr int32_t kDays = 60;
constexpr int32_t kCut = 37;
constexpr int32_t kFirstSerial = 43836;  // 2020/01/06, a Monday

// The running week is another one from one day to the next; a hole is among them.
constexpr std::array<int32_t, 5> kSingleDays = {60, 1, 37, 36, 23};

/// A walk with holes: single days, the days 20 to 27 (a whole week) and, of the second stock, the
/// first ones too. Some volumes are 0.
BarColumns MakeBars(int32_t days, int32_t seed) {
  BarColumns bars;
  int32_t price = 1000 + seed;
  for (int32_t day = 1; day <= days; ++day) {
    Bar bar;
    bar.date = Date::FromSerial(kFirstSerial + (day - 1) / 5 * 7 + (day - 1) % 5);
    price += (day * 37 + seed * 11) % 41 - 20;
    const bool hole = day % (9 + seed) == 4 || (day >= 20 && day <= 27) || (seed > 0 && day < 3);
    if (!hole) {
      bar.open = Currency::FromInt(price);
      bar.high = Currency::FromInt(price + day % 7);
      bar.low = Currency::FromInt(price - day % 5);
      bar.close = Currency::FromInt(price + day % 3 - day % 2);
      bar.volume = Currency::FromInt(day % 8 == 0 ? 0 : 100 * (day % 13));
    }
    bars.Append(bar);
  }
  return bars;
}

struct Market {
  explicit Market(int32_t days)
      : daily(MakeBars(days, 0)), second(MakeBars(days, 2)), context(daily, &second) {}

  const BarColumns daily;
  const BarColumns second;
  StockContext context;
};

struct Outcome {
  bool truth;
  Value value;
  bool operator==(const Outcome&) const = default;
};

Outcome OneDay(Evaluator& evaluator, StockContext& context, int32_t day) {
  return {evaluator.EvaluateCondition(context, DayIndex(day)),
          evaluator.EvaluateOperand(context, DayIndex(day))};
}

struct Range {
  int32_t first;
  std::vector<uint8_t> truths;
  ValueColumn values;

  Range(Evaluator& evaluator, StockContext& context, int32_t from, int32_t last) : first(from) {
    evaluator.EvaluateConditionRange(context, DayIndex(from), DayIndex(last), truths);
    evaluator.EvaluateOperandRange(context, DayIndex(from), DayIndex(last), values);
  }
  [[nodiscard]] Outcome At(int32_t day) const {
    const auto place = static_cast<size_t>(day - first);
    const bool valid = values.Has(place);
    return {truths[place] != 0, valid ? Value::Of(values.At(place)) : Value::Failed()};
  }
};

/// Every way of evaluating gives a day the same outcome.
void CheckDays(const Program& program) {
  // Both see the same series; the second one ends earlier.
  static Market whole(kDays);
  static Market cut(kCut);
  Evaluator evaluator(program);
  const Range all(evaluator, whole.context, 1, kDays);
  for (const int32_t day : kSingleDays) {
    Require(OneDay(evaluator, whole.context, day) == all.At(day), "a day is as in a range");
  }
  const Range part(evaluator, whole.context, 19, 44);
  for (int32_t day = 19; day <= 44; ++day) {
    Require(part.At(day) == all.At(day), "a day is the same in every range");
  }
  Evaluator fresh(program);
  Require(OneDay(fresh, cut.context, kCut) == all.At(kCut), "no day looks at later ones");
}

/// Some operands of the condition by themselves: their values tell more than a truth does.
void CheckOperands(const CompiledCondition& condition) {
  int left = 3;
  for (const auto& or_term : condition.or_terms) {
    for (const auto& and_term : or_term) {
      if (left-- == 0) return;
      CheckDays(Program::Build({{{{and_term.front()}}}, {}}));
    }
  }
}

}  // namespace

/// What the editor makes of the text.
void CheckEditing(std::string_view text) {
  orin::analysis::LineEnd state;
  size_t end = 0;
  for (const orin::analysis::MarkedWord& word : orin::analysis::MarkWords(text, state)) {
    Require(word.first >= end && word.count > 0, "words are apart from each other");
    end = word.first + word.count;
  }
  Require(end <= text.size() && state.depth >= 0, "words lie in the text");
  const std::string mended = orin::analysis::PastedCondition(text);
  Require(orin::analysis::PastedCondition(mended) == mended, "what has been mended stays");
}

/// Stacks of allocations cost an eighth of the time; ASAN_OPTIONS asks for them where a crash is
/// looked into.
extern "C" const char* __asan_default_options() { return "malloc_context_size=0"; }

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  // A field for texts holds nothing but characters.
  if (orin::base::IsValidUtf8(text)) CheckEditing(text);
  const auto condition = orin::analysis::CompileCondition(text);
  if (!condition) {
    Require(!condition.error().message.empty(), "a condition that is refused is told why");
    return 0;
  }
  const Program program = Program::Build(*condition);
  // An empty text has its notes at the place where the first character would be.
  const size_t last_place = std::max<size_t>(size, 1);
  for (const auto& note : program.Notes()) {
    Require(note.position <= last_place, "a note is in the text");
  }

  CheckDays(program);
  if (!program.IsValue()) CheckOperands(*condition);
  return 0;
}
