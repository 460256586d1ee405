#include "Linux/X11/X11FrontApplication.h"

#include "Foundation/FilePath.h"
#include "Linux/Desktop/DesktopEntries.h"
#include "Linux/Desktop/ProgramFile.h"
#include "Linux/X11/WindowFacts.h"

#include <QTimer>

#include <chrono>
#include <utility>

namespace Nimbrel {

using namespace std::chrono_literals;

namespace {

// No window is active for a moment while one takes over from another.
constexpr auto settling = 80ms;

ProgramTraces tracesOf(const WindowFacts& facts) {
  const auto sandboxed = sandboxedApplication(facts.process);
  return {.desktopEntry = sandboxed.empty() ? facts.desktopEntry : sandboxed,
          .className = facts.className,
          .instanceName = facts.instanceName,
          .executable = std::string(FilePath::lastComponent(programFileOf(facts.process)))};
}

const std::string& firstFilled(const std::string& first, const std::string& second) {
  return first.empty() ? second : first;
}

class X11FrontApplication final : public FrontApplication {
 public:
  X11FrontApplication(std::shared_ptr<XcbConnection> connection, std::string ownIdentifier);

  [[nodiscard]] std::optional<Application> current() const override;
  void observe(Callback onActivation) override;

 private:
  [[nodiscard]] Application applicationOf(const WindowFacts& facts) const;
  void hear(const xcb_generic_event_t& event);
  void lookAgain();

  std::shared_ptr<XcbConnection> connection_;
  std::string ownIdentifier_;
  mutable DesktopEntries entries_;
  QTimer settling_;
  Callback onActivation_;
  std::optional<Application> last_;  ///< the one that was told last
};

X11FrontApplication::X11FrontApplication(std::shared_ptr<XcbConnection> connection, std::string ownIdentifier)
    : connection_(std::move(connection)), ownIdentifier_(std::move(ownIdentifier)) {
  settling_.setSingleShot(true);
  settling_.setInterval(settling);
  QObject::connect(&settling_, &QTimer::timeout, &settling_, [this] { lookAgain(); });
  QObject::connect(connection_.get(), &XcbConnection::eventCame, &settling_,
                   [this](const xcb_generic_event_t& event) { hear(event); });
}

std::optional<Application> X11FrontApplication::current() const {
  if (!connection_->isUp()) return std::nullopt;
  const auto window = activeWindow(*connection_);
  const auto facts = window ? factsOf(*connection_, *window) : WindowFacts();
  connection_->flush();
  if (!window) return std::nullopt;
  auto application = applicationOf(facts);
  return application.name.empty() ? std::nullopt : std::optional(std::move(application));
}

Application X11FrontApplication::applicationOf(const WindowFacts& facts) const {
  auto application = entries_.find(tracesOf(facts)).value_or(Application{});
  if (application.name.empty()) application.name = firstFilled(facts.className, facts.instanceName);
  if (application.name.empty()) application.name = facts.title;
  if (isOurProcess(facts.process)) return {firstFilled(application.name, ownIdentifier_), ownIdentifier_};
  return application;
}

void X11FrontApplication::observe(Callback onActivation) {
  onActivation_ = std::move(onActivation);
  if (!onActivation_ || !connection_->isUp()) return;
  const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_change_window_attributes(connection_->get(), connection_->root(), XCB_CW_EVENT_MASK, &mask);
  connection_->flush();
  // Whatever came to the front since the observer has asked, and before this, would be told by nobody.
  last_.reset();
  settling_.start();
}

void X11FrontApplication::hear(const xcb_generic_event_t& event) {
  constexpr std::uint8_t sentByClient = 0x80;
  if ((event.response_type & ~sentByClient) != XCB_PROPERTY_NOTIFY) return;
  const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
  if (change.atom != connection_->atom("_NET_ACTIVE_WINDOW") || settling_.isActive()) return;
  settling_.start();
}

void X11FrontApplication::lookAgain() {
  if (!onActivation_) return;
  const auto application = current();
  if (!application || application == last_) return;
  last_ = application;
  onActivation_(*application);
}

}  // namespace

std::unique_ptr<FrontApplication> makeX11FrontApplication(std::shared_ptr<XcbConnection> connection,
                                                          std::string ownIdentifier) {
  return std::make_unique<X11FrontApplication>(std::move(connection), std::move(ownIdentifier));
}

}  // namespace Nimbrel
