#pragma once

#include "Linux/Files/FolderLook.h"
#include "Platform/FileEvents.h"

#include <QThreadPool>
#include <QTimer>

#include <atomic>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace Nimbrel {

/// Looks now and then at folders that send no events. The looks are taken in the background, since such folders may
/// answer slowly; all else is on the main thread. Nothing runs while there is no such folder.
class FolderPoller {
 public:
  /// Told after each look. The first one of a folder counts as a change: what happened before it cannot be known.
  using Report = std::function<void(int key, const FolderLook& look, bool changed)>;

  FolderPoller(Seconds interval, bool (*sendsNoEvents)(const std::string& path), Report report);
  ~FolderPoller();
  FolderPoller(const FolderPoller&) = delete;
  FolderPoller& operator=(const FolderPoller&) = delete;

  /// Looks at the folder at once and from then on; `key` names it in the reports.
  void add(int key, const WatchedFolder& folder);
  void remove(int key);

  void lookAtAll();

 private:
  struct Polled {
    WatchedFolder folder;
    std::optional<std::uint64_t> signature;
    bool isLooking = false;
  };

  void look(int key, Polled& polled);
  void finish(int key, const FolderLook& look);

  bool (*sendsNoEvents_)(const std::string& path);
  Report report_;
  std::map<int, Polled> folders_;
  std::shared_ptr<std::atomic<bool>> cancelled_ = std::make_shared<std::atomic<bool>>(false);
  QTimer timer_;
  // The last member: it waits for its thread, which must not find the others gone.
  QThreadPool pool_;
};

}  // namespace Nimbrel
