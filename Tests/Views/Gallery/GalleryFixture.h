#pragma once

#include "Support/FakeOwnerAuthentication.h"
#include "Support/FakeTrash.h"
#include "Support/FakeWorkspace.h"
#include "Support/StoreHome.h"
#include "Views/Gallery/GalleryView.h"
#include "Views/Gallery/GridView.h"

#include <gtest/gtest.h>

#include <QMutex>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Nimbrel::Testing {

/// A gallery over a catalogue that the test makes, with pictures made in place of decoded ones.
class GalleryFixture : public ::testing::Test {
 protected:
  GalleryFixture();
  ~GalleryFixture() override;

  /// A row, one minute older than the one before it, and not filed; `change` may change it before it is inserted.
  ShotID add(const std::string& name, const std::function<void(Shot&)>& change = {});
  void add(int count);
  /// Reads the rows, and shows them in a gallery of that size.
  void show(QSize size = {598, 625});
  /// Reads the rows, and lets the gallery hear of it.
  void reload();

  [[nodiscard]] GridView& grid() const;
  [[nodiscard]] QWidget& part(const char* objectName) const;
  [[nodiscard]] ShotID idOf(std::string_view name) const { return shotNamed(*store_, name)->id; }
  [[nodiscard]] std::vector<std::string> selectedNames() const { return namesOf(store_->selectedShots()); }
  void click(std::size_t cell, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
  void key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
  [[nodiscard]] std::vector<std::string> decoded() const;

  StoreHome home_;
  FakeOwnerAuthentication* owner_ = nullptr;
  FakeWorkspace* workspace_ = nullptr;
  FakeTrash* trash_ = nullptr;
  std::unique_ptr<Store> store_;
  NullInstalledApplications applications_;
  AppIcons icons_{applications_};
  ThumbCache thumbs_;
  GalleryPreviewCache previews_;
  std::unique_ptr<GalleryView> view_;
  /// The picture that a file has; called in other threads.
  std::function<QImage(const std::string& path, int maxPixel)> pictureOf_;

 private:
  [[nodiscard]] Services services();

  int rows_ = 0;
  mutable QMutex mutex_;
  std::vector<std::string> decoded_;
};

}  // namespace Nimbrel::Testing
