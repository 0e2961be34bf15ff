#pragma once

#include <QDialog>
#include <QElapsedTimer>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <string>

#include "base/progress.h"

namespace orin::widgets {

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
  void Found(int64_t count) override { found_ = count; }
  /// Asks the job to stop at its next report.
  void Stop();
  [[nodiscard]] bool IsStopped() const { return is_stopped_; }

 protected:
  void reject() override { Stop(); }

 private:
  void ShowStage(std::string_view stage, int64_t done, int64_t total);

  QLabel* stage_;
  QLabel* count_;  // what a search has found
  QProgressBar* bar_;
  QPushButton* stop_button_;
  QWidget* owner_;  // the main window, whose caption names the stage; null for other owners
  QElapsedTimer since_start_;
  QElapsedTimer since_events_;
  int64_t found_ = -1;  // of the stage under way; -1: it counts nothing
  std::string stage_text_;
  bool is_stopped_ = false;
};

}  // namespace orin::widgets
