#pragma once

#include "Store/Store.h"
#include "Views/Window/EditorTarget.h"

#include <QDialog>
#include <QWidget>

#include <functional>

namespace Nimbrel {

/// What the main window is put together from, beside what it makes itself. A maker that is empty leaves its place
/// empty, and a sheet without one does not open.
struct WindowParts {
  /// Makes a child of the widget it is given, which belongs to that.
  using Column = std::function<QWidget*(QWidget* parent, EditorTarget& editor)>;
  using Sheet = std::function<QDialog*(QWidget* window)>;

  Column gallery = {};
  Column inspector = {};        ///< seen while exactly one shot is selected, which is the Store's focused()
  Column severalSelected = {};  ///< seen while two or more are

  Sheet purge = {};
  Sheet duplicates = {};
  Sheet shrink = {};
  Sheet cleanup = {};
  Sheet recordingTools = {};  ///< asked for only when there is a recording
  /// For the shot of the target.
  std::function<QDialog*(QWidget* window, EditorTarget& editor)> editor = {};

  /// Shows the selected shots large, or all that the gallery shows, once they may be seen.
  std::function<void()> quickLook = {};
  /// Pins the selected shots to the screen, once they may be seen.
  std::function<void()> pinSelected = {};
  std::function<void()> unpinAll = {};
  /// Shows or hides the search over all programs.
  std::function<void()> quickFind = {};
  std::function<void()> checkForUpdates = {};
  /// Shows the settings.
  std::function<void()> settings = {};
  /// Ends the application, as far as the user is concerned.
  std::function<void()> quit = {};
};

}  // namespace Nimbrel
