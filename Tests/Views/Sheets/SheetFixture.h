#pragma once

#include "Support/FakeOwnerAuthentication.h"
#include "Support/FakePasteboard.h"
#include "Support/FakeTrash.h"
#include "Support/FakeWorkspace.h"
#include "Support/StoreHome.h"
#include "Views/Gallery/GalleryPreviewCache.h"
#include "Views/Gallery/ThumbCache.h"

#include <gmock/gmock.h>

#include <QDialog>
#include <QLabel>
#include <QPointer>
#include <QWidget>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Nimbrel::Testing {

/// What a test says of a shot; the rest speaks against nothing.
struct NewShot {
  std::string name;
  double daysAgo = 0;
  std::int64_t bytes = 1'000'000;
  bool filed = true;
  bool favorite = false;
  std::int64_t hash = 0;
  std::optional<std::string> text = "words";  ///< absent: not read yet
  std::vector<std::string> sensitive = {};
};

/// A window over a catalogue of the test's own making.
class SheetFixture : public ::testing::Test {
 protected:
  SheetFixture();
  ~SheetFixture() override;

  ShotPtr add(const NewShot& shot);
  void addFile(const std::string& name, int seed = 0) const;
  void reload() { store_->reload(); }
  [[nodiscard]] ShotPtr shot(std::string_view name) const { return shotNamed(*store_, name); }

  /// The widget of that name in the sheet; fails the test when there is none.
  template <class Widget>
  [[nodiscard]] static Widget* in(const QWidget& sheet, const char* name) {
    auto* widget = sheet.findChild<Widget*>(QString::fromLatin1(name));
    EXPECT_NE(widget, nullptr) << name;
    return widget;
  }
  [[nodiscard]] static std::string footerOf(const QWidget& sheet);
  /// The texts of a table's column, from the top.
  [[nodiscard]] static std::vector<std::string> columnOf(const QWidget& sheet, int column);
  /// What stands in the empty place; empty while a list does.
  [[nodiscard]] static std::string placeholderOf(const QWidget& sheet);

  /// The names of the files that the Trash was asked for last.
  [[nodiscard]] std::vector<std::string> trashed() const;

  /// Writes pictures of a window: light and dark, at both scales.
  static void keepPictures(QWidget& window, const QString& what);

  StoreHome home_;
  FakeTrash* trash_ = nullptr;
  FakeOwnerAuthentication* owner_ = nullptr;
  FakeWorkspace* workspace_ = nullptr;
  FakePasteboard* pasteboard_ = nullptr;
  std::unique_ptr<Store> store_;
  ThumbCache thumbs_;
  GalleryPreviewCache previews_;
  QWidget window_;
};

}  // namespace Nimbrel::Testing
