#include "analysis/evaluation.h"

#include <algorithm>
#include <utility>

#include "analysis/evaluator.h"
#include "analysis/note_sentence.h"

namespace orin::analysis {

namespace {

const store::StockRecord* FindStock(const store::StockStore& store,
                                    const std::optional<store::StockCode>& code) {
  if (!code) return nullptr;
  const base::MasterRecord record = store.Master().Find(*code);
  return record.IsNone() ? nullptr : &store.Master().Stock(record);
}

}  // namespace

std::string UnknownSecondStock(const store::StockStore& store, const store::StockCode& code) {
  if (!store.Master().Find(code).IsNone()) return "";
  return "第二銘柄コード「" + std::string(code.Text()) +
         "」の銘柄がないので、第二銘柄とさやの項目は計算できません。";
}

struct Evaluation::State {
  State(const store::StockStore& opened, std::vector<Program> compiled, const History& needs,
        Companions loaded, const EvaluationOptions& options)
      : store(opened),
        programs(std::move(compiled)),
        companions(std::move(loaded)),
        days(options.days),
        second_stock(options.second_stock),
        context(opened, needs, days.first, days.last, FindStock(opened, second_stock),
                options.adjust_splits) {
    context.SetBeside(&companions);
    context.KeywordDays() = options.keyword_days;
    evaluators.reserve(programs.size());
    for (const Program& program : programs) evaluators.emplace_back(program);
  }

  const store::StockStore& store;
  const std::vector<Program> programs;
  const Companions companions;
  const base::DayRange days;
  const std::optional<store::StockCode> second_stock;
  StockContext context;
  std::vector<Evaluator> evaluators;  // one a program
};

Evaluation::Evaluation(std::unique_ptr<State> state) : state_(std::move(state)) {}
Evaluation::Evaluation(Evaluation&& other) noexcept = default;
Evaluation& Evaluation::operator=(Evaluation&& other) noexcept = default;
Evaluation::~Evaluation() = default;

tl::expected<Evaluation, EvaluationFailure> Evaluation::OfText(const store::StockStore& store,
                                                               std::string_view text,
                                                               const EvaluationOptions& options) {
  auto program = BuildProgram(text);
  if (!program) {
    return tl::unexpected(EvaluationFailure{NoteSentence(program.error()), true});
  }
  auto evaluation = OfProgram(store, std::move(*program), options);
  if (!evaluation) return tl::unexpected(EvaluationFailure{evaluation.error().message});
  return std::move(*evaluation);
}

base::Result<Evaluation> Evaluation::OfProgram(const store::StockStore& store, Program program,
                                               const EvaluationOptions& options) {
  std::vector<Program> programs;
  programs.push_back(std::move(program));
  return OfPrograms(store, std::move(programs), options);
}

base::Result<Evaluation> Evaluation::OfPrograms(const store::StockStore& store,
                                                std::vector<Program> programs,
                                                const EvaluationOptions& options) {
  History needs = options.own_needs;
  for (const Program& program : programs) needs = needs.Union(program.Needs());
  auto companions = Companions::Load(store, needs);
  if (!companions) return base::Forward(companions);
  return Evaluation(
      std::make_unique<State>(store, std::move(programs), needs, std::move(*companions), options));
}

const store::StockStore& Evaluation::Store() const { return state_->store; }

base::DayRange Evaluation::Days() const { return state_->days; }

const Program& Evaluation::ProgramOf(size_t expression) const {
  return state_->programs[expression];
}

bool Evaluation::NeedsSecondStock() const {
  return std::any_of(state_->programs.begin(), state_->programs.end(),
                     [](const Program& program) { return program.NeedsSecondStock(); });
}

std::string Evaluation::SecondStockProblem() const {
  if (state_->second_stock) return UnknownSecondStock(state_->store, *state_->second_stock);
  if (!NeedsSecondStock()) return "";
  return "第二銘柄コードがないので、第二銘柄とさやの項目は計算できません。";
}

void Evaluation::Load(const store::StockRecord& stock) { state_->context.Load(stock); }

void Evaluation::LoadNext(std::span<const store::StockRecord> stocks, size_t place) {
  state_->context.LoadNext(stocks, place);
}

bool Evaluation::IsTrue(base::DayIndex day, size_t expression) {
  return state_->evaluators[expression].EvaluateCondition(state_->context, day);
}

Value Evaluation::ValueOn(base::DayIndex day, size_t expression) {
  return state_->evaluators[expression].EvaluateOperand(state_->context, day);
}

void Evaluation::Truths(std::vector<uint8_t>& truths, size_t expression) {
  const base::DayRange days = state_->days;
  state_->evaluators[expression].EvaluateConditionRange(state_->context, days.first, days.last,
                                                        truths);
}

void Evaluation::Values(base::ValueColumn& values, size_t expression) {
  const base::DayRange days = state_->days;
  state_->evaluators[expression].EvaluateOperandRange(state_->context, days.first, days.last,
                                                      values);
}

base::BarsView Evaluation::Daily() const { return state_->context.Daily(); }

StockContext& Evaluation::Context() { return state_->context; }

}  // namespace orin::analysis
