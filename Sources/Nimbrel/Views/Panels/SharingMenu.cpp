#include "Views/Panels/SharingMenu.h"

#include "Store/Store.h"
#include "Views/Shared/ShotWords.h"
#include "Views/Shared/Symbols.h"

#include <QFile>
#include <QStyle>

namespace Nimbrel {

namespace {

constexpr QPoint fromUpperRight(340, 160);

// Of those without an icon of their own.
const auto senderSymbol = QStringLiteral("square.and.arrow.up");
const auto openerSymbol = QStringLiteral("questionmark.square");

}  // namespace

SharingMenu::SharingMenu(Store& store, const ShotPtr& shot, QWidget* parent)
    : QMenu(parent), store_(store), shot_(shot) {
  setObjectName(QStringLiteral("sharingMenu"));
  setAccessibleName(tr("Share"));
  addAction(Symbols::icon(QStringLiteral("square.on.square")), tr("Copy File"), this, [this] {
    store_.copyFile(*shot_);
  })->setObjectName(QStringLiteral("share.copyFile"));
  addAction(Symbols::icon(QStringLiteral("envelope")), tr("Email…"), this, [this] {
    store_.mail(*shot_);
  })->setObjectName(QStringLiteral("share.mail"));
  auto* openers = addMenu(Symbols::icon(QStringLiteral("arrow.up.forward.app")), tr("Open With"));
  openers->setObjectName(QStringLiteral("share.openWith"));
  // Asked for when they are looked at, since the file is.
  connect(openers, &QMenu::aboutToShow, this, [this, openers] { fillOpeners(*openers); });
  addSenders();
  connect(&store_, &Store::sensitiveLocked, this, &QMenu::close);
  // Queued: an action is triggered after the menu has hidden.
  connect(this, &QMenu::aboutToHide, this, &QObject::deleteLater, Qt::QueuedConnection);
}

void SharingMenu::addSenders() {
  const auto senders = store_.senders();
  if (senders.empty()) return;
  addSeparator();
  for (const auto& sender : senders) {
    auto* action = addAction(iconOf(sender, senderSymbol), menuText(sender.name), this,
                             [this, id = sender.id] { store_.send(*shot_, id); });
    action->setObjectName(QStringLiteral("share.send"));
  }
}

void SharingMenu::fillOpeners(QMenu& menu) {
  menu.clear();
  for (const auto& opener : store_.openers(*shot_)) {
    menu.addAction(iconOf(opener, openerSymbol), menuText(opener.name), this,
                   [this, id = opener.id] { store_.openWith(*shot_, id); });
  }
  if (menu.isEmpty()) menu.addAction(tr("No Applications"))->setEnabled(false);
}

QIcon SharingMenu::iconOf(const Workspace::Taker& taker, const QString& otherwise) {
  const auto name = QFile::decodeName(taker.icon.c_str());
  const auto icon = name.startsWith(QLatin1Char('/')) ? QIcon(name) : QIcon::fromTheme(name);
  // The icon of a file that is gone says only when asked for its sizes that it has none.
  return icon.isNull() || icon.availableSizes().isEmpty() ? Symbols::icon(otherwise) : icon;
}

void share(Store& store, const ShotPtr& shot, QWidget& window) {
  auto* menu = new SharingMenu(store, shot, &window);
  const QPoint place(window.width() - fromUpperRight.x(), fromUpperRight.y());
  menu->popup(window.mapToGlobal(QStyle::visualPos(window.layoutDirection(), window.rect(), place)));
}

}  // namespace Nimbrel
