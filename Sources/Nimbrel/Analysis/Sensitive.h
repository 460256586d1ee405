#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Finds secrets in recognised text: API keys, tokens, passwords, card numbers, e-mail addresses. Pure functions of the
/// text (UTF-8), any thread. An expression that does not come to an end on some input finds nothing more in it.
namespace Nimbrel::Sensitive {

/// The distinct kinds found ("API key", "Token", "Password", "Card", "Email"), in the order of first finding: by
/// expression, then by place in the text.
[[nodiscard]] std::vector<std::string> kindsIn(std::string_view text);

/// The texts found, in order of finding, repetitions kept. Where two findings would share a character, the one of the
/// earlier expression stands.
[[nodiscard]] std::vector<std::string> matchesIn(std::string_view text);

}  // namespace Nimbrel::Sensitive
