#pragma once

/// Where windows can be shown.
namespace Nimbrel::Display {

/// Whether there is a display that windows can be opened on, or the user has said where they are to go. To be
/// asked before the application object is made, which ends the process where there is none. Any thread.
[[nodiscard]] bool isThere();

}  // namespace Nimbrel::Display
