#include "Views/Gallery/CellContent.h"

#include "Foundation/Formats.h"
#include "Views/Shared/ShotWords.h"

#include <QStringList>

namespace Nimbrel {

namespace {

QString sourceOf(const Shot& shot, const ContentGroup& group) {
  return shownText(group.kind == ContentGroup::Kind::unknown ? Formats::shortTime(shot.date) : group.title);
}

}  // namespace

QString shortTitle(const Store& store, const Shot& shot) {
  return store.isProtected(shot) ? QStringLiteral("Sensitive") : shownText(shot.name);
}

CellContent cellContent(const Store& store, const Shot& shot, AppIcons& icons) {
  const bool isProtected = store.isProtected(shot);
  const auto& group = store.derived().contentOf(shot.id);
  const auto symbol = shot.symbol();
  return {.title = shownName(store, shot),
          .source = isProtected ? QStringLiteral("Locked") : sourceOf(shot, group),
          .icon = group.kind == ContentGroup::Kind::app ? icons.icon(group.title, group.bundleID) : QIcon(),
          .symbol = QString::fromUtf8(symbol.data(), static_cast<qsizetype>(symbol.size())),
          .isProtected = isProtected,
          .isInInbox = !shot.filed,
          .isFavorite = shot.favorite};
}

QString spokenName(const CellContent& content) {
  QStringList parts{content.title, content.source};
  if (!content.isProtected && content.isInInbox) parts.append(QStringLiteral("Inbox"));
  if (!content.isProtected && content.isFavorite) parts.append(QStringLiteral("favourite"));
  return parts.join(QStringLiteral(", "));
}

}  // namespace Nimbrel
