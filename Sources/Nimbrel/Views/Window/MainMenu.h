#pragma once

#include "Store/Store.h"
#include "Views/Window/TextCommands.h"
#include "Views/Window/WindowParts.h"

#include <QAction>
#include <QMenu>
#include <QObject>
#include <QTimer>

#include <functional>
#include <utility>
#include <vector>

namespace Nimbrel {

/// The menus of the application, File and Edit, with every command that has a key. Their keys work in the window they
/// belong to, and that of quick find in all windows of the process. Main thread.
class MainMenu final : public QObject {
  Q_OBJECT

 public:
  /// The window owns the menus; Store and parts must outlive it.
  MainMenu(Store& store, const WindowParts& parts, QWidget& window);

  /// From left to right.
  [[nodiscard]] const std::vector<QMenu*>& menus() const { return menus_; }
  /// What Paste does where no text field has the focus.
  void setPasteElsewhere(std::function<void()> paste) { text_->setPasteElsewhere(std::move(paste)); }

 private:
  using Act = std::function<void()>;
  using Condition = std::function<bool()>;
  struct Command {
    const char* name;  ///< after "menu."
    const char* title;
    const char* keys;  ///< empty for none
    Act act;
    Condition isEnabled;  ///< empty for always
    bool leavesKeysToFields = false;
  };

  QMenu* addMenu(const char* name, const char* title);
  void add(QMenu& menu, Command command);
  void fillApplicationMenu();
  void fillFileMenu();
  void addCaptures(QMenu& menu);
  void fillEditMenu();
  void addShotCommands(QMenu& menu);
  void addSelectionCommands(QMenu& menu);
  void refresh();
  [[nodiscard]] bool hasSelectedShots() const;

  Store& store_;
  const WindowParts& parts_;
  QWidget& window_;
  TextCommands* text_;
  std::vector<QMenu*> menus_;
  std::vector<std::pair<QAction*, Condition>> conditions_;
  QTimer refreshing_;  ///< one refresh for all that changes in a turn
};

}  // namespace Nimbrel
