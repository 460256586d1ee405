#include "Analysis/DetectedLinks.h"

#include "Analysis/HostNames.h"
#include "Foundation/Text.h"
#include "Foundation/UserLocale.h"

#include <QString>
#include <QUrl>

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <utility>

namespace Nimbrel::DetectedLinks {

namespace {

/// What may stand in an address: no white space, control or format character, quote, angle bracket or CJK punctuation.
const std::u16string urlCharacters = uR"([^\s\p{C}<>"“”„«»`{}|\\^\uFFFD\u3000-\u303F\uFF00-\uFFEF]++)";

const std::u16string withScheme =
    uR"((?i)(?<![\p{L}\p{N}])(?:(?:https?|ftps?|sftp)://(?=[\p{L}\p{N}\[_%~])|mailto:(?=[\p{L}\p{N}_%+.-]{1,64}@)))" +
    urlCharacters;

const std::u16string withWww =
    uR"((?i)(?<![\p{L}\p{N}@._/\\-])www\d?\.[\p{L}\p{N}][\p{L}\p{M}\p{N}-]{0,62}\.(?=\p{L}{2}|[\p{L}\p{N}-]{1,63}\.))" +
    urlCharacters;

/// A label before a dot is taken only when another one follows, so that the full stop of a sentence is left.
const std::u16string bareHost =
    uR"((?<![\p{L}\p{M}\p{N}@._/\\$#%&+~-]|::)(?:[\p{L}\p{N}][\p{L}\p{M}\p{N}-]{0,62}+\.(?=[\p{L}\p{N}]))++)"
    uR"([\p{L}\p{N}-]{2,63}+(?![\p{M}@_(\[\\$=])(?::\d{1,5}+(?!\d))?(?:[/?#])" +
    urlCharacters + uR"()?)";

constexpr std::u16string_view sentenceMarks = u".,;:!?'\"…·*’‘”،。";

char16_t openerOf(char16_t closer) {
  switch (closer) {
    case u')':
      return u'(';
    case u']':
      return u'[';
    default:
      return 0;
  }
}

/// Without the marks and brackets at the end that belong to the sentence around it.
std::u16string_view withoutSentence(std::u16string_view address) {
  const auto surplusOf = [&](char16_t closer) {
    return std::ranges::count(address, closer) - std::ranges::count(address, openerOf(closer));
  };
  std::array surplus{std::pair{u')', surplusOf(u')')}, std::pair{u']', surplusOf(u']')}};
  while (!address.empty()) {
    const auto last = address.back();
    const auto bracket = std::ranges::find(surplus, last, &std::pair<char16_t, std::ptrdiff_t>::first);
    const bool isSurplus = bracket != surplus.end() && bracket->second > 0;
    if (!isSurplus && sentenceMarks.find(last) == std::u16string_view::npos) break;
    if (isSurplus) --bracket->second;
    address.remove_suffix(1);
  }
  return address;
}

bool isAscii(std::u16string_view text) {
  return std::ranges::all_of(text, [](char16_t unit) { return unit < 0x80; });
}

/// The address as a link is passed on: as it was written where that is a link already, with its other characters
/// encoded otherwise. Absent when it is none.
std::optional<std::string> absoluteUrl(const std::u16string& address) {
  const auto written = QString::fromStdU16String(address);
  const QUrl strict(written, QUrl::StrictMode);
  const bool isMail = strict.scheme() == QStringLiteral("mailto");
  if (isAscii(address) && strict.isValid() && (isMail || !strict.host().isEmpty())) return Text::toUtf8(address);
  const QUrl tolerant(written, QUrl::TolerantMode);
  if (!tolerant.isValid() || (tolerant.host().isEmpty() && !isMail)) return std::nullopt;
  return tolerant.toEncoded().toStdString();
}

std::optional<DetectedItem> linkItem(std::u16string_view address, std::u16string_view front) {
  auto url = absoluteUrl(std::u16string(front) + std::u16string(address));
  if (!url) return std::nullopt;
  return DetectedItem{.kind = DetectedItem::Kind::link, .text = *url, .url = *url, .date = {}};
}

constexpr std::string_view mailScheme = "mailto:";

std::optional<DetectedItem> mailItem(std::u16string_view address) {
  // The scheme counts in any case, and is passed on in the usual one.
  auto url = absoluteUrl(u"mailto:" + std::u16string(address.substr(mailScheme.size())));
  if (!url) return std::nullopt;
  std::string text = *url;
  for (auto place = text.find(mailScheme); place != std::string::npos; place = text.find(mailScheme)) {
    text.erase(place, mailScheme.size());
  }
  return DetectedItem{.kind = DetectedItem::Kind::email, .text = text, .url = *url, .date = {}};
}

std::optional<DetectedItem> itemWithScheme(std::u16string_view address) {
  return address.front() == u'm' || address.front() == u'M' ? mailItem(address) : linkItem(address, u"");
}

/// Adds what `itemOf` makes of each match once the sentence is taken off.
template <class ItemOf>
void collect(const std::optional<Pattern>& pattern, std::u16string_view text, DetectedFindings& findings,
             const ItemOf& itemOf) {
  if (!pattern) return;
  for (const auto& match : pattern->matches(text)) {
    const auto address = withoutSentence(text.substr(match.start, match.length));
    if (address.empty()) continue;
    if (auto item = itemOf(address)) findings.push_back({{match.start, address.size()}, std::move(*item)});
  }
}

bool isHost(std::u16string_view address, std::u16string_view country) {
  const auto end = std::min(address.find_first_of(u":/?#"), address.size());
  const auto path = std::min(address.find_first_of(u"/?#"), address.size());
  return HostNames::isBareHost(address.substr(0, end), address.substr(path), country);
}

}  // namespace

DetectedFindings explicitLinks(std::u16string_view text) {
  static const auto schemes = Pattern::compile(withScheme);
  static const auto www = Pattern::compile(withWww);
  DetectedFindings findings;
  if (text.find(u':') != std::u16string_view::npos) collect(schemes, text, findings, itemWithScheme);
  const auto ofSchemes = findings.size();
  collect(www, text, findings, [](std::u16string_view address) { return linkItem(address, u"http://"); });
  std::ranges::inplace_merge(findings, findings.begin() + static_cast<std::ptrdiff_t>(ofSchemes), {},
                             [](const DetectedFinding& finding) { return finding.range.start; });
  return findings;
}

DetectedFindings bareHosts(std::u16string_view text) {
  static const auto pattern = Pattern::compile(bareHost);
  DetectedFindings findings;
  if (text.find(u'.') == std::u16string_view::npos) return findings;
  const auto country = Text::toUtf16(Text::asciiLowered(UserLocale::region()));
  collect(pattern, text, findings, [&](std::u16string_view address) {
    return isHost(address, country) ? linkItem(address, u"http://") : std::nullopt;
  });
  return findings;
}

}  // namespace Nimbrel::DetectedLinks
