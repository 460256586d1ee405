#include "Views/Shared/ShotWords.h"

#include "Foundation/Formats.h"
#include "Store/Store.h"
#include "Views/Shared/ElidedLabel.h"

#include <QCoreApplication>

#include <numeric>

namespace Nimbrel {

QString shownText(std::string_view text) {
  return oneLine(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
}

QString menuText(std::string_view text) { return shownText(text).replace(QLatin1Char('&'), QLatin1String("&&")); }

QString shownName(const Store& store, const Shot& shot) {
  if (store.isProtected(shot)) return QCoreApplication::translate("ShotWords", "Sensitive screenshot");
  return shownText(shot.name);
}

std::int64_t totalBytes(const ShotList& shots) {
  return std::accumulate(shots.begin(), shots.end(), std::int64_t{0},
                         [](std::int64_t sum, const ShotPtr& shot) { return sum + shot->bytes; });
}

QString countAndSize(const ShotList& shots) {
  return QCoreApplication::translate("ShotWords", "%1 shots · %2")
      .arg(QString::number(shots.size()), shownText(Formats::byteCount(totalBytes(shots))));
}

}  // namespace Nimbrel
