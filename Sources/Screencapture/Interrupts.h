#pragma once

#include <QObject>

#include <memory>

class QSocketNotifier;

namespace Nimbrel::Screencapture {

/// From now on signals that ask for the end wait until an Interrupts object takes them. To be called before there are
/// threads. An interrupt comes by itself when the process ends that started this one.
void holdInterrupts();

/// Tells of interrupts, hang-ups and requests to terminate, also of those that came since they were held. One a
/// process; main thread.
class Interrupts : public QObject {
  Q_OBJECT
 public:
  Interrupts();
  ~Interrupts() override;

 Q_SIGNALS:
  void came();

 private:
  int signals_ = -1;
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace Nimbrel::Screencapture
