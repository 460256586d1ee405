#pragma once

#include <QString>
#include <QWidget>

#include <functional>
#include <string>

namespace Nimbrel {

/// A folder that the user is asked for.
struct FolderQuestion {
  QString name;        ///< of the dialog, as an object
  QString title;       ///< what the folder is for
  std::string former;  ///< the answer so far, an absolute path, where choosing begins; empty for none
};

/// What is done with the folder that was chosen.
using FolderAnswer = std::function<void(const std::string& path)>;

/// Asks in a dialog over the window of `asking`, and comes back at once. One folder can be chosen, and made before. The
/// answer comes when the dialog is gone; none comes when the user cancels, nor when `asking` is gone by then. Main
/// thread.
void pickFolder(QWidget& asking, const FolderQuestion& question, FolderAnswer then);

}  // namespace Nimbrel
