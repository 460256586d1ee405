#pragma once

namespace Nimbrel {

/// Who shows the windows of the desktop session that this process belongs to.
enum class SessionKind {
  none,     ///< nobody, as in a cron job
  x11,      ///< an X server that knows all windows
  wayland,  ///< a compositor, even where an X server serves older programs beside it
};

/// As the environment says. Any thread.
[[nodiscard]] SessionKind sessionKind();

}  // namespace Nimbrel
