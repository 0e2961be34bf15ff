#include "widgets/job_progress.h"

#include <QCoreApplication>
#include <QMainWindow>
#include <QVBoxLayout>
#include <algorithm>

#include "base/messages.h"
#include "widgets/qt_text.h"

namespace orin::widgets {

namespace {

constexpr int64_t kEventsEvery = 25;  // ms
constexpr int64_t kShownAfter = 250;  // ms

}  // namespace

JobProgress::JobProgress(QWidget* owner, const QString& caption)
    : QDialog(owner),
      stage_(new QLabel(this)),
      count_(new QLabel(this)),
      bar_(new QProgressBar(this)),
      stop_button_(new QPushButton(QStringLiteral("中止(&S)"), this)),
      owner_(qobject_cast<QMainWindow*>(owner)) {
  setWindowTitle(caption);
  setModal(true);
  stage_->setMinimumWidth(fontMetrics().averageCharWidth() * 60);
  stage_->setWordWrap(true);
  bar_->setAccessibleName(QStringLiteral("進み具合"));
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(stage_);
  layout->addWidget(bar_);
  layout->addWidget(count_);
  layout->addWidget(stop_button_, 0, Qt::AlignRight);
  connect(stop_button_, &QPushButton::clicked, this, &JobProgress::Stop);
  since_start_.start();
  since_events_.start();
}

JobProgress::~JobProgress() {
  if (owner_ != nullptr) owner_->setWindowTitle(Text(base::kProductName));
}

bool JobProgress::Report(std::string_view stage, int64_t done, int64_t total) {
  // At once, so that the caption names a short stage too.
  if (stage != stage_text_) ShowStage(stage, done, total);
  if (since_events_.elapsed() >= kEventsEvery) {
    ShowStage(stage, done, total);
    if (!isVisible() && since_start_.elapsed() >= kShownAfter) show();
    // The dialog is modal: of the user's input only that of its button gets through. Before it is
    // shown, what the user does waits.
    QCoreApplication::processEvents(isVisible() ? QEventLoop::AllEvents
                                                : QEventLoop::ExcludeUserInputEvents);
    since_events_.restart();
  }
  return !is_stopped_;
}

void JobProgress::Stop() {
  is_stopped_ = true;
  stop_button_->setEnabled(false);
  stage_->setText(QStringLiteral("中止しています。"));
}

void JobProgress::ShowStage(std::string_view stage, int64_t done, int64_t total) {
  if (is_stopped_) return;
  stage_->setText(Text(stage));
  if (stage != stage_text_) {
    stage_text_ = stage;
    found_ = -1;
  }
  count_->setText(found_ < 0 ? QString() : QStringLiteral("選ばれた銘柄：%1").arg(found_));
  bar_->setRange(0, total > 0 ? 1000 : 0);
  if (total > 0) bar_->setValue(static_cast<int>(std::min(done, total) * 1000 / total));
  if (owner_ == nullptr) return;
  // Some stages are whole captions.
  owner_->setWindowTitle(Text(stage.starts_with(base::kProductName)
                                  ? std::string(stage)
                                  : base::StageCaption(std::string(stage))));
}

}  // namespace orin::widgets
