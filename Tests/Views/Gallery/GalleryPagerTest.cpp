#include "Views/Gallery/GalleryPager.h"

#include "Support/Waiting.h"
#include "Views/Gallery/GalleryFixture.h"
#include "Views/Gallery/StripScroller.h"

#include <gmock/gmock.h>

#include <QAccessible>
#include <QTest>
#include <QWheelEvent>

namespace Nimbrel {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::Optional;
using Testing::waitUntil;

class GalleryPagerTest : public Testing::GalleryFixture {
 protected:
  GalleryPagerTest() { store_->settings().galleryLayout.set(GalleryLayout::gallery); }

  [[nodiscard]] GalleryPager& pager() const { return static_cast<GalleryPager&>(part("gallery.pager")); }
  [[nodiscard]] PageStrip& pages() const { return static_cast<PageStrip&>(part("gallery.pages")); }
  [[nodiscard]] Filmstrip& filmstrip() const { return static_cast<Filmstrip&>(part("gallery.filmstrip")); }
  /// The page that fills the strip.
  [[nodiscard]] const GalleryPage* front() const {
    for (const auto* page : pages().findChildren<GalleryPage*>()) {
      if (!page->isHidden() && page->x() == 0) return page;
    }
    return nullptr;
  }
  [[nodiscard]] std::string frontName() const {
    return front() != nullptr && front()->shot() ? (*front()->shot())->name : "";
  }
  [[nodiscard]] bool isMiddle(std::size_t cell) const {
    return std::abs(filmstrip().cellPlace(cell).center().x() - filmstrip().rect().center().x()) <= 1;
  }
  static void turn(QWidget& widget, int notches) {
    const QPointF place(widget.rect().center());
    QWheelEvent event(place, widget.mapToGlobal(place), {}, {0, -120 * notches}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&widget, &event);
  }
};

TEST(SpringTest, EndsAtRestAndPassesItOnceOnTheWay) {
  EXPECT_DOUBLE_EQ(springDistance(0), 1);
  EXPECT_LT(springDistance(0.15), 0);
  EXPECT_NEAR(springDistance(0.4), 0, 1e-4);
}

TEST_F(GalleryPagerTest, BeginsWithTheFirstShotWhenNoneIsSelected) {
  add(5);
  show();
  EXPECT_THAT(selectedNames(), ElementsAre("shot 0.png"));
  EXPECT_THAT(pager().galleryScrollID(), Optional(idOf("shot 0.png")));
  EXPECT_THAT(pager().filmstripScrollID(), Optional(idOf("shot 0.png")));
  EXPECT_EQ(store_->gridColumns(), 1);
}

TEST_F(GalleryPagerTest, BeginsWithTheSelectedShot) {
  add(5);
  store_->reload();
  store_->setSelection({idOf("shot 3.png")});
  show();
  EXPECT_THAT(selectedNames(), ElementsAre("shot 3.png"));
  EXPECT_EQ(frontName(), "shot 3.png");
  EXPECT_TRUE(isMiddle(3));
}

TEST_F(GalleryPagerTest, SelectingOneShotTurnsBothToIt) {
  add(9);
  show();
  store_->setSelection({idOf("shot 6.png")});
  EXPECT_THAT(pager().galleryScrollID(), Optional(idOf("shot 6.png")));
  EXPECT_THAT(pager().filmstripScrollID(), Optional(idOf("shot 6.png")));
  EXPECT_TRUE(waitUntil([&] { return frontName() == "shot 6.png" && isMiddle(6); }));
}

TEST_F(GalleryPagerTest, SelectingSeveralMovesNeither) {
  add(9);
  show();
  store_->setSelection({idOf("shot 5.png"), idOf("shot 6.png")});
  EXPECT_EQ(pages().target(), 0U);
  EXPECT_EQ(filmstrip().target(), 0U);
  EXPECT_THAT(pager().galleryScrollID(), Optional(idOf("shot 0.png")));
  EXPECT_THAT(selectedNames(), ElementsAre("shot 5.png", "shot 6.png"));
}

TEST_F(GalleryPagerTest, TurningThePagesSelectsAndTheFilmstripFollows) {
  add(5);
  show();
  turn(pages(), 1);
  EXPECT_THAT(selectedNames(), ElementsAre("shot 1.png"));
  EXPECT_TRUE(waitUntil([&] { return isMiddle(1) && frontName() == "shot 1.png"; }));
}

TEST_F(GalleryPagerTest, TurningTheFilmstripSelectsAndThePagesFollow) {
  add(5);
  show();
  turn(filmstrip(), 2);
  EXPECT_THAT(selectedNames(), ElementsAre("shot 2.png"));
  EXPECT_TRUE(waitUntil([&] { return isMiddle(2) && frontName() == "shot 2.png"; }));
}

TEST_F(GalleryPagerTest, OneTurnPassesAFewPagesAtMostAndStopsAtTheLast) {
  add(6);
  show();
  turn(pages(), 20);
  EXPECT_THAT(selectedNames(), ElementsAre("shot 3.png"));
  turn(pages(), 20);
  EXPECT_THAT(selectedNames(), ElementsAre("shot 5.png"));
}

TEST_F(GalleryPagerTest, KeysMoveByOneInAllDirections) {
  add(5);
  show();
  key(Qt::Key_Down);
  key(Qt::Key_Right);
  key(Qt::Key_Up);
  EXPECT_THAT(selectedNames(), ElementsAre("shot 1.png"));
}

TEST_F(GalleryPagerTest, AClickInTheFilmstripSelectsAndADoubleClickOpens) {
  add(5);
  show();
  const auto place = filmstrip().cellPlace(1).center();
  QTest::mouseClick(&filmstrip(), Qt::LeftButton, {}, place);
  EXPECT_THAT(selectedNames(), ElementsAre("shot 1.png"));
  QTest::mouseDClick(&filmstrip(), Qt::LeftButton, {}, place);
  EXPECT_THAT(workspace_->files, ElementsAre(home_.path("shot 1.png")));
}

TEST_F(GalleryPagerTest, ADoubleClickOnThePreviewOpens) {
  add(2);
  show();
  ASSERT_NE(front(), nullptr);
  QTest::mouseDClick(&front()->preview(), Qt::LeftButton, {}, front()->preview().rect().center());
  EXPECT_THAT(workspace_->files, ElementsAre(home_.path("shot 0.png")));
}

TEST_F(GalleryPagerTest, AProtectedShotIsNeverDecoded) {
  add("secret.png", [](Shot& shot) {
    shot.ocrDone = true;
    shot.ocr = "hunter2";
    shot.sensitive = {"Password"};
  });
  show();
  ASSERT_NE(front(), nullptr);
  EXPECT_TRUE(front()->preview().isObscured());
  EXPECT_EQ(front()->findChild<ElidedLabel*>(QStringLiteral("gallery.title"))->fullText(),
            QStringLiteral("Sensitive screenshot"));
  Testing::runEventLoopFor(std::chrono::milliseconds(30));
  EXPECT_THAT(decoded(), IsEmpty());
}

TEST_F(GalleryPagerTest, AShotThatIsUnlockedAppearsAndGoesWhenItIsLockedAgain) {
  add("secret.png", [](Shot& shot) {
    shot.ocrDone = true;
    shot.ocr = "hunter2";
    shot.sensitive = {"Password"};
  });
  show();
  store_->withAccess(store_->shots(), [] {});
  owner_->decide(true);
  EXPECT_TRUE(waitUntil([&] { return front() != nullptr && !front()->preview().image().isNull(); }));
  store_->lockSensitive();
  EXPECT_TRUE(waitUntil([&] { return front()->preview().isObscured(); }));
  EXPECT_TRUE(front()->preview().image().isNull());
}

TEST_F(GalleryPagerTest, APictureTooLargeToBeKeptIsShownAllTheSame) {
  add(1);
  pictureOf_ = [](const std::string&, int) {
    QImage image(6000, 4200, QImage::Format_Grayscale8);
    image.fill(Qt::gray);
    return image;
  };
  show();
  EXPECT_TRUE(waitUntil([&] { return front() != nullptr && !front()->preview().image().isNull(); }));
  EXPECT_EQ(previews_.totalCost(), 0);
  store_->database().setFavorite(idOf("shot 0.png"), true);
  reload();
  EXPECT_TRUE(waitUntil([&] { return front() != nullptr && (*front()->shot())->favorite; }));
  EXPECT_FALSE(front()->preview().image().isNull());
}

TEST_F(GalleryPagerTest, APictureThatCannotBeDecodedLeavesTheRing) {
  add(1);
  pictureOf_ = [](const std::string&, int) { return QImage(); };
  show();
  ASSERT_TRUE(waitUntil([&] { return decoded().size() >= 2; }));
  Testing::runEventLoopFor(std::chrono::milliseconds(30));
  EXPECT_TRUE(front()->preview().findChild<BusyRing*>()->isVisible());
}

TEST_F(GalleryPagerTest, WhenTheShotInFrontGoesTheNextTakesItsPlace) {
  add(5);
  show();
  store_->setSelection({idOf("shot 2.png")});
  store_->forget({Testing::shotNamed(*store_, "shot 2.png")});
  EXPECT_TRUE(waitUntil([&] { return frontName() == "shot 3.png" && isMiddle(2); }));
  EXPECT_THAT(selectedNames(), ElementsAre("shot 3.png"));
}

TEST_F(GalleryPagerTest, AReloadKeepsTheShotInFrontAndASelectionOfSeveral) {
  add(5);
  show();
  store_->setSelection({idOf("shot 2.png")});
  store_->selectAll();
  add("new.png", [this](Shot& shot) { shot.date = home_.now; });
  reload();
  EXPECT_TRUE(waitUntil([&] { return frontName() == "shot 2.png" && isMiddle(3); }));
  EXPECT_EQ(store_->selection().size(), 5U);
}

TEST_F(GalleryPagerTest, CellsOfTheFilmstripAreReadByTheirNames) {
  add(3);
  show();
  auto* list = QAccessible::queryAccessibleInterface(&filmstrip());
  ASSERT_EQ(list->childCount(), 3);
  EXPECT_TRUE(list->child(1)->text(QAccessible::Name).startsWith(QStringLiteral("shot 1.png, ")));
  EXPECT_TRUE(list->child(0)->state().selected);
}

}  // namespace
}  // namespace Nimbrel
