#include "screening/explain_stock.h"

#include "analysis/evaluation.h"
#include "analysis/note_sentence.h"

namespace orin::screening {

namespace {

tl::unexpected<RunFailure> Refuse(const analysis::EvaluationFailure& failure) {
  return tl::unexpected(RunFailure{failure.message, failure.cannot_be_compiled
                                                        ? RunFailure::Kind::kCannotBeCompiled
                                                        : RunFailure::Kind::kOther});
}

}  // namespace

Outcome<analysis::Explanation> ExplainStock(const store::StockStore& store,
                                            std::string_view condition,
                                            const ExplainQuestion& question) {
  auto evaluation = analysis::Evaluation::OfText(store, condition,
                                                 {.days = {question.day, question.day},
                                                  .second_stock = question.second_stock,
                                                  .adjust_splits = question.adjust_splits,
                                                  .keyword_days = question.days});
  if (!evaluation) return Refuse(evaluation.error());
  evaluation->Load(store.Master().Stock(question.stock));
  auto explanation = analysis::Explain(condition, evaluation->Context(), question.day);
  if (!explanation) return Refuse({analysis::NoteSentence(explanation.error()), true});
  // Without a code each item says itself that it has no second stock.
  if (const auto problem = evaluation->SecondStockProblem();
      question.second_stock && !problem.empty()) {
    explanation->notes.insert(explanation->notes.begin(), {0, problem});
  }
  return std::move(*explanation);
}

}  // namespace orin::screening
