#pragma once

#include "Analysis/SensitivePrefilter.h"

#include <array>
#include <string_view>

namespace Nimbrel {

/// One kind of secret and how it looks.
struct SecretKind {
  std::string_view label;
  std::u16string_view expression;     ///< in ICU's dialect
  SensitivePrefilter::Sought sought;  ///< what a cheap look rules it out by
  bool isCard = false;                ///< digits that must pass the check of card numbers
};

/// In this order: what an earlier expression has found, a later one does not find again.
inline constexpr std::array<SecretKind, 6> secretKinds{{
    {"API key",
     uR"(\b(?:AKIA[0-9A-Z]{16}|sk-[A-Za-z0-9]{20,}|gh[pousr]_[A-Za-z0-9]{20,}|xox[baprs]-[A-Za-z0-9-]{10,})\b)",
     SensitivePrefilter::Sought::apiKey},
    {"Token", uR"(\beyJ[A-Za-z0-9_-]{8,}\.[A-Za-z0-9_-]{8,}\.[A-Za-z0-9_-]{4,}\b)",
     SensitivePrefilter::Sought::webToken},
    {"Token", uR"((?i)\bbearer\s+[A-Za-z0-9._\-]{16,})", SensitivePrefilter::Sought::bearerToken},
    {"Password", uR"((?i)\b(?:pass(?:word|phrase)?|secret|api[ _-]?key|token)\b\s*[:=]\s*\S{6,})",
     SensitivePrefilter::Sought::password},
    {"Card", uR"(\b(?:\d[ -]?){13,19}\b)", SensitivePrefilter::Sought::card, true},
    {"Email", uR"(\b[A-Za-z0-9._%+-]+@[A-Za-z0-9.-]+\.[A-Za-z]{2,}\b)", SensitivePrefilter::Sought::email},
}};

}  // namespace Nimbrel
