#pragma once

#include "Platform/SingleInstance.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>

#include <string>

namespace Nimbrel {

/// The object by which a session bus reaches an application (freedesktop.org, "Desktop Entries", "D-Bus
/// Activation"). Several users' catalogues may be worked with on one bus: a request that names another one is refused.
/// Main thread.
class ApplicationObject final : public QDBusVirtualObject {
 public:
  ApplicationObject(const std::string& catalogueFolder, SingleInstance::Handler onRequest);

  /// Where it stands on the bus: "/com/example/thing" for "com.example.thing".
  [[nodiscard]] static QString pathOf(const std::string& identifier);

  /// What asks another process with that identifier and catalogue for this.
  [[nodiscard]] static QDBusMessage callFor(const std::string& identifier, const std::string& catalogueFolder,
                                            const StartRequest& request);

  /// Whether an answer to that says that the other process works with another catalogue.
  [[nodiscard]] static bool isOfOtherCatalogue(const QDBusMessage& answer);

  [[nodiscard]] QString introspect(const QString& path) const override;
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

 private:
  QString catalogue_;  ///< as an address, since a path need not be text
  SingleInstance::Handler onRequest_;
};

}  // namespace Nimbrel
