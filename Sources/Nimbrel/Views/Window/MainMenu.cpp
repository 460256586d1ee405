#include "Views/Window/MainMenu.h"

#include "Views/Window/ImportPanel.h"

namespace Nimbrel {

namespace {

QString text(const char* utf8) { return QString::fromUtf8(utf8); }

}  // namespace

MainMenu::MainMenu(Store& store, const WindowParts& parts, QWidget& window)
    : QObject(&window), store_(store), parts_(parts), window_(window), text_(new TextCommands(window)) {
  fillApplicationMenu();
  fillFileMenu();
  fillEditMenu();
  refreshing_.setSingleShot(true);
  connect(&refreshing_, &QTimer::timeout, this, &MainMenu::refresh);
  for (const auto signal :
       {&Store::shotsChanged, &Store::derivedChanged, &Store::selectionChanged, &Store::filterChanged,
        &Store::searchResultChanged, &Store::queryChanged, &Store::lastRecordingURLChanged}) {
    connect(&store, signal, this, [this] { refreshing_.start(); });
  }
  refresh();
}

QMenu* MainMenu::addMenu(const char* name, const char* title) {
  auto* menu = new QMenu(text(title), &window_);
  menu->setObjectName(text(name));
  menu->setAccessibleName(text(title).remove(QLatin1Char('&')));
  connect(menu, &QMenu::aboutToShow, this, &MainMenu::refresh);
  menus_.push_back(menu);
  return menu;
}

void MainMenu::add(QMenu& menu, Command command) {
  auto* action = menu.addAction(text(command.title));
  action->setObjectName(QStringLiteral("menu.") + text(command.name));
  if (*command.keys != '\0') {
    action->setShortcut(QKeySequence(text(command.keys)));
    command.leavesKeysToFields ? text_->leaveToFields(*action) : text_->keepFromFields(*action);
  }
  connect(action, &QAction::triggered, this, std::move(command.act));
  if (command.isEnabled) conditions_.emplace_back(action, std::move(command.isEnabled));
}

void MainMenu::fillApplicationMenu() {
  auto& menu = *addMenu("menu.application", "&Nimbrel");
  add(menu, {"checkForUpdates",
             "Check for Updates…",
             "",
             [this] {
               if (parts_.checkForUpdates) parts_.checkForUpdates();
             },
             {}});
  menu.addSeparator();
  add(menu, {"settings", "Settings…", "Ctrl+,", [this] { parts_.settings(); },
             [this] { return static_cast<bool>(parts_.settings); }});
  menu.addSeparator();
  add(menu, {"quit",
             "Quit Nimbrel",
             "Ctrl+Q",
             [this] {
               if (parts_.quit) parts_.quit();
             },
             {}});
}

void MainMenu::fillFileMenu() {
  auto& menu = *addMenu("menu.file", "&File");
  addCaptures(menu);
  menu.addSeparator();
  add(menu, {"importFiles", "Import Files…", "Ctrl+I", [this] { openImportPanel(store_, window_); }, {}});
  add(menu, {"rescan", "Rescan Folders", "Ctrl+R", [this] { store_.scan(); }, {}});
  menu.addSeparator();
  add(menu, {"purge", "Purge Old Shots…", "", [this] { store_.setShowPurge(true); }, {}});
  add(menu, {"duplicates", "Find Duplicates…", "", [this] { store_.setShowDuplicates(true); }, {}});
  add(menu, {"shrink", "Shrink to HEIC…", "", [this] { store_.setShowShrink(true); }, {}});
  add(menu, {"cleanup", "Review Cleanup Suggestions…", "", [this] { store_.setShowCleanup(true); }, {}});
}

void MainMenu::addCaptures(QMenu& menu) {
  const auto capture = [this](CaptureMode mode) { return [this, mode] { store_.capture(mode, Store::Panel::Keep); }; };
  add(menu, {"captureSelection", "Capture Selection…", "Ctrl+Shift+5", capture(CaptureMode::area), {}});
  add(menu, {"captureWindow", "Capture Window…", "", capture(CaptureMode::window), {}});
  add(menu, {"captureScreen", "Capture Main Screen", "", capture(CaptureMode::screen), {}});
  add(menu, {"recordSelection", "Record Selection…", "", capture(CaptureMode::recordArea), {}});
  add(menu, {"recordScreen", "Record Main Screen", "", capture(CaptureMode::recordScreen), {}});
  add(menu, {"editLastRecording", "Edit Last Recording…", "", [this] { store_.setShowRecordingTools(true); },
             [this] { return store_.lastRecordingURL().has_value(); }});
}

void MainMenu::fillEditMenu() {
  auto& menu = *addMenu("menu.edit", "&Edit");
  text_->addTo(menu);
  menu.addSeparator();
  addShotCommands(menu);
  menu.addSeparator();
  addSelectionCommands(menu);
}

void MainMenu::addShotCommands(QMenu& menu) {
  const auto hasShots = [this] { return hasSelectedShots(); };
  add(menu,
      {"fileToLibrary", "File to Library", "Ctrl+Shift+L", [this] { store_.file(store_.selectedShots()); }, hasShots});
  add(menu, {"copyText", "Copy Recognized Text", "Ctrl+Shift+C",
             [this] {
               const auto shot = store_.focused();
               if (shot) store_.withAccess({*shot}, [&store = store_, shot = *shot] { store.copyText(*shot); });
             },
             [this] {
               const auto shot = store_.focused();
               return shot && !(*shot)->ocr.empty();
             }});
  add(menu, {"pin", "Pin to Screen", "Ctrl+Shift+P", [this] { parts_.pinSelected(); },
             [this] { return parts_.pinSelected && hasSelectedShots(); }});
  add(menu, {"unpinAll", "Unpin All", "", [this] { parts_.unpinAll(); },
             [this] { return static_cast<bool>(parts_.unpinAll); }});
  // In a text field the key takes a word away.
  add(menu,
      {"trash", "Move to Trash", "Ctrl+Backspace", [this] { store_.trash(store_.selectedShots()); }, hasShots, true});
}

void MainMenu::addSelectionCommands(QMenu& menu) {
  add(menu, {"selectAll", "Select All", "Ctrl+A", [this] { store_.selectAll(); }, {}});
  add(menu, {"quickLook", "Quick Look", "Ctrl+Y", [this] { parts_.quickLook(); },
             [this] { return parts_.quickLook && !store_.selection().empty(); }});
  add(menu, {"quickFind", "Quick Find…", "Ctrl+Shift+F", [this] { parts_.quickFind(); },
             [this] { return static_cast<bool>(parts_.quickFind); }});
  // Pressed once more it hides what it has shown, which has the keyboard then.
  menu.actions().last()->setShortcutContext(Qt::ApplicationShortcut);
  add(menu, {"saveSearch", "Save This Search", "Ctrl+D", [this] { store_.saveCurrentSearch(); },
             [this] { return !store_.query().empty(); }});
}

void MainMenu::refresh() {
  for (const auto& [action, isEnabled] : conditions_) action->setEnabled(isEnabled());
}

bool MainMenu::hasSelectedShots() const {
  // What is shown is only gone through when something is selected.
  return !store_.selection().empty() && !store_.selectedShots().empty();
}

}  // namespace Nimbrel
