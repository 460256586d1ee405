#include "Views/Recording/ExportProgress.h"

#include "Views/Shared/Measures.h"
#include "Views/Shared/Painting.h"
#include "Views/Shared/TextStyles.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QStyle>

#include <chrono>
#include <cmath>

namespace Nimbrel {

namespace {

using namespace std::chrono_literals;

constexpr auto lookInterval = 100ms;
constexpr int barHeight = 4;
/// Of the bar's scale to the whole.
constexpr int barSteps = 1000;
constexpr double millisecondsPerSecond = 1000;

class ProgressLine final : public QProgressBar {
 public:
  ProgressLine() {
    setRange(0, barSteps);
    setTextVisible(false);
    setFixedHeight(barHeight);
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    Painting::fillRounded(painter, rect(), barHeight / 2.0, themeColor(Token::Track));
    const auto length = width() * value() / barSteps;
    const auto done = QStyle::visualRect(layoutDirection(), rect(), QRect(0, 0, length, height()));
    if (length > 0) Painting::fillRounded(painter, done, barHeight / 2.0, themeColor(Token::Accent));
  }
};

}  // namespace

ExportProgress::ExportProgress(QWidget* parent) : QWidget(parent), bar_(new ProgressLine), left_(new QLabel) {
  bar_->setObjectName(QStringLiteral("recordingTools.progress"));
  bar_->setAccessibleName(tr("Progress"));
  left_->setObjectName(QStringLiteral("recordingTools.timeLeft"));
  setTextLook(*left_, TextStyle::Caption, Token::Secondary);
  auto* line = new QHBoxLayout(this);
  line->setContentsMargins(Measures::step2, 0, Measures::step2, 0);
  line->setSpacing(Measures::step12);
  line->addWidget(bar_, 1);
  line->addWidget(left_);
  looking_.setInterval(lookInterval);
  connect(&looking_, &QTimer::timeout, this, &ExportProgress::refresh);
  hide();
}

void ExportProgress::follow(RecordingExport* run) {
  run_ = run;
  remaining_ = {};
  since_.start();
  refresh();
  looking_.start();
  show();
}

void ExportProgress::stop() {
  looking_.stop();
  hide();
}

void ExportProgress::refresh() {
  if (!run_) return stop();
  const auto share = run_->share();
  remaining_.add(static_cast<double>(since_.elapsed()) / millisecondsPerSecond, share);
  bar_->setValue(static_cast<int>(std::lround(share * barSteps)));
  const auto seconds = remaining_.seconds();
  left_->setText(seconds ? remainingWords(*seconds) : QString());
}

}  // namespace Nimbrel
