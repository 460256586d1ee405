#include "Views/Settings/FolderPicker.h"

#include "Foundation/FilePath.h"

#include <QFile>
#include <QFileDialog>
#include <QFileInfo>

#include <utility>

namespace Nimbrel {

namespace {

/// With the former folder chosen among its neighbours, or within what is left of the way to it.
void beginAt(QFileDialog& dialog, const std::string& former) {
  if (!former.starts_with('/')) return;
  auto place = former;
  while (place != "/" && !QFileInfo(QFile::decodeName(place.c_str())).isDir())
    place = std::string(FilePath::folder(place));
  const auto shown = QFile::decodeName(place.c_str());
  place == former ? dialog.selectFile(shown) : dialog.setDirectory(shown);
}

}  // namespace

void pickFolder(QWidget& asking, const FolderQuestion& question, FolderAnswer then) {
  auto* dialog = new QFileDialog(asking.window(), question.title);
  dialog->setObjectName(question.name);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setFileMode(QFileDialog::Directory);
  dialog->setOption(QFileDialog::ShowDirsOnly);
  beginAt(*dialog, question.former);
  // A later turn: what follows may take a while, and the dialog is not to stay for that.
  QObject::connect(
      dialog, &QFileDialog::fileSelected, &asking,
      [then = std::move(then)](const QString& path) { then(QFile::encodeName(path).toStdString()); },
      Qt::QueuedConnection);
  dialog->open();
}

}  // namespace Nimbrel
