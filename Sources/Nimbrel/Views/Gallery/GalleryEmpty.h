#pragma once

#include "Store/Store.h"
#include "Views/Shared/ElidedLabel.h"
#include "Views/Shared/Placeholder.h"

#include <QPushButton>
#include <QVBoxLayout>
#include <QWidget>

namespace Nimbrel {

/// What the gallery says when it has nothing to show. While there is no shot at all it tells which folders are watched
/// for them, and offers to add one.
class GalleryEmpty final : public QWidget {
  Q_OBJECT

 public:
  explicit GalleryEmpty(Store& store, QWidget* parent = nullptr);

  /// Says what holds now.
  void refresh();
  /// Watches one more folder from now on, given by its absolute path; one that is watched already changes nothing.
  void addFolder(const std::string& path);

 private:
  void chooseFolder();
  void showFolders();

  Store& store_;
  Placeholder* placeholder_;
  QWidget* firstRun_;
  QVBoxLayout* folders_;
};

}  // namespace Nimbrel
