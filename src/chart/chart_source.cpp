#include "chart/chart_source.h"

#include <algorithm>
#include <utility>

#include "analysis/evaluation.h"
#include "analysis/evaluator.h"
#include "analysis/note_sentence.h"

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

base::ValueColumn ValuesUntil(DayIndex last, const analysis::Program& program,
                              analysis::StockContext& context) {
  analysis::Evaluator evaluator(program);
  if (program.IsValue()) {
    base::ValueColumn values;
    evaluator.EvaluateOperandRange(context, DayIndex(1), last, values);
    return values;
  }
  std::vector<uint8_t> truths;
  evaluator.EvaluateConditionRange(context, DayIndex(1), last, truths);
  return TruthColumn(truths);
}

}  // namespace

ChartSource::ChartSource(const store::StockStore& store, const store::StockRecord& stock,
                         const store::StockRecord* second, bool adjust, store::BarPeriod period,
                         DayIndex last)
    : store_(&store),
      stock_(stock),
      second_(second),
      adjust_(adjust),
      period_(period),
      last_(last) {}

ChartSource::ChartSource(const MadeSeries& series, store::BarPeriod period)
    : made_(&series),
      stock_(series.stock),
      second_(&series.second),
      adjust_(false),
      period_(period),
      last_(series.days.Last()) {}

const store::Calendar& ChartSource::Days() const {
  return made_ != nullptr ? made_->days : store_->Days();
}

base::BarColumns ChartSource::LoadBars(const store::StockRecord& stock, store::BarPeriod period,
                                       DayIndex last) const {
  if (made_ == nullptr) return store::LoadPeriod(*store_, stock, period, adjust_, last);
  const base::BarColumns& all = stock.slot == made_->stock.slot ? made_->bars : made_->second_bars;
  base::BarColumns daily;
  for (size_t i = 0; i < static_cast<size_t>(last.Value()); ++i) daily.Append(all.At(i));
  return store::ToPeriod(std::move(daily), made_->days, period, last);
}

BarsView ChartSource::Bars(const store::StockRecord& stock, store::BarPeriod period) {
  const auto [place, is_new] = bars_.try_emplace({stock.slot.Value(), period});
  if (is_new) place->second = LoadBars(stock, period, last_);
  return BarsView(place->second);
}

base::BarColumns ChartSource::BarsUntil(const store::StockRecord& stock, store::BarPeriod period,
                                        base::Date day) const {
  return LoadBars(stock, period, Days().Find(day));
}

const store::StockRecord* ChartSource::Find(std::string_view code) const {
  if (made_ != nullptr) return second_;
  const auto parsed = store::StockCode::Parse(code);
  if (!parsed) return nullptr;
  const base::MasterRecord record = store_->Master().Find(*parsed);
  return record.IsNone() ? nullptr : &store_->Master().Stock(record);
}

base::Result<base::ValueColumn> ChartSource::EvaluateDays(const std::string& expression) const {
  auto program = analysis::BuildProgram(expression);
  if (!program) return base::Fail(analysis::NoteSentence(program.error()));
  // What cannot be computed on any day is told, too; its line has no value then.
  if (!program->Notes().empty()) {
    return base::Fail(analysis::NoteSentence(program->Notes().front()));
  }
  if (last_.IsNone()) return base::ValueColumn();
  if (made_ != nullptr) {
    analysis::StockContext context(made_->bars, &made_->second_bars);
    return ValuesUntil(last_, *program, context);
  }
  base::ValueColumn values;
  analysis::EvaluationOptions options = {.days = {DayIndex(1), last_}, .adjust_splits = adjust_};
  if (second_ != nullptr) options.second_stock = second_->code;
  auto evaluation = analysis::Evaluation::OfProgram(*store_, std::move(*program), options);
  if (!evaluation) return base::Forward(evaluation);
  evaluation->Load(stock_);
  if (evaluation->ProgramOf().IsValue()) {
    evaluation->Values(values);
    return values;
  }
  std::vector<uint8_t> truths;
  evaluation->Truths(truths);
  return TruthColumn(truths);
}

base::Result<base::ValueColumn> ChartSource::Evaluate(const std::string& expression) {
  auto days = EvaluateDays(expression);
  if (!days || period_ == store::BarPeriod::kDay) return days;
  const BarsView bars = Bars();
  base::ValueColumn values;
  values.Reset(static_cast<size_t>(std::max(0, bars.Count())));
  for (int32_t t = bars.First(); t <= bars.Count(); ++t) {
    const auto day = static_cast<size_t>(Days().Find(bars.DateOf(t)).Value() - 1);
    if (days->Has(day)) values.Set(static_cast<size_t>(t - 1), days->At(day));
  }
  return values;
}

std::vector<store::CreditBalance> ChartSource::CreditBalances() const {
  std::vector<store::CreditBalance> balances;
  if (period_ != store::BarPeriod::kDay || last_.IsNone()) return balances;
  if (made_ != nullptr) return made_->balances;
  store_->LoadCreditBalances(stock_.slot, DayIndex(1), last_, balances);
  const bool is_any = std::ranges::any_of(
      balances, [](const store::CreditBalance& day) { return day != store::CreditBalance(); });
  if (!is_any) balances.clear();
  return balances;
}

base::Result<store::TrendLines> ChartSource::TrendLines() const {
  if (made_ != nullptr) return made_->trend_lines;
  // The user draws them into the store itself, also while the chart shows a copy of it.
  return store::LoadTrendLines(store_->OriginalLocation(), stock_.slot);
}

base::Result<store::IntradayDay> ChartSource::Intraday(base::Date last) const {
  if (made_ != nullptr) return store::IntradayDay();
  return store_->Intraday().Newest(stock_.slot, last);
}

std::span<const store::SplitEvent> ChartSource::Splits() const {
  if (made_ != nullptr) return {};
  return store_->Splits().EventsOf(stock_.code);
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
