#include "Session.h"

#include "Linux/Factory.h"

#include <utility>

namespace Nimbrel::Ctl {

Result<Store*> Session::store() {
  if (!store_) {
    auto opened = Store::openForCurrentUser(ProcessRole::tool, makeServices());
    if (!opened) return opened.error();
    store_ = std::move(opened).value();
  }
  return store_.get();
}

}  // namespace Nimbrel::Ctl
