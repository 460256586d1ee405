#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Does one of the things that the tests of the authentication ask for, and prints what happens. Returns the exit
/// status.
[[nodiscard]] int runAuthentication(std::string_view task, std::vector<std::string> answers);
