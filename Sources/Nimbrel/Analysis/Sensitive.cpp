#include "Analysis/Sensitive.h"

#include "Analysis/Claims.h"
#include "Analysis/SecretKinds.h"
#include "Foundation/Pattern.h"
#include "Foundation/Text.h"
#include "Foundation/Utf8.h"

#include <unicode/uchar.h>

#include <algorithm>

namespace Nimbrel::Sensitive {

namespace {

struct Detector {
  SecretKind secret;
  Pattern pattern;
};

const std::vector<Detector>& detectors() {
  static const std::vector<Detector> compiled = [] {
    std::vector<Detector> valid;
    for (const auto& secret : secretKinds) {
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
  Claims claims;
  std::u16string characters;
  const auto possible = SensitivePrefilter::possibleIn(text);
  if (possible.none()) return findings;
  for (const auto& [secret, pattern] : detectors()) {
    if (!possible.test(static_cast<std::size_t>(secret.sought))) continue;
    if (characters.empty()) characters = Text::toUtf16(text);
    // Matches of one expression never overlap, so only those of earlier ones stand in the way.
    std::vector<TextRange> accepted;
    for (const auto& range : pattern.matches(characters)) {
      auto matched = Text::toUtf8(std::u16string_view(characters).substr(range.start, range.length));
      if ((secret.isCard && !isCard(matched)) || claims.intersect(range)) continue;
      accepted.push_back(range);
      findings.push_back({secret.label, std::move(matched)});
    }
    claims.add(accepted);
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
