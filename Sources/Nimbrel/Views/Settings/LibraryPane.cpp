#include "Views/Settings/LibraryPane.h"

#include "Views/Settings/FolderPicker.h"

namespace Nimbrel {

namespace {

QString pickerTitle() { return QStringLiteral("Choose the Nimbrel library folder"); }

}  // namespace

LibraryPane::LibraryPane(Store& store)
    : SettingsPane(store, tr("Library"), QStringLiteral("library")),
      folder_(new FolderRow(QStringLiteral("library"), pickerTitle())) {
  addRow(tr("Folder"), folder_, Fit::Fill);
  addSwitch(tr("File new screenshots automatically"), settings().autoFile,
            tr("Filed shots move into year/month folders inside the library."));
  addSwitch(tr("Rename shots as they are filed"), settings().renameOnFile,
            tr("Uses the recognized application and text, so files are findable in Finder too. Only applies when "
               "filing."));
  connect(folder_, &FolderRow::chooseClicked, this, &LibraryPane::chooseFolder);
  follow(settings().libraryRoot, [this] { folder_->setPath(settings().libraryFolder()); });
}

void LibraryPane::chooseFolder() {
  const FolderQuestion question{
      .name = QStringLiteral("settings.libraryPicker"), .title = pickerTitle(), .former = settings().libraryFolder()};
  pickFolder(*this, question, [this](const std::string& path) {
    settings().libraryRoot.set(path);
    store().restartWatching();
    store().scan();
  });
}

}  // namespace Nimbrel
