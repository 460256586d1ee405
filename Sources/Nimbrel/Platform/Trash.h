#pragma once

#include "Foundation/Result.h"

#include <QObject>

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace Nimbrel {

/// The place from which the user can take deleted files back. Main thread; the work is done elsewhere.
class Trash {
 public:
  /// Absent when every file is in the Trash.
  using Then = std::function<void(std::optional<Error> failure)>;

  virtual ~Trash() = default;

  /// Moves the files to the Trash, in their order, and calls `then` in a later turn of the event loop; never once
  /// `context` is gone. The first file that cannot be moved, and that stays whole where it is, ends it: those before it
  /// are in the Trash, those behind it are untouched.
  virtual void recycle(QObject* context, std::vector<std::string> paths, Then then) = 0;
};

/// Where there is no Trash: nothing is ever moved.
class NullTrash final : public Trash {
 public:
  void recycle(QObject* context, std::vector<std::string>, Then then) override {
    QMetaObject::invokeMethod(
        context, [then = std::move(then)] { then(Error{"There is no Trash"}); }, Qt::QueuedConnection);
  }
};

}  // namespace Nimbrel
