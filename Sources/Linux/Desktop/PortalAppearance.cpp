#include "Linux/Desktop/PortalAppearance.h"

#include "Portal/SessionBus.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QMap>
#include <QUuid>
#include <QVariantMap>

#include <array>
#include <utility>

namespace Nimbrel {

namespace {

// Nobody waits, but the portal may have to be started.
constexpr int longestAnswerMilliseconds = 25'000;
constexpr auto portalService = "org.freedesktop.portal.Desktop";
constexpr auto portalPath = "/org/freedesktop/portal/desktop";
constexpr auto settingsInterface = "org.freedesktop.portal.Settings";
constexpr auto appearanceNamespace = "org.freedesktop.appearance";

/// Three parts between 0 and 1; anything else means that the desktop has no accent.
std::optional<QColor> accentFrom(const QVariant& value) {
  if (!value.canConvert<QDBusArgument>()) return std::nullopt;
  const auto argument = value.value<QDBusArgument>();
  if (argument.currentSignature() != QLatin1String("(ddd)")) return std::nullopt;
  std::array<double, 3> parts{};
  argument.beginStructure();
  for (auto& part : parts) argument >> part;
  argument.endStructure();
  for (const auto part : parts) {
    // Of what is no number neither holds.
    const bool isShare = part >= 0 && part <= 1;
    if (!isShare) return std::nullopt;
  }
  return QColor::fromRgbF(static_cast<float>(parts[0]), static_cast<float>(parts[1]), static_cast<float>(parts[2]));
}

std::optional<Appearance::Scheme> schemeFrom(uint value) {
  if (value == 1) return Appearance::Scheme::Dark;
  if (value == 2) return Appearance::Scheme::Light;
  return std::nullopt;
}

void apply(Appearance& appearance, const QString& key, const QVariant& value) {
  if (key == QLatin1String("color-scheme")) {
    appearance.scheme = schemeFrom(value.toUInt());
  } else if (key == QLatin1String("accent-color")) {
    appearance.accent = accentFrom(value);
  } else if (key == QLatin1String("contrast")) {
    appearance.hasHighContrast = value.toUInt() == 1;
  }
}

class PortalAppearance final : public QObject, public DesktopAppearance {
  Q_OBJECT

 public:
  PortalAppearance() = default;
  ~PortalAppearance() override {
    if (!busName_.isEmpty()) QDBusConnection::disconnectFromBus(busName_);
  }
  PortalAppearance(const PortalAppearance&) = delete;
  PortalAppearance& operator=(const PortalAppearance&) = delete;

  [[nodiscard]] Appearance current() const override { return appearance_; }

  void observe(Callback onChange) override {
    onChange_ = std::move(onChange);
    if (onChange_ && busName_.isEmpty()) open();
  }

 private Q_SLOTS:
  void settingChanged(const QString& group, const QString& key, const QDBusVariant& value) {
    if (group != QLatin1String(appearanceNamespace)) return;
    auto next = appearance_;
    apply(next, key, value.variant());
    become(next);
  }

 private:
  void open() {
    const auto address = SessionBus::address();
    if (address.empty()) return;
    busName_ = QUuid::createUuid().toString(QUuid::WithoutBraces);
    auto connection = QDBusConnection::connectToBus(QString::fromStdString(address), busName_);
    if (!connection.isConnected()) return;
    // The receiver is found by the names of its types, which have to be known by then.
    qRegisterMetaType<QDBusVariant>("QDBusVariant");
    // Changes are listened to before the first question, so that none falls in between.
    connection.connect(QLatin1String(portalService), QLatin1String(portalPath), QLatin1String(settingsInterface),
                       QStringLiteral("SettingChanged"), this,
                       // The bus knows its receivers by text alone.
                       "1settingChanged(QString,QString,QDBusVariant)");
    auto* watcher = new QDBusServiceWatcher(QLatin1String(portalService), connection,
                                            QDBusServiceWatcher::WatchForRegistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceRegistered, this, &PortalAppearance::ask);
    ask();
  }

  void ask() {
    auto call = QDBusMessage::createMethodCall(QLatin1String(portalService), QLatin1String(portalPath),
                                               QLatin1String(settingsInterface), QStringLiteral("ReadAll"));
    call << QStringList{QLatin1String(appearanceNamespace)};
    const auto pending = QDBusConnection(busName_).asyncCall(call, longestAnswerMilliseconds);
    auto* watcher = new QDBusPendingCallWatcher(pending, this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
      watcher->deleteLater();
      take(watcher->reply());
    });
  }

  void take(const QDBusMessage& reply) {
    if (reply.type() != QDBusMessage::ReplyMessage || reply.signature() != QLatin1String("a{sa{sv}}")) return;
    const auto groups = qdbus_cast<QMap<QString, QVariantMap>>(reply.arguments().constFirst());
    Appearance next;
    const auto settings = groups.value(QLatin1String(appearanceNamespace));
    for (auto setting = settings.begin(); setting != settings.end(); ++setting) {
      apply(next, setting.key(), setting.value());
    }
    become(next);
  }

  void become(const Appearance& next) {
    if (next == appearance_) return;
    appearance_ = next;
    if (onChange_) onChange_(appearance_);
  }

  QString busName_;  ///< by which Qt knows the connection; empty before the first observe()
  Appearance appearance_;
  Callback onChange_;
};

}  // namespace

std::unique_ptr<DesktopAppearance> makePortalAppearance() { return std::make_unique<PortalAppearance>(); }

}  // namespace Nimbrel

#include "PortalAppearance.moc"
