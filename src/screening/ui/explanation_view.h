#pragma once

#include <QLabel>
#include <QTimer>
#include <QTreeWidget>
#include <QWidget>
#include <string>

#include "analysis/explanation.h"
#include "base/date.h"

namespace orin::screening {

/// Why a stock fulfils a condition on a day or does not: the outcome in a sentence, below it a
/// tree of the conditions with the values they compare and the bars they come from.
class ExplanationView final : public QWidget {
  Q_OBJECT

 public:
  explicit ExplanationView(QWidget* owner = nullptr);

  /// `stock` is code and name, as "AAPL（APPLE）". `remark` is one more sentence.
  void ShowExplanation(const analysis::Explanation& explanation, const std::string& stock,
                       base::Date date, const std::string& remark = {});
  /// A sentence in place of an explanation; an empty one leaves the view empty.
  void ShowSentence(const QString& sentence);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void FitColumns();

  QLabel* outcome_;
  QTreeWidget* tree_;
  QTimer fit_timer_;
};

}  // namespace orin::screening
