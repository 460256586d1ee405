#pragma once

namespace Nimbrel {

/// Runs the program in the role that its name and arguments give it, and returns its exit status. The companion and the
/// application run until a signal ends them, the headless pass until it has printed its summary.
[[nodiscard]] int runNimbrel(int argc, char** argv);

}  // namespace Nimbrel
