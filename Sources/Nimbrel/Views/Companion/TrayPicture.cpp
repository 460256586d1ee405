#include "Views/Companion/TrayPicture.h"

#include "Model/AppIdentity.h"
#include "Views/Shared/Painting.h"
#include "Views/Shared/Symbols.h"

#include <QPixmap>

#include <array>

namespace Nimbrel {

namespace {

constexpr std::array sides{16, 22, 24, 32, 44, 48, 64};
constexpr double radiusShare = 0.22;
constexpr double symbolShare = 0.82;

QPixmap plate(int side) {
  QPixmap pixmap(side, side);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.setRenderHint(QPainter::Antialiasing);
  Painting::fillRounded(painter, pixmap.rect(), side * radiusShare, themeColor(Token::AccentFill));
  Symbols::paint(painter, pixmap.rect(), QStringLiteral("camera.viewfinder"), side * symbolShare,
                 themeColor(Token::OnAccent));
  return pixmap;
}

}  // namespace

QIcon trayPicture() {
  const auto name = QString::fromStdString(AppIdentity::bundleIdentifier()) + QLatin1String("-symbolic");
  if (QIcon::hasThemeIcon(name)) return QIcon::fromTheme(name);
  QIcon icon;
  for (const int side : sides) icon.addPixmap(plate(side));
  return icon;
}

}  // namespace Nimbrel
