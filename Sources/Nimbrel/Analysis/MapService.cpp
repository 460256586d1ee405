#include "Analysis/MapService.h"

#include <QString>
#include <QUrl>

namespace Nimbrel::MapService {

std::string_view baseUrl() { return NIMBREL_MAP_SERVICE_URL; }

std::string searchUrl(std::string_view base, std::string_view text) {
  const auto toQString = [](std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
  };
  QUrl url(toQString(base), QUrl::StrictMode);
  url.setPath(QStringLiteral("/"));
  // Encoded here: left to itself a query keeps a plus sign, which servers read as a blank.
  url.setQuery(QStringLiteral("q=") + QString::fromLatin1(QUrl::toPercentEncoding(toQString(text))), QUrl::StrictMode);
  return url.toEncoded().toStdString();
}

}  // namespace Nimbrel::MapService
