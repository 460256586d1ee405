#pragma once

#include "Model/AppIdentity.h"

#include <span>
#include <string_view>

namespace Nimbrel {

/// What a process is for. All of them share one catalogue and one settings suite.
enum class ProcessRole {
  mainApplication,   ///< the window and all user actions; never watches folders
  menuBarCompanion,  ///< watches, scans and works in the background
  headless,          ///< one pass, a summary, and out
  tool,              ///< one command of a script; neither watches nor polls
};

/// The role that follows from the identity and the arguments, which are matched exactly, wherever they stand.
[[nodiscard]] ProcessRole processRole(const AppIdentity& identity, std::span<const std::string_view> arguments);

/// Whether the role brings files into the catalogue by itself.
[[nodiscard]] bool isBackgroundWorker(ProcessRole role);

/// The argument that asks for a headless pass, and the one that makes it tell more.
inline constexpr std::string_view scanArgument = "--scan";
inline constexpr std::string_view verboseArgument = "--verbose";

}  // namespace Nimbrel
