#pragma once

#include <QDialog>
#include <QElapsedTimer>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

#include "base/progress.h"

namespace orin::shell {

/// Shows a long job with its stage, how far it is and a button that stops it, and lets events
/// through while it runs. The caption of the main window names the stage. It appears only when
/// the job takes longer than a moment.
class JobProgress final : public QDialog, public base::Progress {
  Q_OBJECT

 public:
  JobProgress(QWidget* owner, const QString& caption);
  ~JobProgress() override;
  JobProgress(const JobProgress&) = delete;
  JobProgress& operator=(const JobProgress&) = delete;

  [[nodiscard]] bool Report(std::string_view stage, int64_t done, int64_t total) override;
  /// Asks the job to stop at its next report.
  void Stop();

 protected:
  void reject() override { Stop(); }

 private:
  void ShowStage(std::string_view stage, int64_t done, int64_t total);

  QLabel* stage_;
  QProgressBar* bar_;
  QPushButton* stop_button_;
  QWidget* owner_;  // the main window, whose caption names the stage; null for other owners
  QElapsedTimer since_start_;
  QElapsedTimer since_events_;
  bool is_stopped_ = false;
};

}  // namespace orin::shell
