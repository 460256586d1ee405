#include "Linux/Tray/NotifierItem.h"

#include "Linux/Tray/NotifierHost.h"
#include "Linux/Tray/NotifierTypes.h"

#include <QDBusError>
#include <QDBusObjectPath>
#include <QDBusVariant>

#include <utility>

namespace Nimbrel {

namespace {

const auto itemInterface = QStringLiteral("org.kde.StatusNotifierItem");
const auto propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");
const auto itemPath = QStringLiteral("/StatusNotifierItem");

bool isPointed(const QDBusMessage& message) {
  const auto member = message.member();
  return member == QLatin1String("Activate") || member == QLatin1String("SecondaryActivate") ||
         member == QLatin1String("ContextMenu");
}

}  // namespace

NotifierItem::NotifierItem(const QIcon& picture, const QString& title, Activated activated)
    : activated_(std::move(activated)) {
  registerNotifierTypes();
  take(picture, title);
  auto connection = bus_.get();
  connection.registerVirtualObject(itemPath, this);
  auto call = QDBusMessage::createMethodCall(NotifierNames::watcher(), NotifierNames::watcherPath(),
                                             NotifierNames::watcher(), QStringLiteral("RegisterStatusNotifierItem"));
  call.setAutoStartService(false);
  call << connection.baseService();
  connection.asyncCall(call);
}

void NotifierItem::setLook(const QIcon& picture, const QString& title) {
  take(picture, title);
  announce(QStringLiteral("NewIcon"));
  announce(QStringLiteral("NewTitle"));
  announce(QStringLiteral("NewToolTip"));
}

void NotifierItem::take(const QIcon& picture, const QString& title) {
  title_ = title;
  iconName_ = picture.name();
  pictures_ = QVariant::fromValue(notifierPictures(picture));
}

void NotifierItem::announce(const QString& signal) {
  bus_.get().send(QDBusMessage::createSignal(itemPath, itemInterface, signal));
}

QVariantMap NotifierItem::properties() const {
  const auto none = QVariant::fromValue(NotifierPictures());
  return {{QStringLiteral("Category"), QStringLiteral("ApplicationStatus")},
          {QStringLiteral("Id"), QStringLiteral("nimbrel")},
          {QStringLiteral("Title"), title_},
          {QStringLiteral("Status"), QStringLiteral("Active")},
          {QStringLiteral("WindowId"), 0},
          {QStringLiteral("IconThemePath"), QString()},
          {QStringLiteral("IconName"), iconName_},
          {QStringLiteral("IconPixmap"), pictures_},
          {QStringLiteral("OverlayIconName"), QString()},
          {QStringLiteral("OverlayIconPixmap"), none},
          {QStringLiteral("AttentionIconName"), QString()},
          {QStringLiteral("AttentionIconPixmap"), none},
          {QStringLiteral("AttentionMovieName"), QString()},
          {QStringLiteral("ToolTip"), QVariant::fromValue(NotifierToolTip{.title = title_})},
          {QStringLiteral("ItemIsMenu"), false},
          // What trays know as "none": they call ContextMenu then, or Activate.
          {QStringLiteral("Menu"), QVariant::fromValue(QDBusObjectPath(QStringLiteral("/NO_DBUSMENU")))}};
}

bool NotifierItem::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
  const auto interface = message.interface();
  if (interface == propertiesInterface) return tellProperties(message, connection);
  return (interface.isEmpty() || interface == itemInterface) && obey(message, connection);
}

bool NotifierItem::tellProperties(const QDBusMessage& message, const QDBusConnection& connection) const {
  const auto all = properties();
  if (message.member() == QLatin1String("GetAll") && message.signature() == QLatin1String("s")) {
    return connection.send(message.createReply(QVariant(all)));
  }
  if (message.member() != QLatin1String("Get") || message.signature() != QLatin1String("ss")) return false;
  const auto found = all.constFind(message.arguments().at(1).toString());
  if (found == all.constEnd()) {
    return connection.send(message.createErrorReply(QDBusError::UnknownProperty, QStringLiteral("There is none")));
  }
  return connection.send(message.createReply(QVariant::fromValue(QDBusVariant(*found))));
}

bool NotifierItem::obey(const QDBusMessage& message, const QDBusConnection& connection) {
  const auto arguments = message.arguments();
  if (message.member() == QLatin1String("ProvideXdgActivationToken") && message.signature() == QLatin1String("s")) {
    token_ = arguments.constFirst().toString().toStdString();
    return connection.send(message.createReply());
  }
  // The wheel has nothing to turn.
  if (message.member() == QLatin1String("Scroll")) return connection.send(message.createReply());
  if (!isPointed(message) || message.signature() != QLatin1String("ii")) {
    return connection.send(message.createErrorReply(QDBusError::UnknownMethod, QStringLiteral("There is none")));
  }
  connection.send(message.createReply());
  activated_({arguments.at(0).toInt(), arguments.at(1).toInt()}, std::exchange(token_, {}));
  return true;
}

QString NotifierItem::introspect(const QString& /*path*/) const {
  return QStringLiteral(R"xml(<interface name="org.kde.StatusNotifierItem">
  <property name="Category" type="s" access="read"/>
  <property name="Id" type="s" access="read"/>
  <property name="Title" type="s" access="read"/>
  <property name="Status" type="s" access="read"/>
  <property name="WindowId" type="i" access="read"/>
  <property name="IconThemePath" type="s" access="read"/>
  <property name="IconName" type="s" access="read"/>
  <property name="IconPixmap" type="a(iiay)" access="read"/>
  <property name="OverlayIconName" type="s" access="read"/>
  <property name="OverlayIconPixmap" type="a(iiay)" access="read"/>
  <property name="AttentionIconName" type="s" access="read"/>
  <property name="AttentionIconPixmap" type="a(iiay)" access="read"/>
  <property name="AttentionMovieName" type="s" access="read"/>
  <property name="ToolTip" type="(sa(iiay)ss)" access="read"/>
  <property name="ItemIsMenu" type="b" access="read"/>
  <property name="Menu" type="o" access="read"/>
  <method name="Activate">
    <arg name="x" type="i" direction="in"/>
    <arg name="y" type="i" direction="in"/>
  </method>
  <method name="SecondaryActivate">
    <arg name="x" type="i" direction="in"/>
    <arg name="y" type="i" direction="in"/>
  </method>
  <method name="ContextMenu">
    <arg name="x" type="i" direction="in"/>
    <arg name="y" type="i" direction="in"/>
  </method>
  <method name="Scroll">
    <arg name="delta" type="i" direction="in"/>
    <arg name="orientation" type="s" direction="in"/>
  </method>
  <method name="ProvideXdgActivationToken">
    <arg name="token" type="s" direction="in"/>
  </method>
  <signal name="NewTitle"/>
  <signal name="NewIcon"/>
  <signal name="NewToolTip"/>
</interface>
)xml");
}

}  // namespace Nimbrel
