#include "Model/AppIdentity.h"
#include "Store/Store.h"

namespace Nimbrel {

Application Store::currentCaptureApplication() const {
  const auto front = context_.services.frontApplication->current();
  // What stands before our own windows is what was asked for, not a shot of it.
  if (!front || front->name.empty() || AppIdentity::isOurs(front->bundleID)) return {};
  return *front;
}

}  // namespace Nimbrel
