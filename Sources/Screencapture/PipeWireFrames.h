#pragma once

#include "Foundation/Result.h"

#include <QImage>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace Nimbrel::Screencapture {

/// What a node of PipeWire shows: a screen or a window, as the desktop passes it on.
class PipeWireFrames {
 public:
  /// Both come in one thread of its own.
  struct Events {
    /// Thirty times a second, unless the last call is still busy: what has come since, the latest alone; null when
    /// nothing has. Its size may change.
    std::function<void(const QImage& frame)> look;

    /// Nothing comes any more, for that reason. Once at most.
    std::function<void(const std::string& reason)> ended;
  };

  /// Takes the node's pictures through a connection to PipeWire, which stays the caller's and is not used by it any
  /// more. Fails when that is none.
  [[nodiscard]] static Result<std::unique_ptr<PipeWireFrames>> open(int remote, std::uint32_t node, Events events);

  /// Waits for an event that is under way; none comes afterwards. Not to be called in one.
  virtual ~PipeWireFrames() = default;
};

}  // namespace Nimbrel::Screencapture
