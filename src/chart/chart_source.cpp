#include "chart/chart_source.h"

#include <algorithm>

#include "analysis/evaluator.h"
#include "analysis/note_sentence.h"
#include "analysis/program.h"

namespace orin::chart {

using base::BarsView;
using base::DayIndex;

namespace {

/// Of a condition 1 and 0.
base::ValueColumn TruthColumn(const std::vector<uint8_t>& truths) {
  base::ValueColumn values;
  values.Reset(truths.size());
  for (size_t i = 0; i < truths.size(); ++i) {
    values.Set(i, base::Currency::FromInt(truths[i] != 0 ? 1 : 0));
  }
  return values;
}

}  // namespace

ChartSource::ChartSource(const store::StockStore& store, const store::StockRecord& stock,
                         const store::StockRecord* second, bool adjust, store::BarPeriod period,
                         DayIndex last)
    : store_(store),
      stock_(stock),
      second_(second),
      adjust_(adjust),
      period_(period),
      last_(last) {}

BarsView ChartSource::Bars(const store::StockRecord& stock, store::BarPeriod period) {
  const auto [place, is_new] = bars_.try_emplace({stock.slot.Value(), period});
  if (is_new) place->second = store::LoadPeriod(store_, stock, period, adjust_, last_);
  return BarsView(place->second);
}

base::BarColumns ChartSource::BarsUntil(const store::StockRecord& stock, store::BarPeriod period,
                                        base::Date day) const {
  return store::LoadPeriod(store_, stock, period, adjust_, store_.Days().Find(day));
}

const store::StockRecord* ChartSource::Find(std::string_view code) const {
  const auto parsed = store::StockCode::Parse(code);
  if (!parsed) return nullptr;
  const base::MasterRecord record = store_.Master().Find(*parsed);
  return record.IsNone() ? nullptr : &store_.Master().Stock(record);
}

base::Result<base::ValueColumn> ChartSource::EvaluateDays(const std::string& expression) const {
  const auto program = analysis::BuildProgram(expression);
  if (!program) return base::Fail(analysis::NoteSentence(program.error()));
  // What cannot be computed on any day is told, too; its line has no value then.
  if (!program->Notes().empty()) {
    return base::Fail(analysis::NoteSentence(program->Notes().front()));
  }
  base::ValueColumn values;
  if (last_.IsNone()) return values;
  const auto beside = analysis::Companions::Load(store_, program->Needs());
  if (!beside) return base::Forward(beside);
  analysis::StockContext context(store_, program->Needs(), DayIndex(1), last_, second_, adjust_);
  context.SetBeside(&*beside);
  context.Load(stock_);
  analysis::Evaluator evaluator(*program);
  if (program->IsValue()) {
    evaluator.EvaluateOperandRange(context, DayIndex(1), last_, values);
    return values;
  }
  std::vector<uint8_t> truths;
  evaluator.EvaluateConditionRange(context, DayIndex(1), last_, truths);
  return TruthColumn(truths);
}

base::Result<base::ValueColumn> ChartSource::Evaluate(const std::string& expression) {
  auto days = EvaluateDays(expression);
  if (!days || period_ == store::BarPeriod::kDay) return days;
  const BarsView bars = Bars();
  base::ValueColumn values;
  values.Reset(static_cast<size_t>(std::max(0, bars.Count())));
  for (int32_t t = bars.First(); t <= bars.Count(); ++t) {
    const auto day = static_cast<size_t>(store_.Days().Find(bars.DateOf(t)).Value() - 1);
    if (days->Has(day)) values.Set(static_cast<size_t>(t - 1), days->At(day));
  }
  return values;
}

std::vector<store::CreditBalance> ChartSource::CreditBalances() const {
  std::vector<store::CreditBalance> balances;
  if (period_ != store::BarPeriod::kDay || last_.IsNone()) return balances;
  store_.LoadCreditBalances(stock_.slot, DayIndex(1), last_, balances);
  const bool is_any = std::ranges::any_of(
      balances, [](const store::CreditBalance& day) { return day != store::CreditBalance(); });
  if (!is_any) balances.clear();
  return balances;
}

base::Result<store::TrendLines> ChartSource::TrendLines() const {
  // The user draws them into the store itself, also while the chart shows a copy of it.
  return store::LoadTrendLines(store_.OriginalLocation(), stock_.slot);
}

base::Result<store::IntradayDay> ChartSource::Intraday(base::Date last) const {
  return store_.Intraday().Newest(stock_.slot, last);
}

int32_t ChartSource::BarOf(base::Date date) {
  const BarsView bars = Bars();
  int32_t low = bars.First();
  int32_t high = bars.Count() + 1;
  while (low < high) {
    const int32_t middle = low + (high - low) / 2;
    if (bars.DateOf(middle) < date) {
      low = middle + 1;
    } else {
      high = middle;
    }
  }
  return low;
}

}  // namespace orin::chart
