#include "App/CompanionProcess.h"

#include "App/MenuBarCompanion.h"
#include "Views/Companion/TrayPicture.h"
#include "Views/Shared/Theme.h"

#include <QApplication>

#include <utility>

namespace Nimbrel {

CompanionProcess::CompanionProcess(Store& store, const WindowServices& services, TrayIcon& tray,
                                   OpenMainApp openMainApp)
    : store_(store),
      services_(services),
      tray_(tray),
      openMainApp_(std::move(openMainApp)),
      actions_(store),
      exports_(store, services.workspace),
      panel_({.store = store,
              .thumbs = thumbs_,
              .previews = previews_,
              .stacking = services.windowStacking,
              .activation = services.windowActivation}),
      quickFind_(store, thumbs_, previews_, {services.windowStacking, services.windowFocus, services.windowActivation}),
      shelf_(store, thumbs_, previews_, {services.windowStacking, services.windowFocus, services.windowActivation}),
      windows_(store, services, exports_, [this](const std::string& path) { forgetPictures(path); }),
      prompt_(services.ownerAuthentication, panel_),
      activity_(store),
      notice_(store, tray),
      hidden_(services.windowFocus) {
  connect(&panel_, &MenuBarView::openMainAppRequested, this, [this] {
    panel_.hide();
    openMainApp_({});
  });
  connect(&panel_, &MenuBarView::recordingToolsRequested, &windows_, &CompanionWindows::raiseRecordingTools);
  connect(&panel_, &MenuBarView::quitRequested, this, &CompanionProcess::quit);
  connect(&windows_, &CompanionWindows::opened, &panel_, &QWidget::hide);
  connect(&store, &Store::showMenuBarChanged, this, &CompanionProcess::showIcon);
  connect(&store, &Store::quickFindRequested, &quickFind_, &QuickFindPanel::toggle);
  connect(&store, &Store::hidingRequested, this, &CompanionProcess::hideWindows);
  connect(&store, &Store::unhidingRequested, this, &CompanionProcess::unhideWindows);
  connect(&store, &Store::fileReplaced, this, &CompanionProcess::forgetPictures);
  connect(&Theme::shared(), &Theme::changed, this, &CompanionProcess::dress);
  tray_.onActivated(
      [this](const TrayIcon::Activation& activation) { panel_.toggleAt(activation.place, activation.token); });
  actions_.add(MenuBarCompanion::unaskedAction, [](const std::string&) {});
  actions_.add("find", [this](const std::string& token) { quickFind_.open(token); });
  dress();
  showIcon();
}

CompanionProcess::~CompanionProcess() {
  tray_.setVisible(false);
  tray_.onActivated({});
}

void CompanionProcess::dress() { tray_.setLook(trayPicture(), tr("Nimbrel")); }

void CompanionProcess::showIcon() { tray_.setVisible(store_.showMenuBar() && !isQuitting_); }

void CompanionProcess::answer(const StartRequest& request) {
  if (isQuitting_) return;
  if (request.kind == StartRequest::Kind::Open) store_.importFiles(request.files);
  const bool isAction = request.kind == StartRequest::Kind::Action;
  if (isAction && actions_.run(request.action, request.activationToken)) return;
  panel_.openAt({}, request.activationToken);
}

void CompanionProcess::forgetPictures(const std::string& path) {
  thumbs_.remove(path);
  previews_.remove(path);
}

void CompanionProcess::hideWindows() {
  // It was opened for this, and does not come back; nor does what hides as soon as the user is elsewhere.
  panel_.hide();
  quickFind_.dismiss();
  hidden_.hide();
}

void CompanionProcess::unhideWindows() {
  if (isQuitting_) return hidden_.forget();
  hidden_.comeBack();
}

void CompanionProcess::quit() {
  if (std::exchange(isQuitting_, true)) return;
  Q_EMIT quitBegun();
  showIcon();
  // A capture may still end, and a hotkey still be pressed.
  store_.disconnect(&shelf_);
  store_.disconnect(&quickFind_);
  for (auto* widget : QApplication::topLevelWidgets()) widget->hide();
  services_.pasteboard.handOver(this, [this] { exports_.whenDone([] { QCoreApplication::exit(); }); });
}

}  // namespace Nimbrel
