#include "Session.h"

#include "EventWait.h"

#include "Linux/Factory.h"
#include "Model/AppIdentity.h"

#include <utility>

namespace Nimbrel::Ctl {

Result<Store*> Session::store() {
  if (!store_) {
    auto services = makeServices(AppIdentity::bundleIdentifier());
    prompt_ = TerminalPrompt::open();
    services.ownerAuthentication->setPrompt(prompt_.get());
    auto opened = Store::openForCurrentUser(ProcessRole::tool, std::move(services));
    if (!opened) return opened.error();
    store_ = std::move(opened).value();
  }
  return store_.get();
}

std::optional<Error> Session::unlock(const ShotList& shots) {
  bool isGranted = false;
  QObject decision;
  const bool isDecided = untilDone([&](const std::function<void()>& done) {
    // A refusal shows in the status alone.
    QObject::connect(store_.get(), &Store::statusChanged, &decision, done);
    store_->withAccess(shots, [&isGranted, done] {
      isGranted = true;
      done();
    });
  });
  if (isGranted) return std::nullopt;
  return Error{isDecided ? store_->status() : std::string(interrupted)};
}

}  // namespace Nimbrel::Ctl
