#pragma once

#include "Linux/Files/FileDescriptor.h"

#include <QSocketNotifier>

#include <functional>
#include <memory>

namespace Nimbrel {

/// Tells that a file system was mounted or unmounted somewhere, of which the folders beneath send no event. Main thread
/// only.
class MountEvents {
 public:
  explicit MountEvents(std::function<void()> onChange);

 private:
  std::function<void()> onChange_;
  FileDescriptor mounts_;
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace Nimbrel
