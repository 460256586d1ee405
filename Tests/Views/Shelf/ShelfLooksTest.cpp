// The shelf as it is seen: open, checking, sensitive, filed; from right to left and with larger text.

#include "Views/Shelf/CaptureShelf.h"

#include "Support/FakeWindowActivation.h"
#include "Support/FakeWindowFocus.h"
#include "Support/FakeWindowStacking.h"
#include "Support/Waiting.h"
#include "Views/Shared/TextStyles.h"
#include "Views/Shared/Theme.h"
#include "Views/Sheets/SheetFixture.h"
#include "Views/Shelf/ShelfThumb.h"

#include <QApplication>
#include <QPushButton>
#include <QTest>

#include <optional>
#include <string>

namespace Nimbrel {
namespace {

using Testing::waitUntil;

class ShelfLooks : public Testing::SheetFixture {
 protected:
  void show(const Testing::NewShot& shot) {
    addFile(shot.name, 3);
    shelf_.show(add(shot));
    ASSERT_TRUE(QTest::qWaitForWindowExposed(shelf_.window()));
    const auto* thumb = in<ShelfThumb>(*shelf_.window(), "shelf.thumb");
    ASSERT_TRUE(waitUntil([&] { return thumb->isMasked() || thumb->hasPicture(); }));
  }
  void keep(const char* what) { keepPictures(*shelf_.window(), QString::fromLatin1(what)); }
  [[nodiscard]] QImage seen() const {
    QImage image(shelf_.window()->size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    shelf_.window()->render(&image);
    return image;
  }
  /// On the shelf.
  [[nodiscard]] QRect placeOf(const char* name) const {
    const auto* widget = in<QWidget>(*shelf_.window(), name);
    return {widget->mapTo(shelf_.window(), QPoint()), widget->size()};
  }

  Testing::FakeWindowStacking stacking_;
  Testing::FakeWindowFocus focus_;
  Testing::FakeWindowActivation activation_;
  CaptureShelf shelf_{*store_, thumbs_, previews_, {stacking_, focus_, activation_}};
};

TEST_F(ShelfLooks, OfAnOpenScreenshot) {
  show({.name = "Screenshot 2026-11-12 14-32-08.png", .filed = false});
  keep("shelf");
  EXPECT_EQ(seen().pixelColor(0, 0).alpha(), 0) << "the corners are round";
  EXPECT_EQ(seen().pixelColor(180, 6), themeColor(Token::Popover));
  EXPECT_EQ(placeOf("shelf.thumb").size(), QSize(106, 69));
  EXPECT_EQ(placeOf("shelf.thumb").left(), 13);
  EXPECT_EQ(placeOf("shelf.file").left(), 13);
  EXPECT_EQ(placeOf("shelf.share").right(), 366 - 13 - 1);
  EXPECT_EQ(placeOf("shelf.share").bottom(), shelf_.window()->height() - 13 - 1);
}

TEST_F(ShelfLooks, OfOneThatIsChecked) {
  show({.name = "a.png", .filed = false, .text = std::nullopt});
  keep("shelf-checking");
  EXPECT_EQ(seen().pixelColor(13 + 10, placeOf("shelf.thumb").top() + 10), themeColor(Token::Quaternary));
}

TEST_F(ShelfLooks, OfASensitiveOne) {
  show({.name = "a.png", .filed = false, .text = "the key", .sensitive = {"Password"}});
  keep("shelf-sensitive");
  EXPECT_EQ(seen().pixelColor(13 + 10, placeOf("shelf.thumb").top() + 10), themeColor(Token::Quaternary));
}

TEST_F(ShelfLooks, OfOneInTheLibrary) {
  show({.name = "Morvanthile perigee table.png", .filed = true});
  keep("shelf-filed");
  EXPECT_FALSE(in<QPushButton>(*shelf_.window(), "shelf.file")->isEnabled());
}

TEST_F(ShelfLooks, TheSizeIsTheSameWhateverIsSaid) {
  show({.name = "a.png", .filed = false, .text = std::nullopt});
  const auto size = shelf_.window()->size();
  show({.name = "Screenshot 2026-11-12 14-32-08 " + std::string(80, 'x') + ".png", .filed = false});
  EXPECT_EQ(shelf_.window()->size(), size);
}

TEST_F(ShelfLooks, FromRightToLeftEverythingIsMirrored) {
  QApplication::setLayoutDirection(Qt::RightToLeft);
  show({.name = "Screenshot 1.png", .filed = false});
  keep("shelf-mirrored");
  const auto thumb = placeOf("shelf.thumb");
  const auto dismiss = placeOf("shelf.dismiss");
  QApplication::setLayoutDirection(Qt::LeftToRight);
  EXPECT_EQ(thumb.right(), 366 - 13 - 1);
  EXPECT_EQ(dismiss.left(), 13);
}

TEST_F(ShelfLooks, ItGrowsWithTheText) {
  const auto font = interfaceFont();
  auto larger = font;
  larger.setPointSizeF(font.pointSizeF() * 1.5);
  setInterfaceFont(larger);
  show({.name = "Screenshot 2026-11-12 14-32-08.png", .filed = false});
  keep("shelf-large-text");
  EXPECT_EQ(shelf_.window()->width(), 549);
  for (const auto* name : {"shelf.copyImage", "shelf.copyText", "shelf.edit", "shelf.file", "shelf.share"}) {
    const auto* button = in<QPushButton>(*shelf_.window(), name);
    EXPECT_LE(button->sizeHint().width(), button->width()) << name;
  }
  setInterfaceFont(font);
}

}  // namespace
}  // namespace Nimbrel
