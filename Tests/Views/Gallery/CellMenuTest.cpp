#include "Support/FakePasteboard.h"
#include "Support/Waiting.h"
#include "Views/Gallery/CellMenu.h"
#include "Views/Gallery/GalleryFixture.h"
#include "Views/Gallery/ShotDrag.h"
#include "Views/Shared/Buttons.h"

#include <gmock/gmock.h>

#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QUrl>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class CellMenuTest : public Testing::GalleryFixture {
 protected:
  /// The menu of a cell, as a click with the right button opens it.
  [[nodiscard]] QMenu& menuOf(std::size_t cell) {
    const auto place = grid().cellPlace(cell).center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, grid().viewport()->mapToGlobal(place));
    QCoreApplication::sendEvent(grid().viewport(), &event);
    auto* menu = grid().findChild<QMenu*>(QStringLiteral("gallery.cellMenu"));
    EXPECT_NE(menu, nullptr);
    return *menu;
  }
  /// Titles, a line for a divider.
  static std::vector<std::string> titlesOf(const QMenu& menu) {
    std::vector<std::string> titles;
    for (const auto* action : menu.actions()) {
      titles.push_back(action->isSeparator() ? "-" : action->text().toStdString());
    }
    return titles;
  }
  void choose(QMenu& menu, const QString& title) {
    for (auto* action : menu.actions()) {
      if (action->text() == title) return action->trigger();
    }
    ADD_FAILURE() << "no " << title.toStdString();
  }
  [[nodiscard]] static bool isEnabled(const QMenu& menu, const QString& title) {
    for (const auto* action : menu.actions()) {
      if (action->text() == title) return action->isEnabled();
    }
    return false;
  }
};

TEST_F(CellMenuTest, OffersEverythingInItsOrder) {
  add(1);
  show();
  EXPECT_THAT(titlesOf(menuOf(0)),
              ElementsAre("Open", "Reveal in Finder", "-", "Copy Image", "Copy Text", "Edit…", "-", "Pin to Screen",
                          "Find Similar", "Share…", "Shrink to HEIC", "-", "Add to Favorites", "File to Library", "-",
                          "Remove from Catalogue", "Move to Trash"));
}

TEST_F(CellMenuTest, OfAFiledFavouriteSaysSo) {
  add("a.png", [](Shot& shot) {
    shot.filed = true;
    shot.favorite = true;
  });
  show();
  const auto titles = titlesOf(menuOf(0));
  EXPECT_THAT(titles, ::testing::Contains("Remove from Favorites"));
  EXPECT_THAT(titles, ::testing::Not(::testing::Contains("File to Library")));
}

TEST_F(CellMenuTest, WhatNobodyAnswersIsDisabled) {
  add(1);
  show();
  EXPECT_FALSE(isEnabled(menuOf(0), QStringLiteral("Edit…")));
  EXPECT_FALSE(isEnabled(menuOf(0), QStringLiteral("Pin to Screen")));
  QObject::connect(&view_->actions(), &GalleryActions::editRequested, view_.get(), [] {});
  QMenu menu;
  fillCellMenu(menu, grid().shots().front(), grid().shots(), *store_, view_->actions());
  EXPECT_TRUE(isEnabled(menu, QStringLiteral("Edit…")));
}

TEST_F(CellMenuTest, ActsOnTheOneOrOnAllSelected) {
  add(3);
  show();
  store_->setSelection({idOf("shot 0.png"), idOf("shot 1.png")});
  auto& menu = menuOf(0);
  choose(menu, QStringLiteral("Open"));
  EXPECT_THAT(workspace_->files, ElementsAre(home_.path("shot 0.png")));
  choose(menu, QStringLiteral("Move to Trash"));
  EXPECT_THAT(trash_->asked, ElementsAre(SizeIs(2)));
}

TEST_F(CellMenuTest, OfAShotThatIsNotSelectedActsOnItAlone) {
  add(3);
  show();
  store_->setSelection({idOf("shot 0.png"), idOf("shot 1.png")});
  choose(menuOf(2), QStringLiteral("Move to Trash"));
  EXPECT_THAT(trash_->asked, ElementsAre(ElementsAre(home_.path("shot 2.png"))));
}

TEST_F(CellMenuTest, MakesAFavouriteAndNoneAgain) {
  add(1);
  show();
  choose(menuOf(0), QStringLiteral("Add to Favorites"));
  EXPECT_TRUE(store_->shots().front()->favorite);
}

TEST_F(CellMenuTest, DoesNothingToARowThatTookTheIdOfAShotGoneMeanwhile) {
  const auto id = add("old.png");
  show();
  auto& menu = menuOf(0);
  store_->database().remove(id, Database::IgnorePath::No);
  const auto next = add("new.png");
  store_->reload();
  ASSERT_EQ(next, id);
  choose(menu, QStringLiteral("Add to Favorites"));
  store_->reload();
  EXPECT_FALSE(store_->shots().front()->favorite);
}

TEST_F(CellMenuTest, AShotThatTurnsOutToBeSensitiveUnderTheMenuIsNotOpened) {
  add(1);
  show();
  auto& menu = menuOf(0);
  store_->database().setOCR(idOf("shot 0.png"), "password: abcdef", {"Password"});
  choose(menu, QStringLiteral("Open"));
  EXPECT_THAT(workspace_->files, IsEmpty());
}

TEST_F(CellMenuTest, ALockedShotIsShownInItsFolderOnlyWhenTheOwnerAllowsIt) {
  add("secret.png", [](Shot& shot) {
    shot.ocrDone = true;
    shot.ocr = "hunter2";
    shot.sensitive = {"Password"};
  });
  show();
  choose(menuOf(0), QStringLiteral("Reveal in Finder"));
  ASSERT_TRUE(owner_->isAsked());
  owner_->decide(false);
  EXPECT_THAT(workspace_->revealed, IsEmpty());
}

TEST_F(CellMenuTest, ADragOffersTheFileByItsBytesAndThePictureWhenAsked) {
  add("caf\xE9 #1.png");
  show();
  const auto data = dragData(*store_, *store_->shots().front());
  ASSERT_TRUE(data);
  EXPECT_TRUE(data->hasUrls());
  EXPECT_TRUE(data->hasImage());
  const auto encoded = data->urls().front().toEncoded();
  EXPECT_TRUE(encoded.endsWith("caf%E9%20%231.png")) << encoded.toStdString();
  // There is no such file.
  EXPECT_FALSE(data->imageData().isValid());
}

TEST_F(CellMenuTest, ADragOfALockedShotOffersNothing) {
  add("secret.png", [](Shot& shot) {
    shot.ocrDone = true;
    shot.ocr = "hunter2";
    shot.sensitive = {"Password"};
  });
  show();
  EXPECT_EQ(dragData(*store_, *store_->shots().front()), nullptr);
}

}  // namespace
}  // namespace Nimbrel
