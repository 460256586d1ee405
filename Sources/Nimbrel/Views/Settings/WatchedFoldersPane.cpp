#include "Views/Settings/WatchedFoldersPane.h"

#include "Foundation/FilePath.h"
#include "Views/Settings/FolderPicker.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace Nimbrel {

WatchedFoldersPane::WatchedFoldersPane(Store& store)
    : SettingsPane(store, tr("Watched Folders"), QStringLiteral("folders")),
      folders_(new EntryRows(*this, {.symbol = QStringLiteral("folder"), .elide = Qt::ElideMiddle})) {
  auto* choose = settingsButton(tr("Add Folder…"), QStringLiteral("addFolder"));
  auto* system = settingsButton(tr("Use System Screenshot Folder"), QStringLiteral("addSystemFolder"));
  addControls({choose, system});
  connect(choose, &QPushButton::clicked, this, &WatchedFoldersPane::chooseFolder);
  connect(system, &QPushButton::clicked, this, [this] { add(settings().systemScreenshotFolder()); });
  connect(folders_, &EntryRows::removeClicked, this, &WatchedFoldersPane::remove);
  connect(folders_, &EntryRows::changed, this, &WatchedFoldersPane::rowsChanged);
  follow(settings().sources, [this] { folders_->setEntries(settings().sources()); });
}

void WatchedFoldersPane::chooseFolder() {
  const auto watched = settings().sourceFolders();
  const FolderQuestion question{.name = QStringLiteral("settings.folderPicker"),
                                .title = tr("Choose a folder to watch"),
                                .former = watched.empty() ? std::string() : watched.back()};
  pickFolder(*this, question, [this](const std::string& path) { add(path); });
}

void WatchedFoldersPane::add(const std::string& path) {
  auto folder = FilePath::withoutTrailingSlashes(path);
  const auto watched = settings().sourceFolders();
  if (std::ranges::find(watched, folder) != watched.end()) return;
  auto sources = settings().sources();
  sources.push_back(std::move(folder));
  settings().sources.set(std::move(sources));
  store().restartWatching();
  store().scan();
}

void WatchedFoldersPane::remove(std::size_t index) {
  auto sources = settings().sources();
  if (index >= sources.size()) return;
  sources.erase(sources.begin() + static_cast<std::ptrdiff_t>(index));
  settings().sources.set(std::move(sources));
  store().restartWatching();
}

}  // namespace Nimbrel
