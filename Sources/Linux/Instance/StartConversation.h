#pragma once

#include "Linux/Files/FileDescriptor.h"
#include "Platform/SingleInstance.h"

#include <QByteArray>
#include <QObject>
#include <QSocketNotifier>

namespace Nimbrel {

/// One process that has come to hand over a request: reads its message as it arrives, tells it once whole and answers.
/// Deletes itself when that process has said all, or something that is no request. Main thread.
class StartConversation final : public QObject {
  Q_OBJECT

 public:
  /// The connection does not block.
  StartConversation(FileDescriptor connection, QObject* parent);

 Q_SIGNALS:
  void came(const Nimbrel::StartRequest& request);

 private:
  void read();
  void end();

  FileDescriptor connection_;
  QSocketNotifier notifier_;
  QByteArray message_;
};

}  // namespace Nimbrel
