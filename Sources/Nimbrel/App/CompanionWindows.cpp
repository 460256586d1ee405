#include "App/CompanionWindows.h"

#include "Views/Editor/EditorView.h"
#include "Views/Recording/RecordingToolsView.h"

#include <optional>

namespace Nimbrel {

CompanionWindows::CompanionWindows(Store& store, const WindowServices& services, RecordingExports& exports,
                                   const Written& written)
    : store_(store), services_(services), target_(store), recordingTools_(nullptr), editor_(nullptr) {
  addRecordingTools(exports);
  addEditor(written);
}

void CompanionWindows::addRecordingTools(RecordingExports& exports) {
  recordingTools_.add({.isWanted = [this] { return store_.showRecordingTools(); },
                       .dismissed = [this] { store_.setShowRecordingTools(false); },
                       .make = [this, &exports](QWidget* window) -> QDialog* {
                         const auto& recording = store_.lastRecordingURL();
                         if (!recording) return nullptr;
                         recording_ = *recording;
                         return new RecordingToolsView(services_.workspace, exports, *recording, window);
                       }});
  connect(&store_, &Store::showRecordingToolsChanged, &recordingTools_, &SheetHost::look);
  connect(&recordingTools_, &SheetHost::opened, this, [this] { bringToFront(recordingTools_); });
}

void CompanionWindows::raiseRecordingTools() {
  if (store_.showRecordingTools() && store_.lastRecordingURL() != recording_) {
    store_.setShowRecordingTools(false);
    return store_.setShowRecordingTools(true);
  }
  bringToFront(recordingTools_);
}

void CompanionWindows::addEditor(const Written& written) {
  editor_.add({.isWanted = [this] { return target_.shot().has_value(); },
               .dismissed = [this] { target_.setShot(std::nullopt); },
               .make =
                   [this, written](QWidget* window) {
                     return makeEditor(
                         store_,
                         {.reader = services_.pictureReader, .pasteboard = services_.pasteboard, .written = written},
                         target_, window);
                   }});
  connect(&target_, &EditorTarget::changed, &editor_, &SheetHost::look);
  // Also when it is asked for a shot that is open already.
  connect(&store_, &Store::windowRequested, this, [this] { bringToFront(editor_); });
}

void CompanionWindows::bringToFront(const SheetHost& host) {
  auto* window = host.shown();
  if (window == nullptr) return;
  if (window->isMinimized()) window->showNormal();
  window->raise();
  services_.windowActivation.bringToFront(*window->windowHandle(), {});
  Q_EMIT opened();
}

}  // namespace Nimbrel
