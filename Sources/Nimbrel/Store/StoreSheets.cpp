#include "Store/Store.h"
#include "Store/StoreOperation.h"

namespace Nimbrel {

void Store::setShowRecordingTools(bool show) {
  const Operation operation(*this);
  publish(showRecordingTools_, show, Fact::showRecordingTools);
}

void Store::setShowPurge(bool show) {
  const Operation operation(*this);
  publish(showPurge_, show, Fact::showPurge);
}

void Store::setShowDuplicates(bool show) {
  const Operation operation(*this);
  publish(showDuplicates_, show, Fact::showDuplicates);
}

void Store::setShowShrink(bool show) {
  const Operation operation(*this);
  publish(showShrink_, show, Fact::showShrink);
}

void Store::setShowCleanup(bool show) {
  const Operation operation(*this);
  publish(showCleanup_, show, Fact::showCleanup);
}

}  // namespace Nimbrel
