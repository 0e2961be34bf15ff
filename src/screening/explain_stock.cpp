#include "screening/explain_stock.h"

#include "analysis/note_sentence.h"
#include "analysis/program.h"
#include "analysis/stock_context.h"

namespace orin::screening {

namespace {

tl::unexpected<RunFailure> Refuse(std::string message) {
  return tl::unexpected<RunFailure>(RunFailure{std::move(message)});
}

tl::unexpected<RunFailure> Refuse(const analysis::Note& note) {
  return tl::unexpected<RunFailure>(
      RunFailure{analysis::NoteSentence(note), RunFailure::Kind::kCannotBeCompiled});
}

}  // namespace

Outcome<analysis::Explanation> ExplainStock(const store::StockStore& store,
                                            std::string_view condition,
                                            const ExplainQuestion& question) {
  const SecondStock second = FindSecondStock(store, question.second_stock);
  const auto program = analysis::BuildProgram(condition);
  if (!program) return Refuse(program.error());
  const auto beside = analysis::Companions::Load(store, program->Needs());
  if (!beside) return Refuse(beside.error().message);
  analysis::StockContext context(store, program->Needs(), question.day, question.day, second.record,
                                 question.adjust_splits);
  context.SetBeside(&*beside);
  context.KeywordDays() = question.days.value_or(DaysOfFile(question.day));
  context.Load(store.Master().Stock(question.stock));
  auto explanation = analysis::Explain(condition, context, question.day);
  if (!explanation) return Refuse(explanation.error());
  if (!second.problem.empty()) {
    explanation->notes.insert(explanation->notes.begin(), {0, second.problem});
  }
  return std::move(*explanation);
}

}  // namespace orin::screening
