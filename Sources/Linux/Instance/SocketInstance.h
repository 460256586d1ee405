#pragma once

#include "Linux/Files/FileDescriptor.h"
#include "Platform/SingleInstance.h"

#include <QObject>
#include <QSocketNotifier>

#include <memory>
#include <string>

namespace Nimbrel {

/// The place of the one process of its kind where no bus decides: a lock that ends with the process, and a local socket
/// beside it. Main thread.
class SocketInstance final : public QObject {
  Q_OBJECT

 public:
  /// They lie in `folder`, which is made when it is missing; `name` is theirs alone.
  SocketInstance(std::string folder, std::string name, SingleInstance::Handler onRequest);
  ~SocketInstance() override;

  /// Where the folder cannot be written this is the first one, since nobody could tell.
  [[nodiscard]] SingleInstance::Place claim(const StartRequest& request);

 private:
  [[nodiscard]] bool takeLock();
  void listen();
  void meet();

  std::string folderPath_;
  std::string name_;
  SingleInstance::Handler onRequest_;
  FileDescriptor folder_;
  FileDescriptor lock_;
  FileDescriptor listener_;
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace Nimbrel
