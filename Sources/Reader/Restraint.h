#pragma once

/// A process that reads what anybody may have put on the disk keeps to itself. Main thread, before any other is
/// started.
namespace Nimbrel::Reader {

/// From now on this process ends with the one that started it and by nobody's signal but that; yields to whatever the
/// user is doing; takes no more than 4 GB of memory, is the first to go when the machine has none left, and leaves no
/// image of its memory behind.
void restrain();

}  // namespace Nimbrel::Reader
