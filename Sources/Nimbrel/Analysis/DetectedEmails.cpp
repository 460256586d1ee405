#include "Analysis/DetectedEmails.h"

#include "Analysis/HostNames.h"
#include "Foundation/Text.h"

#include <unicode/uchar.h>

#include <QString>
#include <QUrl>

#include <algorithm>
#include <string>

namespace Nimbrel::DetectedEmails {

namespace {

constexpr std::u16string_view expression =
    uR"((?<![\p{L}\p{M}\p{N}._%+@/\\-])[\p{L}\p{N}_%+][\p{L}\p{M}\p{N}._%+-]{0,63}+(?<![.])@)"
    uR"((?:[\p{L}\p{N}][\p{L}\p{M}\p{N}-]{0,62}+\.(?=\p{L}|\p{N}))++\p{L}{2,24}+(?![\p{M}\p{N}_@(]|-[\p{L}\p{N}]))";

/// "git@host:path" is where a repository lies.
bool isRepository(std::u16string_view behind) {
  return behind.size() > 1 && behind[0] == u':' && !u_isUWhiteSpace(behind[1]);
}

DetectedItem itemOf(std::u16string_view address) {
  // Characters beyond ASCII cannot stand in a URL as they are.
  const QUrl url(QStringLiteral("mailto:") +
                 QString::fromUtf16(address.data(), static_cast<qsizetype>(address.size())));
  const bool isAscii = std::ranges::all_of(address, [](char16_t unit) { return unit < 0x80; });
  const auto text = isAscii ? Text::toUtf8(address) : url.path(QUrl::FullyEncoded).toStdString();
  return {.kind = DetectedItem::Kind::email, .text = text, .url = "mailto:" + text, .date = {}};
}

}  // namespace

DetectedFindings addresses(std::u16string_view text) {
  static const auto pattern = Pattern::compile(expression);
  DetectedFindings findings;
  if (!pattern || text.find(u'@') == std::u16string_view::npos) return findings;
  for (const auto& match : pattern->matches(text)) {
    const auto address = text.substr(match.start, match.length);
    if (isRepository(text.substr(match.end())) || HostNames::endsLikeAFile(address)) continue;
    findings.push_back({match, itemOf(address)});
  }
  return findings;
}

}  // namespace Nimbrel::DetectedEmails
