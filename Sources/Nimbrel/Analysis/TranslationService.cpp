#include "Analysis/TranslationService.h"

#include "Foundation/Text.h"

#include <QString>
#include <QUrl>

#include <cstddef>

namespace Nimbrel::TranslationService {

namespace {

constexpr std::size_t mostCharacters = 5000;

QString toQString(std::string_view utf8) { return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size())); }

}  // namespace

std::string_view baseUrl() { return NIMBREL_TRANSLATION_SERVICE_URL; }

std::optional<std::string> translationUrl(std::string_view base, std::string_view text) {
  QUrl url(toQString(base), QUrl::StrictMode);
  if (!url.isValid() || url.scheme().isEmpty() || url.host().isEmpty()) return std::nullopt;
  url.setPath(QStringLiteral("/"));
  // Encoded here: left to itself a query keeps a plus sign, which servers read as a blank.
  const auto encoded = QUrl::toPercentEncoding(toQString(Text::firstCharacters(text, mostCharacters)));
  url.setQuery(QStringLiteral("sl=auto&tl=en&text=") + QString::fromLatin1(encoded) + QStringLiteral("&op=translate"),
               QUrl::StrictMode);
  return url.toEncoded().toStdString();
}

}  // namespace Nimbrel::TranslationService
