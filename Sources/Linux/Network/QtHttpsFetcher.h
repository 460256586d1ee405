#pragma once

#include "Platform/HttpsFetcher.h"

#include <memory>
#include <optional>
#include <string>

namespace Nimbrel {

/// Fetches with Qt's own client, through the proxy that the desktop has set. Servers are trusted that the system's
/// authorities vouch for, or, where they are given, none but those of `authorities`, certificates as PEM.
[[nodiscard]] std::unique_ptr<HttpsFetcher> makeQtHttpsFetcher(const std::optional<std::string>& authorities);

}  // namespace Nimbrel
