#pragma once

#include "Store/Store.h"
#include "Views/Shared/GroupedForm.h"

#include <QDialog>
#include <QWidget>

#include <functional>

namespace Nimbrel {

/// What the settings reach in other rooms. An empty one does nothing.
struct SettingsLinks {
  /// Turns the global shortcuts on and off by the settings, in this process.
  std::function<void()> applyHotkeySetting = {};
  /// Makes the sheet with the privacy policy, a child of the window.
  std::function<QDialog*(QWidget* window)> privacyPolicy = {};
};

/// The window with everything that the user can set, of a fixed size. What is done in it takes effect at once, and what
/// other processes set appears in it. Closing it deletes it, and with it what was begun in its fields. Main thread.
class SettingsView final : public QWidget {
  Q_OBJECT

 public:
  /// A window over that of `parent`. The Store must outlive it.
  SettingsView(Store& store, const SettingsLinks& links, QWidget* parent = nullptr);

  /// Shows the window, in front.
  void raiseWindow();

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void fillForm(Store& store, const SettingsLinks& links);
  void layOut(Store& store);
  void closeOn(const QKeySequence& keys);
  void placeMargins();

  GroupedForm* form_;
};

}  // namespace Nimbrel
