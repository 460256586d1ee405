#pragma once

#include <string>

/// The bus on which the programs of a desktop session talk to each other. Any thread.
namespace Nimbrel::SessionBus {

/// Where it listens, as the environment says or as is usual; empty where there is none. Libraries remember the first
/// answer of theirs for good, and might start a bus on which nobody is: connect by this address.
[[nodiscard]] std::string address();

}  // namespace Nimbrel::SessionBus
