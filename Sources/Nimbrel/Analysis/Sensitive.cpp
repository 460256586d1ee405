#include "Analysis/Sensitive.h"

#include "Analysis/SensitivePrefilter.h"
#include "Foundation/Pattern.h"
#include "Foundation/Text.h"
#include "Foundation/Utf8.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <array>

namespace Nimbrel::Sensitive {

namespace {

struct Secret {
  std::string_view label;
  std::u16string_view expression;
  bool (*mayMatch)(std::string_view text);
};

constexpr std::string_view cardLabel = "Card";

// In this order: what an earlier expression has found, a later one does not find again.
constexpr std::array<Secret, 6> secrets{{
    {"API key",
     uR"(\b(?:AKIA[0-9A-Z]{16}|sk-[A-Za-z0-9]{20,}|gh[pousr]_[A-Za-z0-9]{20,}|xox[baprs]-[A-Za-z0-9-]{10,})\b)",
     SensitivePrefilter::mayHoldAPIKey},
    {"Token", uR"(\beyJ[A-Za-z0-9_-]{8,}\.[A-Za-z0-9_-]{8,}\.[A-Za-z0-9_-]{4,}\b)",
     SensitivePrefilter::mayHoldWebToken},
    {"Token", uR"((?i)\bbearer\s+[A-Za-z0-9._\-]{16,})", SensitivePrefilter::mayHoldBearerToken},
    {"Password", uR"((?i)\b(?:pass(?:word|phrase)?|secret|api[ _-]?key|token)\b\s*[:=]\s*\S{6,})",
     SensitivePrefilter::mayHoldPassword},
    {cardLabel, uR"(\b(?:\d[ -]?){13,19}\b)", SensitivePrefilter::mayHoldCard},
    {"Email", uR"(\b[A-Za-z0-9._%+-]+@[A-Za-z0-9.-]+\.[A-Za-z]{2,}\b)", SensitivePrefilter::mayHoldEmail},
}};

struct Detector {
  Secret secret;
  Pattern pattern;
};

const std::vector<Detector>& detectors() {
  static const std::vector<Detector> compiled = [] {
    std::vector<Detector> valid;
    for (const auto& secret : secrets) {
      if (auto pattern = Pattern::compile(secret.expression)) valid.push_back({secret, std::move(*pattern)});
    }
    return valid;
  }();
  return compiled;
}

/// Luhn's check over the digits of any script.
bool isCard(std::string_view text) {
  std::vector<int> digits;
  while (!text.empty()) {
    const auto character = Utf8::first(text);
    if (const int digit = u_charDigitValue(static_cast<UChar32>(character.code)); digit >= 0) digits.push_back(digit);
    text.remove_prefix(character.length);
  }
  if (digits.size() < 13 || digits.size() > 19) return false;
  int sum = 0;
  bool doubled = false;
  for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit) {
    sum += !doubled ? *digit : *digit * 2 - (*digit >= 5 ? 9 : 0);
    doubled = !doubled;
  }
  return sum % 10 == 0;
}

struct Finding {
  std::string_view kind;
  std::string text;
};

std::vector<Finding> scan(std::string_view text) {
  std::vector<Finding> findings;
  std::vector<TextRange> accepted;
  std::u16string characters;
  for (const auto& [secret, pattern] : detectors()) {
    if (!secret.mayMatch(text)) continue;
    if (characters.empty()) characters = Text::toUtf16(text);
    for (const auto& range : pattern.matches(characters)) {
      auto matched = Text::toUtf8(std::u16string_view(characters).substr(range.start, range.length));
      if (secret.label == cardLabel && !isCard(matched)) continue;
      if (std::ranges::any_of(accepted, [&](const TextRange& other) { return other.intersects(range); })) continue;
      accepted.push_back(range);
      findings.push_back({secret.label, std::move(matched)});
    }
  }
  return findings;
}

}  // namespace

std::vector<std::string> kindsIn(std::string_view text) {
  std::vector<std::string> kinds;
  for (const auto& finding : scan(text)) {
    if (std::ranges::find(kinds, finding.kind) == kinds.end()) kinds.emplace_back(finding.kind);
  }
  return kinds;
}

std::vector<std::string> matchesIn(std::string_view text) {
  std::vector<std::string> texts;
  for (auto& finding : scan(text)) texts.push_back(std::move(finding.text));
  return texts;
}

}  // namespace Nimbrel::Sensitive
