#include "Views/Gallery/GalleryView.h"

#include "Support/Waiting.h"
#include "Views/Gallery/GalleryEmpty.h"
#include "Views/Gallery/GalleryFixture.h"
#include "Views/Gallery/MultiSelectionView.h"

#include <gmock/gmock.h>

#include <QFileDialog>
#include <QTest>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using Testing::waitUntil;

class GalleryViewTest : public Testing::GalleryFixture {
 protected:
  [[nodiscard]] std::string emptyTitle() const {
    return part("gallery.empty.placeholder").accessibleName().toStdString();
  }
  [[nodiscard]] std::string emptyDescription() const {
    return part("gallery.empty.placeholder").accessibleDescription().toStdString();
  }
  [[nodiscard]] bool has(const char* objectName) const {
    return view_->findChild<QWidget*>(QString::fromLatin1(objectName)) != nullptr;
  }
};

TEST_F(GalleryViewTest, ShowsTheLayoutOfTheSettings) {
  add(2);
  show();
  EXPECT_TRUE(has("gallery.grid"));
  EXPECT_EQ(view_->minimumWidth(), 280);
  store_->settings().galleryLayout.set(GalleryLayout::gallery);
  EXPECT_TRUE(has("gallery.pager"));
  EXPECT_FALSE(has("gallery.grid"));
}

TEST_F(GalleryViewTest, APlaceWithoutShotsSaysSo) {
  add("a.png", [](Shot& shot) { shot.filed = true; });
  store_->setFilter({Filter::Inbox{}});
  show();
  EXPECT_EQ(emptyTitle(), "No Shots");
  EXPECT_EQ(emptyDescription(), "Screenshots you take will show up here.");
  EXPECT_FALSE(part("gallery.firstRun").isVisible());
}

TEST_F(GalleryViewTest, ASearchWithoutAHitNamesTheQuery) {
  add(2);
  show();
  store_->setQuery("perigee");
  store_->runSearch();
  ASSERT_TRUE(waitUntil([&] { return has("gallery.empty"); }));
  EXPECT_EQ(emptyTitle(), "No Matches");
  EXPECT_EQ(emptyDescription(), "Nothing matches “perigee”.");
}

TEST_F(GalleryViewTest, AQueryIsShownWithoutHarm) {
  add(2);
  show();
  store_->setQuery("a\nb\u202Ec");
  store_->runSearch();
  ASSERT_TRUE(waitUntil([&] { return has("gallery.empty"); }));
  EXPECT_EQ(emptyDescription(), "Nothing matches “a b\uFFFDc”.");
}

TEST_F(GalleryViewTest, ShotsThatComeInTakeThePlaceOfTheEmptyState) {
  show();
  ASSERT_TRUE(has("gallery.empty"));
  add(1);
  reload();
  EXPECT_TRUE(waitUntil([&] { return has("gallery.grid"); }));
}

TEST_F(GalleryViewTest, AtTheFirstStartTheWatchedFoldersAreNamed) {
  show();
  EXPECT_TRUE(part("gallery.firstRun").isVisible());
  std::vector<std::string> texts;
  for (const auto* label : part("gallery.firstRun").findChildren<ElidedLabel*>()) {
    texts.push_back(label->fullText().toStdString());
  }
  EXPECT_THAT(texts, ElementsAre("Watched folder:", home_.path("Desktop")));
}

TEST_F(GalleryViewTest, AFolderCanBeAddedAtTheFirstStart) {
  show();
  home_.folder().makeFolder("Captures");
  QTest::mouseClick(&part("gallery.addFolder"), Qt::LeftButton);
  auto* dialog = view_->findChild<QFileDialog*>(QStringLiteral("addFolderDialog"));
  ASSERT_NE(dialog, nullptr);
  dialog->setDirectory(QString::fromStdString(home_.path("Captures")));
  Q_EMIT dialog->fileSelected(QString::fromStdString(home_.path("Captures")));
  dialog->close();
  EXPECT_THAT(store_->settings().sourceFolders(), ElementsAre(home_.path("Desktop"), home_.path("Captures")));
  EXPECT_THAT(part("gallery.firstRun").findChildren<ElidedLabel*>(), SizeIs(3));
}

TEST_F(GalleryViewTest, AFolderThatIsWatchedIsNotAddedAgain) {
  show();
  static_cast<GalleryEmpty&>(part("gallery.empty")).addFolder(home_.path("Desktop"));
  EXPECT_THAT(store_->settings().sourceFolders(), ElementsAre(home_.path("Desktop")));
}

class MultiSelectionTest : public Testing::GalleryFixture {
 protected:
  void showDetails() {
    store_->reload();
    store_->selectAll();
    details_ = std::make_unique<MultiSelectionView>(*store_);
    details_->resize(300, 600);
    details_->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(details_.get()));
  }
  template <class Widget>
  [[nodiscard]] Widget* find(const char* name) const {
    return details_->findChild<Widget*>(QStringLiteral("multiSelection.") + QString::fromLatin1(name));
  }

  std::unique_ptr<MultiSelectionView> details_;
};

TEST_F(MultiSelectionTest, TellsNumberAndSize) {
  add(4);
  showDetails();
  EXPECT_EQ(find<ElidedLabel>("count")->fullText(), QStringLiteral("4 shots"));
  EXPECT_EQ(find<ElidedLabel>("size")->fullText(), QStringLiteral("4 KB"));
  store_->setSelection({idOf("shot 0.png"), idOf("shot 1.png")});
  EXPECT_EQ(find<ElidedLabel>("count")->fullText(), QStringLiteral("2 shots"));
}

TEST_F(MultiSelectionTest, OffersToFileWhileOneIsInTheInbox) {
  add("a.png", [](Shot& shot) { shot.filed = true; });
  add("b.png", [](Shot& shot) { shot.filed = true; });
  add("c.png");
  showDetails();
  EXPECT_NE(find<QPushButton>("file"), nullptr);
  store_->setSelection({idOf("a.png"), idOf("b.png")});
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(find<QPushButton>("file"), nullptr);
}

TEST_F(MultiSelectionTest, ATagGoesToAllAndTheFieldIsEmptyAgain) {
  add(3);
  showDetails();
  QTest::keyClicks(find<QLineEdit>("tag"), QStringLiteral("orbit"));
  QTest::keyClick(find<QLineEdit>("tag"), Qt::Key_Return);
  EXPECT_EQ(find<QLineEdit>("tag")->text(), QString());
  for (const auto& shot : store_->shots()) EXPECT_THAT(shot->tags, ElementsAre("orbit"));
}

TEST_F(MultiSelectionTest, RemovesAllFromTheCatalogue) {
  add(3);
  showDetails();
  QTest::mouseClick(find<QPushButton>("forget"), Qt::LeftButton);
  EXPECT_THAT(store_->shots(), IsEmpty());
}

TEST_F(MultiSelectionTest, MovesAllToTheTrash) {
  add(3);
  showDetails();
  QTest::mouseClick(find<QPushButton>("trash"), Qt::LeftButton);
  EXPECT_THAT(trash_->asked, ElementsAre(SizeIs(3)));
}

}  // namespace
}  // namespace Nimbrel
