#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <tl/expected.hpp>
#include <vector>

#include "analysis/program.h"
#include "analysis/run_days.h"
#include "analysis/stock_context.h"
#include "analysis/value.h"
#include "base/bars.h"
#include "base/ordinal.h"
#include "base/result.h"
#include "base/value_column.h"
#include "store/stock_code.h"
#include "store/stock_store.h"

namespace orin::analysis {

/// A sentence where the store has no stock of that code, so that the items of the second stock
/// fail; else empty.
std::string UnknownSecondStock(const store::StockStore& store, const store::StockCode& code);

/// The days and stocks beside the examined stock that an evaluation reads.
struct EvaluationOptions {
  /// The examined days of the store's calendar; bars before them are loaded as expressions need
  /// them.
  base::DayRange days;
  std::optional<store::StockCode> second_stock = {};
  bool adjust_splits = true;
  RunDays keyword_days = RunDays::OfOneFile();
  /// What the caller reads from Daily() for itself.
  History own_needs = {};
};

/// Why there is no evaluation.
struct EvaluationFailure {
  std::string message;  // one sentence
  /// The text cannot be compiled; else the machinery is broken.
  bool cannot_be_compiled = false;
};

/// Expressions that are evaluated for one stock after the other, on days of a store. It holds their
/// programs, the company and ranking files they need, the bars of the second stock, and memory
/// that is reused from stock to stock. A moved-from evaluation can only be destroyed or assigned.
///
///   auto evaluation = Evaluation::OfText(store, "終値(0) > 移動平均(25,0)", {.days = {day, day}});
///   if (!evaluation) return Fail(evaluation.error().message);
///   evaluation->Load(stock);
///   bool is_selected = evaluation->IsTrue(day);
class Evaluation {
 public:
  /// Compiles one expression. The store must outlive the evaluation. Fails where the text cannot be
  /// compiled, and where a file that the expression needs is damaged.
  static tl::expected<Evaluation, EvaluationFailure> OfText(const store::StockStore& store,
                                                            std::string_view text,
                                                            const EvaluationOptions& options);
  /// Of a compiled expression. Fails where a file that it needs is damaged.
  static base::Result<Evaluation> OfProgram(const store::StockStore& store, Program program,
                                            const EvaluationOptions& options);
  /// Likewise of any number of them.
  static base::Result<Evaluation> OfPrograms(const store::StockStore& store,
                                             std::vector<Program> programs,
                                             const EvaluationOptions& options);
  Evaluation(Evaluation&& other) noexcept;
  Evaluation& operator=(Evaluation&& other) noexcept;
  ~Evaluation();

  [[nodiscard]] const store::StockStore& Store() const;
  [[nodiscard]] base::DayRange Days() const;
  [[nodiscard]] const Program& ProgramOf(size_t expression = 0) const;
  /// Whether any expression reads the second stock. Without one its items fail.
  [[nodiscard]] bool NeedsSecondStock() const;
  /// A sentence where the store does not have the second stock, or where an expression needs one
  /// and none is given; else empty.
  [[nodiscard]] std::string SecondStockProblem() const;

  /// Loads the bars of the stock to be examined, a record of the store's master.
  void Load(const store::StockRecord& stock);
  /// The stock at a place of a list that is gone through in order: faster than Load, because it
  /// reads the bars of neighbours together. Stocks may be left out.
  void LoadNext(std::span<const store::StockRecord> stocks, size_t place);

  // The rest needs a loaded stock. `expression` counts from 0 in the order of the programs; `day`
  // is one of Days().

  /// Whether a condition holds; false for a value. A true relation may store a price, see
  /// Evaluator::EvaluateCondition.
  bool IsTrue(base::DayIndex day, size_t expression = 0);
  /// The value of a bare operand; failed for a condition.
  Value ValueOn(base::DayIndex day, size_t expression = 0);
  /// The same for all of Days(), place 0 being the first; no price is stored.
  void Truths(std::vector<uint8_t>& truths, size_t expression = 0);
  void Values(base::ValueColumn& values, size_t expression = 0);

  /// The loaded bars, up to the last of Days().
  [[nodiscard]] base::BarsView Daily() const;
  /// What items read, for an explanation and for the prices of a trade.
  [[nodiscard]] StockContext& Context();

 private:
  struct State;
  explicit Evaluation(std::unique_ptr<State> state);

  // Evaluators and the context refer to other members of it, which therefore never move.
  std::unique_ptr<State> state_;
};

}  // namespace orin::analysis
