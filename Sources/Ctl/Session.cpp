#include "Session.h"

#include "Linux/Factory.h"
#include "Model/AppIdentity.h"
#include "Platform/Process.h"

#include <QCoreApplication>

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
  bool isDecided = false;
  bool isGranted = false;
  const auto decide = [&](bool granted) {
    isDecided = true;
    isGranted = granted;
    QCoreApplication::quit();
  };
  QObject decision;
  // A refusal shows in the status alone.
  QObject::connect(store_.get(), &Store::statusChanged, &decision, [&] { decide(false); });
  // A signal ends the loop, so that the terminal is put back as it was.
  Process::quitOnSignals();
  store_->withAccess(shots, [&] { decide(true); });
  if (!isDecided) QCoreApplication::exec();
  if (isGranted) return std::nullopt;
  return Error{isDecided ? store_->status() : "interrupted"};
}

}  // namespace Nimbrel::Ctl
