#include "Linux/Files/FolderPoller.h"

#include "Foundation/Background.h"

#include <chrono>
#include <utility>

namespace Nimbrel {

FolderPoller::FolderPoller(Seconds interval, bool (*sendsNoEvents)(const std::string& path), Report report)
    : sendsNoEvents_(sendsNoEvents), report_(std::move(report)) {
  pool_.setMaxThreadCount(1);
  pool_.setThreadPriority(QThread::LowPriority);
  timer_.setInterval(std::chrono::ceil<std::chrono::milliseconds>(interval));
  QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { lookAtAll(); });
}

FolderPoller::~FolderPoller() { *cancelled_ = true; }

void FolderPoller::add(int key, const WatchedFolder& folder) {
  look(key, folders_[key] = {folder, std::nullopt, false});
  if (!timer_.isActive()) timer_.start();
}

void FolderPoller::remove(int key) {
  folders_.erase(key);
  if (folders_.empty()) timer_.stop();
}

void FolderPoller::lookAtAll() {
  for (auto& [key, polled] : folders_) look(key, polled);
}

void FolderPoller::look(int key, Polled& polled) {
  if (polled.isLooking) return;
  polled.isLooking = true;
  auto work = [folder = polled.folder, sendsNoEvents = sendsNoEvents_, cancelled = cancelled_] {
    return lookAt(folder, sendsNoEvents, *cancelled);
  };
  inBackground(&timer_, pool_, std::move(work), [this, key](const FolderLook& look) { finish(key, look); });
}

void FolderPoller::finish(int key, const FolderLook& look) {
  const auto found = folders_.find(key);
  if (found == folders_.end()) return;
  auto& polled = found->second;
  const bool changed = polled.signature != look.signature;
  polled.signature = look.signature;
  polled.isLooking = false;
  report_(key, look, changed);
}

}  // namespace Nimbrel
