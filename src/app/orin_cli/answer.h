#pragma once

#include <functional>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "app/orin_cli/command.h"
#include "base/result.h"
#include "store/stock_store.h"

namespace orin::app {

/// The output and the sentences of a command, kept until it is sure that all of it is of one state
/// of the store.
class Answer {
 public:
  /// For standard output.
  [[nodiscard]] std::ostream& Out() { return out_; }
  /// A sentence for standard error.
  void Tell(std::string sentence) { told_.push_back(std::move(sentence)); }
  /// Tells the sentence and gives the exit status of a failed job.
  int Report(const base::Error& error);
  /// `step` runs once everything else has been printed and gives the exit status: for output that
  /// is too large to keep, and for writing a file.
  void Finally(std::function<int()> step) { last_step_ = std::move(step); }

  /// Prints it all. The exit status is that of the last step, else `status`.
  [[nodiscard]] int Give(int status) const;

 private:
  std::ostringstream out_;
  std::vector<std::string> told_;
  std::function<int()> last_step_;
};

/// The settings and the store they name, open for reading.
struct StoreReading {
  const settings::Settings& settings;
  const store::StockStore& store;
};

/// Does `work` with the store and prints its answer once all of it is of one state of the store;
/// where another process has changed the store meanwhile, the work is done again with a new
/// answer. The last step may still use the store. Problems met in loading are told before.
int AnswerFromStore(const Session& session,
                    const std::function<int(const StoreReading&, Answer&)>& work,
                    std::optional<int16_t> first_file = std::nullopt);

}  // namespace orin::app
