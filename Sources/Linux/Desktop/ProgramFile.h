#pragma once

#include <sys/types.h>

#include <string>
#include <string_view>

namespace Nimbrel {

/// The path of the file that a process runs; empty when that is hidden from us or the process is gone.
[[nodiscard]] std::string programFileOf(pid_t process);

/// Whether a process is one of our programs: it runs our own file, or one of ours beside it.
[[nodiscard]] bool isOurProcess(pid_t process);

/// Where the program of ours with that name lies: beside this one, else where programs that nobody starts by hand are
/// installed. It need not be there. Only while there is a QCoreApplication.
[[nodiscard]] std::string helperProgram(std::string_view name);

/// The id of the application in whose sandbox a process runs; empty when it runs in none.
[[nodiscard]] std::string sandboxedApplication(pid_t process);

}  // namespace Nimbrel
