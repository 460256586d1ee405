#pragma once

#include "Platform/Workspace.h"

#include <string>
#include <vector>

/// Programs of desktops that send files to other devices. Main thread.
namespace Nimbrel::FileSenders {

/// Those in the search path, each by the name of its file.
[[nodiscard]] std::vector<Workspace::Taker> installed();

/// Starts one with the file; one that is gone is a matter for the log.
void send(const std::string& path, const std::string& sender);

}  // namespace Nimbrel::FileSenders
