#include "Analysis/Detected.h"

#include "Analysis/Claims.h"
#include "Analysis/DetectedAddresses.h"
#include "Analysis/DetectedDates.h"
#include "Analysis/DetectedEmails.h"
#include "Analysis/DetectedLinks.h"
#include "Analysis/DetectedPhones.h"
#include "Analysis/MapService.h"
#include "Foundation/Text.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <unordered_set>
#include <utility>

namespace Nimbrel {

namespace {

/// What the kinds found, the surest first: where two overlap, the earlier kind has the place.
class Assembly {
 public:
  /// Takes those whose place is free, of findings in their order in the text.
  void add(DetectedFindings findings) {
    std::vector<TextRange> taken;
    for (auto& finding : findings) {
      const bool overlapsLast = !taken.empty() && taken.back().intersects(finding.range);
      if (finding.range.length == 0 || overlapsLast || claims_.intersect(finding.range)) continue;
      taken.push_back(finding.range);
      findings_.push_back(std::move(finding));
    }
    claims_.add(taken);
  }

  /// All items in the order of the text, the first of those that are the same.
  [[nodiscard]] std::vector<DetectedItem> items() && {
    std::ranges::sort(findings_, {}, [](const DetectedFinding& finding) { return finding.range.start; });
    std::unordered_set<std::string> known;
    std::vector<DetectedItem> items;
    for (auto& finding : findings_) {
      if (known.insert(finding.item.id()).second) items.push_back(std::move(finding.item));
    }
    return items;
  }

 private:
  DetectedFindings findings_;
  Claims claims_;
};

}  // namespace

std::string DetectedItem::id() const { return std::string(rawValue(kind)) + "|" + text; }

std::string_view rawValue(DetectedItem::Kind kind) {
  switch (kind) {
    case DetectedItem::Kind::link:
      return "Link";
    case DetectedItem::Kind::email:
      return "Email";
    case DetectedItem::Kind::phone:
      return "Phone";
    case DetectedItem::Kind::address:
      return "Address";
    case DetectedItem::Kind::date:
      return "Date";
  }
  return {};
}

std::vector<DetectedItem> Detected::items(std::string_view text, Timestamp now) {
  if (text.empty()) return {};
  const auto characters = Text::toUtf16(text);
  Assembly assembly;
  // A link may hold anything, an e-mail address ends in a host name, an address holds numbers, and a date is made of
  // digits that could be a phone's.
  assembly.add(DetectedLinks::explicitLinks(characters));
  assembly.add(DetectedEmails::addresses(characters));
  assembly.add(DetectedLinks::bareHosts(characters));
  assembly.add(DetectedAddresses::addresses(characters, MapService::baseUrl()));
  assembly.add(DetectedDates::dates(characters, now));
  assembly.add(DetectedPhones::numbers(characters));
  return std::move(assembly).items();
}

}  // namespace Nimbrel
