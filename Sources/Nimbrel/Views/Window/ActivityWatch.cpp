#include "Views/Window/ActivityWatch.h"

namespace Nimbrel {

ActivityWatch::ActivityWatch(Store& store, QObject* parent) : QObject(parent) {
  connect(&focus_, &ApplicationFocus::came, this, [&store] { store.setApplicationActive(true); });
  connect(&focus_, &ApplicationFocus::left, this, [&store] { store.setApplicationActive(false); });
}

}  // namespace Nimbrel
