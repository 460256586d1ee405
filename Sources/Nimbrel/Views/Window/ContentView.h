#pragma once

#include "Store/Store.h"
#include "Views/Shared/AppIcons.h"
#include "Views/Window/Columns.h"
#include "Views/Window/EditorTarget.h"
#include "Views/Window/FileImports.h"
#include "Views/Window/SheetHost.h"
#include "Views/Window/Toolbar.h"
#include "Views/Window/WindowParts.h"

#include <QWidget>

namespace Nimbrel {

/// The main window: toolbar, columns, sheets, and what is dropped on it. Which columns are shown and how wide the
/// sidebar is starts afresh with each window; all else is the Store's. Main thread.
class ContentView final : public QWidget {
  Q_OBJECT

 public:
  /// Store and icons must outlive it.
  ContentView(Store& store, AppIcons& icons, WindowParts parts);

  [[nodiscard]] EditorTarget& editor() { return *editor_; }

  void setSidebarShown(bool shown);
  void setDetailsShown(bool shown);

 Q_SIGNALS:
  /// The user has closed the window.
  void closed();

 protected:
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  [[nodiscard]] QWidget* makeContent();
  void addSheets();
  void followSettings();

  Store& store_;
  const WindowParts parts_;
  EditorTarget* editor_;
  FileImports* imports_;
  SheetHost* sheets_;
  Toolbar* toolbar_ = nullptr;
  Columns* columns_ = nullptr;
  bool showsSidebar_ = true;
  bool showsDetails_ = true;
};

}  // namespace Nimbrel
