#pragma once

namespace Nimbrel {

/// Runs the program in the role that its name and arguments give it, and returns its exit status. The application
/// shows its window and runs until that is closed; without a display it runs until a signal ends it, as the companion
/// does. The headless pass runs until it has printed its summary.
[[nodiscard]] int runNimbrel(int argc, char** argv);

}  // namespace Nimbrel
