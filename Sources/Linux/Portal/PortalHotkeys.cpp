#include "Linux/Portal/PortalHotkeys.h"

#include "Linux/Portal/ShortcutSession.h"

#include <QDBusConnectionInterface>
#include <QObject>

#include <array>
#include <cstddef>
#include <set>
#include <utility>

namespace Nimbrel {

namespace {

/// How a combination is written to the portal.
struct Wish {
  HotkeyAction action;
  const char* id;
  const char* description;
  const char* trigger;  ///< after the standard for shortcuts of freedesktop.org
};

constexpr std::array wishes{
    Wish{HotkeyAction::capture, "capture", "Take a screenshot of a selection", "CTRL+SHIFT+5"},
    Wish{HotkeyAction::quickFind, "quick-find", "Find a screenshot", "CTRL+SHIFT+space"},
};

constexpr int nameExists = 3;  ///< the bus's answer to who asks for a name that somebody has

/// What the log is told, in the portal's own numbers where it has some.
HotkeyFailure failureOf(ShortcutSession::End end) {
  switch (end) {
    case ShortcutSession::End::absent:
      return {};
    case ShortcutSession::End::cancelled:
      return {.error = 1, .isTemporary = false};
    case ShortcutSession::End::refused:
      return {.error = 2, .isTemporary = false};
    case ShortcutSession::End::orphaned:
      // It is started again when it is asked.
      return {.error = 2, .isTemporary = true};
  }
  return {};
}

const Wish& wishFor(HotkeyAction action) { return wishes[static_cast<std::size_t>(action)]; }

class PortalHotkeys final : public QObject, public HotkeyService {
 public:
  explicit PortalHotkeys(std::string ownIdentifier) : ownIdentifier_(std::move(ownIdentifier)) {}

  void observe(Events events) override { events_ = std::move(events); }
  void hold(HotkeyAction action) override;
  void release(HotkeyAction action) override;

 private:
  [[nodiscard]] bool takeName(HotkeyAction action);
  void giveUpName(HotkeyAction action);
  void bindSoon();
  void bind();
  void hearPress(const QString& id);
  void hearLeftOut(const QStringList& ids);
  void hearEnd(ShortcutSession::End end);
  void fail(HotkeyAction action, const HotkeyFailure& failure);
  [[nodiscard]] QString nameFor(HotkeyAction action) const;

  std::string ownIdentifier_;
  Events events_;
  std::set<HotkeyAction> held_;  ///< or asked for
  bool isBindingSoon_ = false;
  std::unique_ptr<PortalBus> bus_;
  std::unique_ptr<ShortcutSession> session_;
};

void PortalHotkeys::hold(HotkeyAction action) {
  if (held_.contains(action)) return;
  if (!bus_) {
    auto bus = PortalBus::open();
    if (!bus) return fail(action, {});
    bus_ = std::move(bus).value();
  }
  if (!takeName(action)) return fail(action, {.error = nameExists, .isTemporary = true});
  held_.insert(action);
  bindSoon();
}

void PortalHotkeys::release(HotkeyAction action) {
  if (held_.erase(action) == 0) return;
  giveUpName(action);
  bindSoon();
}

QString PortalHotkeys::nameFor(HotkeyAction action) const {
  return QString::fromStdString(ownIdentifier_) + QLatin1String(".hotkey.") + QLatin1String(wishFor(action).id);
}

bool PortalHotkeys::takeName(HotkeyAction action) {
  auto* bus = bus_->connection().interface();
  if (bus == nullptr) return false;
  const auto reply = bus->registerService(nameFor(action), QDBusConnectionInterface::DontQueueService,
                                          QDBusConnectionInterface::DontAllowReplacement);
  return reply.isValid() && reply.value() == QDBusConnectionInterface::ServiceRegistered;
}

void PortalHotkeys::giveUpName(HotkeyAction action) {
  if (auto* bus = bus_->connection().interface()) bus->unregisterService(nameFor(action));
}

/// All that is wanted in one turn of the event loop is asked for at once, since a session takes shortcuts only once.
void PortalHotkeys::bindSoon() {
  if (!std::exchange(isBindingSoon_, true)) QMetaObject::invokeMethod(this, &PortalHotkeys::bind, Qt::QueuedConnection);
}

void PortalHotkeys::bind() {
  isBindingSoon_ = false;
  session_.reset();
  if (held_.empty()) return bus_.reset();
  QList<PortalShortcut> shortcuts;
  for (const auto action : held_) {
    const auto& wish = wishFor(action);
    shortcuts.append(
        PortalShortcut{.id = QLatin1String(wish.id),
                       .properties = {{QStringLiteral("description"), QLatin1String(wish.description)},
                                      {QStringLiteral("preferred_trigger"), QLatin1String(wish.trigger)}}});
  }
  session_ = std::make_unique<ShortcutSession>(
      *bus_, std::move(shortcuts),
      ShortcutSession::Events{.activated = [this](const QString& id) { hearPress(id); },
                              .leftOut = [this](const QStringList& ids) { hearLeftOut(ids); },
                              .ended = [this](ShortcutSession::End end) { hearEnd(end); }});
}

void PortalHotkeys::hearPress(const QString& id) {
  for (const auto& wish : wishes) {
    if (id == QLatin1String(wish.id) && held_.contains(wish.action) && events_.pressed) events_.pressed(wish.action);
  }
}

void PortalHotkeys::hearLeftOut(const QStringList& ids) {
  for (const auto& wish : wishes) {
    if (!ids.contains(QLatin1String(wish.id)) || held_.erase(wish.action) == 0) continue;
    giveUpName(wish.action);
    fail(wish.action, failureOf(ShortcutSession::End::refused));
  }
}

void PortalHotkeys::hearEnd(ShortcutSession::End end) {
  session_.reset();
  const auto lost = std::exchange(held_, {});
  for (const auto action : lost) giveUpName(action);
  for (const auto action : lost) fail(action, failureOf(end));
}

void PortalHotkeys::fail(HotkeyAction action, const HotkeyFailure& failure) {
  if (events_.failed) events_.failed(action, failure);
}

}  // namespace

std::unique_ptr<HotkeyService> makePortalHotkeys(std::string ownIdentifier) {
  return std::make_unique<PortalHotkeys>(std::move(ownIdentifier));
}

}  // namespace Nimbrel
