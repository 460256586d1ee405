#include "Views/Panels/QuickLook.h"

#include "Store/Store.h"

#include <QPointer>

#include <algorithm>

namespace Nimbrel {

namespace {

/// The place in the list of the shot that the selection gives first, 0 when it is not there.
std::size_t startIn(const ShotList& shots, const ShotIDSet& selection) {
  if (selection.empty()) return 0;
  const auto found = std::ranges::find(shots, *selection.begin(), [](const ShotPtr& shot) { return shot->id; });
  return found == shots.end() ? 0 : static_cast<std::size_t>(found - shots.begin());
}

bool showsProtected(const Store& store, const std::vector<std::string>& files) {
  return std::ranges::any_of(store.shots(), [&](const ShotPtr& shot) {
    return store.isProtected(*shot) && std::ranges::find(files, shot->path) != files.end();
  });
}

}  // namespace

void quickLook(Store& store, QuickLookPanel& panel) {
  auto shots = store.selectedShots();
  if (shots.empty()) shots = store.ordered();
  if (shots.empty()) return;
  store.withAccess(shots, [&store, shots, shown = QPointer(&panel)] {
    if (!shown) return;
    std::vector<std::string> paths;
    for (const auto& shot : shots) paths.push_back(shot->path);
    shown->showFiles(paths, startIn(shots, store.selection()));
  });
}

QuickLookPanel* makeQuickLookPanel(const Store& store, QWidget* parent) {
  auto* panel = new QuickLookPanel(parent);
  QObject::connect(&store, &Store::sensitiveLocked, panel, &QuickLookPanel::dismiss);
  // The text of a shot may be read, and found sensitive, while it is shown.
  QObject::connect(&store, &Store::shotsChanged, panel, [&store, panel] {
    if (panel->isVisible() && showsProtected(store, panel->files())) panel->dismiss();
  });
  return panel;
}

}  // namespace Nimbrel
