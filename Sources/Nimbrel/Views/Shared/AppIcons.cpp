#include "Views/Shared/AppIcons.h"

#include "Foundation/Text.h"
#include "Model/AppIdentity.h"

#include <QChar>
#include <QGuiApplication>
#include <QString>

#include <algorithm>

namespace Nimbrel {

namespace {

bool isInvisible(char32_t code) {
  const auto category = QChar::category(code);
  return category == QChar::Other_Format || category == QChar::Other_Control;
}

/// Without the marks that order the writing of a name. Those inside a character, as between the people of a family,
/// belong to it.
std::string visibleName(std::string_view name) {
  std::string visible;
  while (!name.empty()) {
    const auto character = Text::firstCharacters(name, 1);
    const auto codes = QString::fromUtf8(character.data(), static_cast<qsizetype>(character.size())).toUcs4();
    if (!std::ranges::all_of(codes, isInvisible)) visible += character;
    name.remove_prefix(character.size());
  }
  return std::string(Text::trimmed(visible));
}

QIcon iconOfApplication(const InstalledApplications::IconName& name) {
  const auto text = QString::fromStdString(name);
  auto icon = name.starts_with('/') ? QIcon(text) : QIcon::fromTheme(text);
  // One of a picture that is gone says of itself that it is none only when it is drawn.
  if (!icon.availableSizes().isEmpty() || !icon.pixmap(1).isNull()) return icon;
  return QIcon::fromTheme(QStringLiteral("application-x-executable"));
}

}  // namespace

QIcon AppIcons::icon(std::string_view name, std::string_view bundleID) {
  const std::string key(bundleID.empty() ? name : bundleID);
  if (const auto known = cache_.find(key); known != cache_.end()) return known->second;
  return cache_.emplace(key, lookup(name, bundleID)).first->second;
}

QIcon AppIcons::lookup(std::string_view name, std::string_view bundleID) const {
  if (AppIdentity::isOurs(bundleID) && !QGuiApplication::windowIcon().isNull()) return QGuiApplication::windowIcon();
  if (!bundleID.empty()) {
    if (const auto found = applications_.iconOfIdentifier(bundleID)) return iconOfApplication(*found);
  }
  const auto visible = visibleName(name);
  if (visible.empty()) return {};
  const auto found = applications_.iconOfName(visible);
  return found ? iconOfApplication(*found) : QIcon();
}

}  // namespace Nimbrel
