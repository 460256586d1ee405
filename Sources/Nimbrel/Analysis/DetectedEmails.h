#pragma once

#include "Analysis/DetectedFinding.h"

#include <string_view>

namespace Nimbrel::DetectedEmails {

/// E-mail addresses as they stand in a text, from left to right. What only looks like one is left out: names of
/// pictures for several scales ("icon@2x.png") and places of repositories ("git@example.com:name/repository"). Any
/// thread.
[[nodiscard]] DetectedFindings addresses(std::u16string_view text);

}  // namespace Nimbrel::DetectedEmails
