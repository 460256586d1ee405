// What a user does in the main window, from the click to what lies in the catalogue and on the disk.

#include "App/ApplicationFixture.h"

#include "Support/TemporaryFolder.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QMimeData>

#include <filesystem>

namespace Nimbrel {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Testing::waitUntil;

class MainWindowFlowTest : public Testing::ApplicationFixture {
 protected:
  MainWindowFlowTest() {
    addShot("Screenshot 1.png", "Invoice of the brindlewick bakery\nTotal 12.50");
    addShot("Screenshot 2.png", "Departure from platform nine");
    addShot("Screenshot 3.png", "A recipe for soup");
    openWindow();
  }

  /// The field comes to show it.
  [[nodiscard]] bool comesToRead(const char* field, const QString& text) const {
    return waitUntil([&] { return part<QLineEdit>(field).text() == text; });
  }
};

TEST_F(MainWindowFlowTest, ARowOfTheSidebarFiltersTheGallery) {
  EXPECT_TRUE(comesToShow({"Screenshot 1.png", "Screenshot 2.png", "Screenshot 3.png"}));
  store().database().setFavorite(shot("Screenshot 2.png")->id, true);
  store().reload();
  clickRow(QStringLiteral("Favorites"));
  EXPECT_TRUE(comesToShow({"Screenshot 2.png"}));
  EXPECT_EQ(part<QLabel>("header.title").text(), QStringLiteral("Favorites"));
  clickRow(QStringLiteral("All Shots"));
  EXPECT_TRUE(comesToShow({"Screenshot 1.png", "Screenshot 2.png", "Screenshot 3.png"}));
}

TEST_F(MainWindowFlowTest, TheSearchFieldFindsTextsAndEscapeShowsAllAgain) {
  typeInto("searchField", QStringLiteral("brindle"));
  EXPECT_TRUE(comesToShow({"Screenshot 1.png"}));
  typeInto("searchField", QStringLiteral("nothing of the kind"));
  EXPECT_TRUE(waitUntil([this] { return isShown(QStringLiteral("gallery.empty")); }));
  press(Qt::Key_Escape);
  EXPECT_EQ(part<QLineEdit>("searchField").text(), QString());
  EXPECT_TRUE(comesToShow({"Screenshot 1.png", "Screenshot 2.png", "Screenshot 3.png"}));
}

TEST_F(MainWindowFlowTest, AClickSelectsAndTheKeysGoOnFromThere) {
  EXPECT_TRUE(isShown(QStringLiteral("details.nothing")));
  clickShot("Screenshot 1.png");
  EXPECT_THAT(selectedNames(), ElementsAre("Screenshot 1.png"));
  EXPECT_TRUE(comesToRead("inspector.name", QStringLiteral("Screenshot 1.png")));
  press(Qt::Key_Right);
  EXPECT_THAT(selectedNames(), ElementsAre("Screenshot 2.png"));
  EXPECT_TRUE(comesToRead("inspector.name", QStringLiteral("Screenshot 2.png")));
  press(Qt::Key_Right, Qt::ShiftModifier);
  EXPECT_THAT(selectedNames(), ElementsAre("Screenshot 2.png", "Screenshot 3.png"));
  EXPECT_TRUE(waitUntil([this] { return isShown(QStringLiteral("multiSelection")); }));
  EXPECT_FALSE(isShown(QStringLiteral("inspector")));
}

TEST_F(MainWindowFlowTest, ATagIsAddedFiltersAndIsTakenAway) {
  clickShot("Screenshot 3.png");
  typeInto("inspector.newTag", QStringLiteral("kitchen"));
  press(Qt::Key_Return);
  EXPECT_THAT(catalogued("Screenshot 3.png").value().tags, ElementsAre("kitchen"));
  EXPECT_EQ(part<QLineEdit>("inspector.newTag").text(), QString());
  clickRow(QStringLiteral("kitchen"));
  EXPECT_TRUE(comesToShow({"Screenshot 3.png"}));
  clickPart("inspector.removeTag.kitchen");
  EXPECT_THAT(catalogued("Screenshot 3.png").value().tags, IsEmpty());
}

TEST_F(MainWindowFlowTest, ATagOfSeveralReachesAllOfThem) {
  clickShot("Screenshot 1.png");
  clickShot("Screenshot 3.png", Qt::ControlModifier);
  typeInto("multiSelection.tag", QStringLiteral("paper"));
  press(Qt::Key_Return);
  EXPECT_THAT(catalogued("Screenshot 1.png").value().tags, ElementsAre("paper"));
  EXPECT_THAT(catalogued("Screenshot 2.png").value().tags, IsEmpty());
  EXPECT_THAT(catalogued("Screenshot 3.png").value().tags, ElementsAre("paper"));
}

TEST_F(MainWindowFlowTest, ANoteIsWrittenAndFound) {
  clickShot("Screenshot 2.png");
  typeInto("inspector.note", QStringLiteral("for the trip to Wexcombe"));
  press(Qt::Key_Return);
  EXPECT_EQ(catalogued("Screenshot 2.png").value().note, "for the trip to Wexcombe");
  typeInto("searchField", QStringLiteral("wexcombe"));
  EXPECT_TRUE(comesToShow({"Screenshot 2.png"}));
}

TEST_F(MainWindowFlowTest, ANoteThatIsNotHandedInIsSavedWithTheWindow) {
  clickShot("Screenshot 2.png");
  typeInto("inspector.note", QStringLiteral("half a thought"));
  EXPECT_EQ(catalogued("Screenshot 2.png").value().note, "");
  window().close();
  EXPECT_EQ(catalogued("Screenshot 2.png").value().note, "half a thought");
}

TEST_F(MainWindowFlowTest, ARenamingRenamesTheFile) {
  clickShot("Screenshot 1.png");
  const auto content = Testing::contentOf(home_.desktop("Screenshot 1.png"));
  typeInto("inspector.name", QStringLiteral("bakery"));
  press(Qt::Key_Return);
  EXPECT_FALSE(catalogued("Screenshot 1.png"));
  EXPECT_EQ(catalogued("bakery.png").value().path, home_.desktop("bakery.png"));
  EXPECT_FALSE(fs::exists(home_.desktop("Screenshot 1.png")));
  EXPECT_EQ(Testing::contentOf(home_.desktop("bakery.png")), content);
  EXPECT_TRUE(comesToRead("inspector.name", QStringLiteral("bakery.png")));
  EXPECT_TRUE(comesToShow({"bakery.png", "Screenshot 2.png", "Screenshot 3.png"}));
}

TEST_F(MainWindowFlowTest, ANameThatIsTakenIsNotTakenAway) {
  clickShot("Screenshot 1.png");
  const auto others = Testing::contentOf(home_.desktop("Screenshot 2.png"));
  typeInto("inspector.name", QStringLiteral("Screenshot 2.png"));
  press(Qt::Key_Return);
  EXPECT_EQ(Testing::contentOf(home_.desktop("Screenshot 2.png")), others);
  EXPECT_EQ(catalogued("Screenshot 2.png").value().path, home_.desktop("Screenshot 2.png"));
  EXPECT_TRUE(comesToShow({"Screenshot 2 2.png", "Screenshot 2.png", "Screenshot 3.png"}));
  EXPECT_TRUE(fs::exists(home_.desktop("Screenshot 2 2.png")));
}

TEST_F(MainWindowFlowTest, AFavouriteIsMarkedAndUnmarked) {
  clickShot("Screenshot 2.png");
  clickPart("inspector.favorite");
  EXPECT_TRUE(catalogued("Screenshot 2.png").value().favorite);
  clickRow(QStringLiteral("Favorites"));
  EXPECT_TRUE(comesToShow({"Screenshot 2.png"}));
  clickPart("inspector.favorite");
  EXPECT_FALSE(catalogued("Screenshot 2.png").value().favorite);
  EXPECT_TRUE(comesToShow({}));
}

TEST_F(MainWindowFlowTest, FilingMovesTheFileFromTheInboxToTheLibrary) {
  clickRow(QStringLiteral("Inbox"));
  clickShot("Screenshot 1.png");
  const auto id = shot("Screenshot 1.png")->id;
  const auto content = Testing::contentOf(home_.desktop("Screenshot 1.png"));
  chooseFromMenu("menu.fileToLibrary");
  EXPECT_TRUE(comesToShow({"Screenshot 2.png", "Screenshot 3.png"}));
  EXPECT_FALSE(fs::exists(home_.desktop("Screenshot 1.png")));
  const auto filed = store().database().shot(id).value();
  EXPECT_TRUE(filed.filed);
  EXPECT_THAT(filed.path, ::testing::StartsWith(home_.inLibrary("")));
  EXPECT_EQ(Testing::contentOf(filed.path), content);
}

TEST_F(MainWindowFlowTest, TheRecognisedTextIsCopiedPlain) {
  clickShot("Screenshot 1.png");
  clickPart("inspector.copyText");
  const auto* copied = QGuiApplication::clipboard()->mimeData();
  EXPECT_EQ(copied->text(), QStringLiteral("Invoice of the brindlewick bakery\nTotal 12.50"));
  EXPECT_FALSE(copied->hasImage());
  clickShot("Screenshot 2.png");
  chooseFromMenu("menu.copyText");
  EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("Departure from platform nine"));
}

TEST_F(MainWindowFlowTest, TheImageIsCopiedAndNothingElse) {
  clickShot("Screenshot 2.png");
  clickPart("inspector.copyImage");
  const auto* copied = QGuiApplication::clipboard()->mimeData();
  const QImage file(QString::fromStdString(home_.desktop("Screenshot 2.png")));
  const auto picture = qvariant_cast<QImage>(copied->imageData());
  EXPECT_EQ(picture.convertToFormat(QImage::Format_RGB32), file.convertToFormat(QImage::Format_RGB32));
  EXPECT_FALSE(copied->hasText());
  EXPECT_FALSE(copied->hasUrls());
}

TEST_F(MainWindowFlowTest, TheDeleteKeyMovesTheSelectedToTheTrash) {
  clickShot("Screenshot 1.png");
  clickShot("Screenshot 3.png", Qt::ControlModifier);
  const auto content = Testing::contentOf(home_.desktop("Screenshot 1.png"));
  press(Qt::Key_Delete);
  EXPECT_TRUE(comesToShow({"Screenshot 2.png"}));
  EXPECT_FALSE(catalogued("Screenshot 1.png"));
  EXPECT_FALSE(catalogued("Screenshot 3.png"));
  EXPECT_FALSE(fs::exists(home_.desktop("Screenshot 1.png")));
  EXPECT_FALSE(fs::exists(home_.desktop("Screenshot 3.png")));
  EXPECT_EQ(Testing::contentOf(home_.path(".local/share/Trash/files/Screenshot 1.png")), content);
  EXPECT_TRUE(fs::exists(home_.path(".local/share/Trash/info/Screenshot 3.png.trashinfo")));
}

TEST_F(MainWindowFlowTest, WhatAnotherProcessWritesIsShown) {
  addShot("Screenshot 4.png");
  EXPECT_TRUE(comesToShow({"Screenshot 1.png", "Screenshot 2.png", "Screenshot 3.png", "Screenshot 4.png"}));
}

TEST_F(MainWindowFlowTest, TheGalleryLayoutHasTheSameShotsAndKeys) {
  clickShot("Screenshot 1.png");
  window().findChild<QAction*>(QStringLiteral("viewOptions.gallery"))->trigger();
  EXPECT_TRUE(waitUntil([this] { return isShown(QStringLiteral("gallery.pager")); }));
  part("gallery.pager").setFocus(Qt::OtherFocusReason);
  press(Qt::Key_Right);
  EXPECT_THAT(selectedNames(), ElementsAre("Screenshot 2.png"));
  EXPECT_TRUE(comesToRead("inspector.name", QStringLiteral("Screenshot 2.png")));
}

}  // namespace
}  // namespace Nimbrel
