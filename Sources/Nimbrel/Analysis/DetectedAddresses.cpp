#include "Analysis/DetectedAddresses.h"

#include "Analysis/MapService.h"
#include "Foundation/Text.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>

namespace Nimbrel::DetectedAddresses {

namespace {

using Expression = std::u16string;

/// What may stand between two lines of an address, or in their place.
const Expression lineBreak = uR"((?:[ \t]{0,4},?[ \t]{0,4}\r?\n[ \t]{0,8}|,[ \t]{0,4}|[ \t]{0,4}[·•|][ \t]{0,4}))";
const Expression breakOrBlank = u"(?:" + lineBreak + u"|[ \\t]{1,4})";

const Expression country =
    u"(?:" + lineBreak +
    uR"((?:Germany|Deutschland|Austria|Österreich|Switzerland|Schweiz|USA|U\.S\.A\.|US|United States(?: of America)?|United Kingdom|UK|England|Scotland|Wales|Ireland|Canada|Australia)\b)?)";

// English: "12 Main St, Apt 4, Springfield, IL 62704", "10 Downing Street, London SW1A 2AA".
const Expression capitalWord = uR"(\p{Lu}[\p{L}\p{M}'’.-]{0,20})";
const Expression englishNumber = uR"((?<![\p{L}\p{M}\p{N}$€£#.,:/%_+-])\d{1,5}[A-Za-z]?(?:[-–]\d{1,5})?[ ])";
const Expression compass = uR"((?:[NSEW]{1,2}\.?|North|South|East|West|Northeast|Northwest|Southeast|Southwest))";
const Expression streetName = u"(?:" + compass + u"[ ])?(?:" + capitalWord +
                              uR"(|\d{1,3}(?:st|nd|rd|th))(?:[ ](?:of|the|)" + capitalWord + u")){0,3}?[ ]";
const Expression streetWord = uR"((?:Street|Avenue|Road|Boulevard|Parkway|Blvd|Pkwy|Ave|Rd|St)\b\.?)";
const Expression everydayWord =
    uR"((?:Lane|Drive|Court|Place|Square|Way|Circle|Terrace|Highway|Close|Crescent|Gardens|Grove|Hill|Loop|Mews|Park|Plaza|Quay|Row|Trail|Walk|Wharf|Broadway|Ln|Dr|Ct|Pl|Sq|Cir|Ter|Hwy)\b\.?)";
const Expression unit = u"(?:" + breakOrBlank +
                        uR"((?:Apt|Apartment|Suite|Ste|Unit|Floor|Fl|Room|Rm|Flat|#)\.?[ ]?[\p{L}\p{N}-]{1,6}\b|)" +
                        lineBreak + uR"(\d{1,3}(?:st|nd|rd|th)[ ][Ff]loor)?)";
const Expression town = uR"(\p{Lu}[\p{L}\p{M}'’.-]{1,24}(?:[ ](?:of|the|on|upon|under|)" + capitalWord + u")){0,3}";
const Expression state =
    uR"((?:A[LKZR]|C[AOT]|D[CE]|FL|GA|HI|I[DLNA]|K[SY]|LA|M[EDAINSOT]|N[EVHJMYCD]|O[HKR]|PA|RI|S[CD]|T[NX]|UT|V[TA]|W[AVIY]|AB|BC|MB|NB|NL|NS|ON|PE|QC|SK|NSW|VIC|QLD|TAS|ACT)\b)";
const Expression zip = uR"((?:\d{5}(?:-\d{4})?(?![\p{L}\p{N}-])|[A-Z]\d[A-Z][ ]\d[A-Z]\d\b|\d{4}(?![\p{L}\p{N}-])))";
const Expression ukPostcode = uR"((?:[A-Z]{1,2}\d[A-Z\d]?[ ]\d[A-Z]{2}\b))";
const Expression englishTown = u"(?:" + lineBreak + town + u"(?:,?[ ]" + state + u"(?:,?[ ]" + zip + u")?|" +
                               breakOrBlank + ukPostcode + uR"(|,?[ ]\d{5}(?:-\d{4})?(?![\p{L}\p{N}-]))))";
/// A street with a word of everyday use in its name is one only with the town behind it.
const Expression english = englishNumber + streetName + u"(?:" + streetWord + u"(?:[ ]" + compass + u"\\b)?" + unit +
                           u"(?:" + englishTown + country + u")?|" + everydayWord + u"(?:[ ]" + compass + u"\\b)?" +
                           unit + englishTown + country + u")";

// German: "Musterstraße 12a, 12345 Berlin", "Unter den Linden 5\n10117 Berlin".
const Expression houseNumber =
    uR"([ ]\d{1,4}[ ]?(?:[a-zA-Z](?![\p{L}\p{M}\p{N}]))?(?:[ ]?[-–/+][ ]?\d{1,4}[a-z]?)?(?![\p{L}\p{M}\p{N}%€$:]|[.,]\d))";
const Expression wordStart = uR"((?<![\p{L}\p{M}\p{N}_./@-]))";
const Expression germanWord = uR"(\p{Lu}[\p{L}\p{M}.-]{1,30})";
const Expression germanStreet = uR"((?:\p{Lu}[\p{L}\p{M}-]{1,30}(?:straße|strasse|str\.)|(?:)" + germanWord +
                                u"[ ]){1,3}?(?:Straße|Strasse|Str\\.)|"
                                uR"(Straße (?:des|der|am|zum|von)[ ](?:\d{1,2}\.[ ])?)" +
                                germanWord + u")";
const Expression otherGermanStreet =
    uR"((?:\p{Lu}[\p{L}\p{M}-]{1,30}(?:weg|platz|allee|gasse|ring|damm|ufer|chaussee|steig|pfad|promenade|markt|hof|berg|graben|wall|park)|(?:)" +
    germanWord +
    uR"([ ]){1,3}?(?:Weg|Platz|Allee|Gasse|Ring|Damm|Ufer|Chaussee|Steig|Pfad|Promenade|Markt|Hof)|(?:Am|An der|An den|Auf dem|Auf der|Im|In der|In den|Unter den|Zum|Zur)[ ](?:)" +
    germanWord + u"[ ]){0,2}?" + germanWord + u")";
const Expression germanTown =
    lineBreak +
    uR"((?:(?:D|DE|A|AT|CH)[-– ])?\d{4,5}[ ]\p{Lu}[\p{L}\p{M}.-]{1,30})"
    uR"((?:[ ](?:(?:am|an|der|im|in|bei|ob|vor|a\.|d\.)[ ]){0,2}\p{Lu}[\p{L}\p{M}.-]{1,30}){0,2}(?:[ ]?\([\p{L}. ]{2,20}\)|/[\p{L}]{2,20})?)";
const Expression german = wordStart + u"(?:" + germanStreet + houseNumber + u"(?:" + germanTown + country + u")?|" +
                          otherGermanStreet + houseNumber + germanTown + country + u")";

std::u16string_view withoutTrail(std::u16string_view address) {
  while (!address.empty() && std::u16string_view(u" ,-").find(address.back()) != std::u16string_view::npos) {
    address.remove_suffix(1);
  }
  return address;
}

DetectedItem itemOf(std::u16string_view address, std::string_view mapBase) {
  auto text = Text::toUtf8(address);
  auto url = MapService::searchUrl(mapBase, text);
  return {.kind = DetectedItem::Kind::address, .text = std::move(text), .url = std::move(url), .date = {}};
}

}  // namespace

DetectedFindings addresses(std::u16string_view text, std::string_view mapBase) {
  static const std::array patterns{Pattern::compile(english), Pattern::compile(german)};
  DetectedFindings findings;
  for (const auto& pattern : patterns) {
    if (!pattern) continue;
    for (const auto& match : pattern->matches(text)) {
      const auto address = withoutTrail(text.substr(match.start, match.length));
      findings.push_back({{match.start, address.size()}, itemOf(address, mapBase)});
    }
  }
  std::ranges::stable_sort(findings, {}, [](const DetectedFinding& finding) { return finding.range.start; });
  return findings;
}

}  // namespace Nimbrel::DetectedAddresses
