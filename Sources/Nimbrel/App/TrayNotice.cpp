#include "App/TrayNotice.h"

#include "Foundation/Log.h"

namespace Nimbrel {

namespace {

constexpr auto notice =
    "This desktop has no tray: all that Nimbrel does is in its window and in its menu in the launcher";

}  // namespace

TrayNotice::TrayNotice(Store& store, TrayIcon& tray, std::chrono::milliseconds patience) : store_(store), tray_(tray) {
  waiting_.setSingleShot(true);
  waiting_.setInterval(patience);
  connect(&waiting_, &QTimer::timeout, this, &TrayNotice::say);
  tray_.observeHost([this](bool isThere) { take(isThere); });
}

TrayNotice::~TrayNotice() { tray_.observeHost({}); }

void TrayNotice::take(bool isThere) { isThere ? waiting_.stop() : waiting_.start(); }

void TrayNotice::say() {
  if (!store_.showMenuBar()) return;
  tray_.observeHost({});
  Log::write(notice);
  if (store_.status().empty()) store_.setStatus(notice);
}

}  // namespace Nimbrel
