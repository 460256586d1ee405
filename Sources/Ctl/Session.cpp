#include "Session.h"

#include "Linux/Factory.h"
#include "Model/AppIdentity.h"

#include <chrono>

namespace Nimbrel::Ctl {

namespace {

Timestamp systemTime() { return std::chrono::time_point_cast<Seconds>(std::chrono::system_clock::now()); }

Result<std::unique_ptr<Store>> openStore() {
  const auto folders = UserFolders::ofCurrentUser();
  if (!folders) return Error{"The account has no home folder to keep the catalogue in"};
  return Store::open({.role = ProcessRole::tool,
                      .folders = *folders,
                      .clock = systemTime,
                      .services = makeServices(),
                      .defaults = AppIdentity::openDefaults(folders->preferences)});
}

}  // namespace

Result<Store*> Session::store() {
  if (!store_) {
    auto opened = openStore();
    if (!opened) return opened.error();
    store_ = std::move(opened).value();
  }
  return store_.get();
}

}  // namespace Nimbrel::Ctl
