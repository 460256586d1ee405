#include "Screencapture/PortalScreenshot.h"

#include "Portal/PortalRequest.h"
#include "Screencapture/PortalPicture.h"

#include <filesystem>
#include <utility>

namespace Nimbrel::Screencapture {

namespace {

// Portals before this one decide for themselves what they ask.
constexpr unsigned firstInteractiveVersion = 2;

class PortalScreenshot final : public QObject, public Capture {
 public:
  PortalScreenshot(CaptureRequest request, Then then) : request_(std::move(request)), then_(std::move(then)) {}

  void begin();
  void interrupt() override;

 private:
  void ask(bool isInteractive);
  void take(const PortalAnswer& answer, bool isInteractive);
  void end(Outcome outcome);

  CaptureRequest request_;
  Then then_;
  std::unique_ptr<PortalBus> bus_;
  PortalInterface interface_;
  std::unique_ptr<PortalRequest> portal_;
  std::filesystem::file_time_type asked_;
};

void PortalScreenshot::begin() {
  auto bus = PortalBus::open();
  if (!bus) return end({Refused, bus.error().message});
  bus_ = std::move(bus).value();
  findPortalInterface(this, *bus_, QStringLiteral("org.freedesktop.portal.Screenshot"), [this](auto found) {
    if (!then_) return;
    if (!found) return end({Refused, found.error().message});
    interface_ = std::move(found).value();
    ask(request_.subject != CaptureRequest::Subject::mainScreen);
  });
}

void PortalScreenshot::interrupt() {
  portal_.reset();
  end({});
}

void PortalScreenshot::ask(bool isInteractive) {
  asked_ = std::filesystem::file_time_type::clock::now();
  // Without a window of ours for the portal to stand before.
  PortalRequest::Call call{QStringLiteral("Screenshot"), {QString()}, {}};
  if (isInteractive) call.options.insert(QStringLiteral("interactive"), true);
  portal_ = std::make_unique<PortalRequest>(*bus_, interface_, std::move(call),
                                            [this, isInteractive](const auto& answer) { take(answer, isInteractive); });
}

void PortalScreenshot::take(const PortalAnswer& answer, bool isInteractive) {
  switch (answer.outcome) {
    case PortalAnswer::Outcome::cancelled:
      return end({});
    case PortalAnswer::Outcome::refused:
      // Nobody may look at the screen unasked, but the user may show it.
      if (!isInteractive && interface_.version >= firstInteractiveVersion) return ask(true);
      return end({Refused, answer.reason});
    case PortalAnswer::Outcome::granted:
      break;
  }
  const auto address = answer.results.value(QStringLiteral("uri")).toString();
  if (const auto error = takePortalPicture(address, asked_, request_)) return end({Failed, error->message});
  end({});
}

void PortalScreenshot::end(Outcome outcome) {
  if (!then_) return;
  // Whoever hears of it may delete this object, and is still about to make it when there is no bus.
  const auto tell = [then = std::exchange(then_, nullptr), outcome = std::move(outcome)] { then(outcome); };
  QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
}

}  // namespace

std::unique_ptr<Capture> takePortalScreenshot(const CaptureRequest& request, Capture::Then then) {
  auto screenshot = std::make_unique<PortalScreenshot>(request, std::move(then));
  screenshot->begin();
  return screenshot;
}

}  // namespace Nimbrel::Screencapture
