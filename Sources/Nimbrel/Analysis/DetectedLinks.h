#pragma once

#include "Analysis/DetectedFinding.h"

#include <string_view>

/// Links in a text. Each function returns findings from left to right; any thread.
namespace Nimbrel::DetectedLinks {

/// Links that say what they are: with the scheme of a web or file server, with "mailto:" (found as an e-mail address),
/// or beginning with "www.". Punctuation and brackets behind them, which belong to the sentence, are left out.
[[nodiscard]] DetectedFindings explicitLinks(std::u16string_view text);

/// Host names that stand by themselves, with or without a port and a path. Only those with a top-level domain that
/// HostNames takes for one: "main.cpp", "v1.2.3" and "item.id" are none.
[[nodiscard]] DetectedFindings bareHosts(std::u16string_view text);

}  // namespace Nimbrel::DetectedLinks
