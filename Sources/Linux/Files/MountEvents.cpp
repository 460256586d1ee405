#include "Linux/Files/MountEvents.h"

#include <fcntl.h>

#include <utility>

namespace Nimbrel {

MountEvents::MountEvents(std::function<void()> onChange)
    : onChange_(std::move(onChange)), mounts_(::open("/proc/self/mountinfo", O_RDONLY | O_CLOEXEC)) {
  if (!mounts_.isOpen()) return;
  // The kernel reports a change of this file as an exceptional condition.
  notifier_ = std::make_unique<QSocketNotifier>(mounts_.number(), QSocketNotifier::Exception);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] { onChange_(); });
}

}  // namespace Nimbrel
