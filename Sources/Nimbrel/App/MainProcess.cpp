#include "App/MainProcess.h"

#include "Linux/Factory.h"
#include "Model/AppIdentity.h"
#include "Platform/UserFolders.h"
#include "Views/Editor/EditorView.h"
#include "Views/Gallery/GalleryView.h"
#include "Views/Gallery/MultiSelectionView.h"
#include "Views/Inspector/InspectorView.h"
#include "Views/Panels/QuickLook.h"
#include "Views/Panels/SharingMenu.h"
#include "Views/Recording/RecordingToolsView.h"
#include "Views/Sheets/CleanupSuggestionsView.h"
#include "Views/Sheets/DuplicatesView.h"
#include "Views/Sheets/PrivacyPolicyView.h"
#include "Views/Sheets/PurgeView.h"
#include "Views/Sheets/ShrinkView.h"
#include "Views/Sheets/UpdateView.h"

#include <QApplication>
#include <QFile>
#include <QPointer>
#include <QStandardPaths>
#include <QTimer>

#include <chrono>
#include <utility>

namespace Nimbrel {

namespace {

// Once the window is up: what a connection needs takes a while to load.
constexpr std::chrono::seconds untilFirstLook{2};
// A sheet that nobody asked for waits for what the user has open.
constexpr std::chrono::minutes untilAskedAgain{1};

/// Beside the program.
UpdateSettings readUpdateSettings() {
  const auto file = QCoreApplication::applicationDirPath() + QStringLiteral("/nimbrel-info.json");
  return UpdateSettings::read(QFile::encodeName(file).toStdString());
}

UpdateController::Means updateMeans() {
  const auto downloads = QStandardPaths::writableLocation(QStandardPaths::DownloadLocation);
  const auto openDefaults = [] {
    const auto folders = UserFolders::ofCurrentUser();
    return AppIdentity::openDefaults(folders ? folders->preferences : std::string());
  };
  return {.makeFetcher = makeHttpsFetcher,
          .openDefaults = openDefaults,
          .version = NIMBREL_VERSION,
          .downloads = QFile::encodeName(downloads).toStdString(),
          .untilFirstLook = untilFirstLook};
}

}  // namespace

WindowServices::WindowServices(const Services& services)
    : pasteboard(*services.pasteboard),
      pictureReader(*services.pictureReader),
      workspace(*services.workspace),
      installedApplications(*services.installedApplications),
      ownerAuthentication(*services.ownerAuthentication),
      windowStacking(*services.windowStacking),
      windowFocus(*services.windowFocus),
      windowActivation(*services.windowActivation) {}

MainProcess::MainProcess(Store& store, WindowServices services)
    : store_(store),
      services_(services),
      actions_(store),
      icons_(services.installedApplications),
      pins_(store, previews_, services.windowStacking),
      quickFind_(store, thumbs_, previews_, {services.windowStacking, services.windowFocus, services.windowActivation}),
      shelf_(store, thumbs_, previews_, {services.windowStacking, services.windowFocus, services.windowActivation}),
      updates_(readUpdateSettings(), store, services.workspace, updateMeans()),
      exports_(store, services.workspace),
      window_(store, icons_, parts()),
      prompt_(services.ownerAuthentication, window_),
      activity_(store),
      hidden_(services.windowFocus) {
  connect(&window_, &ContentView::closed, this, &MainProcess::quit);
  actions_.add("find", [this](const std::string& token) { quickFind_.open(token); });
  connect(&store, &Store::windowRequested, this, [this] { raise(); });
  connect(&store, &Store::quickFindRequested, &quickFind_, &QuickFindPanel::toggle);
  connect(&store, &Store::hidingRequested, this, &MainProcess::hideWindows);
  connect(&store, &Store::unhidingRequested, this, &MainProcess::unhideWindows);
  connect(&store, &Store::fileReplaced, this, &MainProcess::forgetPictures);
  connect(&updates_, &UpdateController::updateFound, this, &MainProcess::offer);
}

WindowParts MainProcess::parts() {
  WindowParts parts;
  parts.gallery = [this](QWidget* parent, EditorTarget& editor) { return makeGallery(parent, editor); };
  parts.inspector = [this](QWidget* parent, EditorTarget& editor) { return makeInspector(parent, editor); };
  parts.severalSelected = [this](QWidget* parent, EditorTarget&) { return new MultiSelectionView(store_, parent); };
  addSheets(parts);
  parts.quickLook = [this] { lookClosely(); };
  parts.pinSelected = [this] { pinSelected(); };
  parts.unpinAll = [this] { pins_.unpinAll(); };
  parts.quickFind = [this] { quickFind_.toggle(); };
  parts.checkForUpdates = [this] { updates_.checkForUpdates(); };
  parts.settings = [this] { showSettings(); };
  parts.quit = [this] { quit(); };
  return parts;
}

void MainProcess::addSheets(WindowParts& parts) {
  parts.purge = [this](QWidget* window) { return new PurgeView(store_, window); };
  parts.duplicates = [this](QWidget* window) { return new DuplicatesView(store_, thumbs_, previews_, window); };
  parts.shrink = [this](QWidget* window) { return new ShrinkView(store_, window); };
  parts.cleanup = [this](QWidget* window) { return new CleanupSuggestionsView(store_, window); };
  parts.recordingTools = [this](QWidget* window) { return makeRecordingTools(window); };
  parts.editor = [this](QWidget* window, EditorTarget& editor) {
    const auto forget = [self = QPointer(this)](const std::string& path) {
      if (self) self->forgetPictures(path);
    };
    return makeEditor(store_,
                      {.reader = services_.pictureReader, .pasteboard = services_.pasteboard, .written = forget},
                      editor, window);
  };
}

QDialog* MainProcess::makeRecordingTools(QWidget* window) {
  const auto& recording = store_.lastRecordingURL();
  return recording ? new RecordingToolsView(services_.workspace, exports_, *recording, window) : nullptr;
}

void MainProcess::forgetPictures(const std::string& path) {
  thumbs_.remove(path);
  previews_.remove(path);
}

QWidget* MainProcess::makeGallery(QWidget* parent, EditorTarget& editor) {
  auto* gallery = new GalleryView({store_, icons_, thumbs_, previews_}, parent);
  auto& actions = gallery->actions();
  connect(&actions, &GalleryActions::quickLookRequested, this, &MainProcess::lookClosely);
  connect(&actions, &GalleryActions::editRequested, &editor, &EditorTarget::setShot);
  connect(&actions, &GalleryActions::pinRequested, &pins_, &PinBoard::pin);
  connect(&actions, &GalleryActions::shareRequested, this,
          [this](const ShotPtr& shot) { share(store_, shot, window_); });
  return gallery;
}

QWidget* MainProcess::makeInspector(QWidget* parent, EditorTarget& editor) {
  auto* inspector = new InspectorView(store_, icons_, thumbs_, previews_, parent);
  const auto follow = [this, inspector] {
    if (const auto shot = store_.focused()) inspector->setShot(*shot);
  };
  connect(&store_, &Store::selectionChanged, inspector, follow);
  connect(&store_, &Store::shotsChanged, inspector, follow);
  inspector->setCanEdit(true);
  connect(inspector, &InspectorView::editRequested, &editor, &EditorTarget::setShot);
  inspector->setCanPin(true);
  connect(inspector, &InspectorView::pinRequested, &pins_, &PinBoard::pin);
  connect(inspector, &InspectorView::shareRequested, this,
          [this](const ShotPtr& shot) { share(store_, shot, window_); });
  follow();
  return inspector;
}

void MainProcess::lookClosely() {
  if (!quickLook_) quickLook_ = makeQuickLookPanel(store_, &window_);
  quickLook(store_, *quickLook_);
}

void MainProcess::pinSelected() {
  const auto shots = store_.selectedShots();
  store_.withAccess(shots, [pins = QPointer(&pins_), shots] {
    if (!pins) return;
    for (const auto& shot : shots) pins->pin(shot);
  });
}

void MainProcess::showSettings() {
  if (!settings_) {
    settings_ = new SettingsView(store_,
                                 {.applyHotkeySetting = [this] { store_.applyHotkeySetting(); },
                                  .privacyPolicy = [](QWidget* window) { return new PrivacyPolicyView(window); }},
                                 &window_);
  }
  settings_->raiseWindow();
}

void MainProcess::offer(const VerifiedUpdate& update) {
  if (isQuitting_) return;
  const bool isBusy = QApplication::activeModalWidget() != nullptr || QApplication::activePopupWidget() != nullptr;
  if (isBusy || !hidden_.isEmpty()) {
    // In place of an older one, so that nothing is offered twice.
    waitingOffer_ = std::make_unique<QObject>();
    return QTimer::singleShot(untilAskedAgain, waitingOffer_.get(), [this, update] { offer(update); });
  }
  waitingOffer_.reset();
  auto* sheet = new UpdateView(
      {.version = update.offer.version, .running = NIMBREL_VERSION, .notes = update.offer.notes}, &window_);
  connect(sheet, &UpdateView::saveRequested, &updates_, [this, update] { updates_.save(update); });
  connect(sheet, &UpdateView::skipRequested, &updates_, [this, update] { updates_.skip(update); });
  sheet->open();
}

void MainProcess::raise(const std::string& token) {
  if (isQuitting_) return;
  window_.setWindowState(window_.windowState() & ~Qt::WindowMinimized);
  window_.show();
  window_.raise();
  window_.activateWindow();
  services_.windowActivation.bringToFront(*window_.windowHandle(), token);
}

void MainProcess::answer(const StartRequest& request) {
  if (request.kind == StartRequest::Kind::Open) store_.importFiles(request.files);
  const bool isAction = request.kind == StartRequest::Kind::Action;
  if (isAction && actions_.run(request.action, request.activationToken)) return;
  raise(request.activationToken);
}

void MainProcess::quit() {
  if (std::exchange(isQuitting_, true)) return;
  pins_.setHeldBack(true);
  Q_EMIT quitBegun();
  pins_.unpinAll();
  // A capture may still end, and a hotkey still be pressed.
  store_.disconnect(&shelf_);
  store_.disconnect(&quickFind_);
  for (auto* widget : QApplication::topLevelWidgets()) widget->hide();
  services_.pasteboard.handOver(this, [this] { exports_.whenDone([] { QCoreApplication::exit(); }); });
}

void MainProcess::hideWindows() {
  pins_.setHeldBack(true);
  // It hides whenever the user is elsewhere, and does not come back by itself.
  quickFind_.dismiss();
  hidden_.hide();
}

void MainProcess::unhideWindows() {
  if (isQuitting_) return hidden_.forget();
  pins_.setHeldBack(false);
  hidden_.comeBack();
}

}  // namespace Nimbrel
