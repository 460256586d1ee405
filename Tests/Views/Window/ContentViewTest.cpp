#include "Views/Window/ContentView.h"

#include "Views/Window/WindowFixture.h"

#include "Views/Shared/Placeholder.h"
#include "Views/Window/DetailsColumn.h"
#include "Views/Window/HeaderLine.h"

#include <QLabel>
#include <QSignalSpy>

namespace Nimbrel {
namespace {

class ContentViewTest : public Testing::WindowFixture {
 protected:
  static WindowParts::Column column(const char* name) {
    return [name](QWidget* parent, EditorTarget&) {
      auto* widget = new QWidget(parent);
      widget->setObjectName(QString::fromLatin1(name));
      return widget;
    };
  }
  static WindowParts::Sheet sheet(const char* name) {
    return [name](QWidget* window) {
      auto* dialog = new QDialog(window);
      dialog->setObjectName(QString::fromLatin1(name));
      return dialog;
    };
  }
  static WindowParts wholeParts() {
    WindowParts parts;
    parts.gallery = column("gallery");
    parts.inspector = column("inspector");
    parts.severalSelected = column("several");
    parts.purge = sheet("purge");
    parts.duplicates = sheet("duplicates");
    parts.editor = [](QWidget* window, EditorTarget&) { return sheet("editor")(window); };
    return parts;
  }
  [[nodiscard]] std::string detailsShown() const {
    return find<DetailsColumn>("details")->currentWidget()->objectName().toStdString();
  }
  /// The name of the sheet that is up; empty when none is.
  [[nodiscard]] std::string sheetShown() const {
    const auto* dialog = window_->findChild<SheetHost*>()->shown();
    return dialog ? dialog->objectName().toStdString() : "";
  }
  [[nodiscard]] QString subtitle() const { return find<ElidedLabel>("header.subtitle")->fullText(); }
};

TEST_F(ContentViewTest, TheHeaderTellsTheFilterAndHowMuchItShows) {
  openWindow();
  add("a.png");
  store_->setFilter({Filter::All{}});
  settle();
  EXPECT_EQ(find<ElidedLabel>("header.title")->fullText(), QStringLiteral("All Shots"));
  EXPECT_TRUE(subtitle().startsWith(QStringLiteral("1 shots · "))) << subtitle().toStdString();
  store_->setStatus("Copied image");
  settle();
  EXPECT_TRUE(subtitle().endsWith(QStringLiteral(" · Copied image"))) << subtitle().toStdString();
}

TEST_F(ContentViewTest, TheHeaderAndTheMenusFollowAStackThatAnUnlockedShotJoins) {
  for (const auto* name : {"a.png", "b.png", "c.png"}) {
    store_->database().setApp(add(name)->id, "Firefox", "", Database::Trusted::Yes);
  }
  makeSensitive(Testing::shotNamed(*store_, "c.png"));
  const auto locked = Testing::shotNamed(*store_, "c.png");
  const auto& stack = store_->derived().shotStacks().front();
  store_->setFilter({Filter::Stack{stack.id, stack.title}});
  openWindow();
  select({locked});
  EXPECT_TRUE(subtitle().startsWith(QStringLiteral("2 shots"))) << subtitle().toStdString();
  EXPECT_FALSE(isEnabled("menu.trash")) << "it is not among those shown";
  store_->withAccess({locked}, [] {});
  owner_->decide(true);
  settle();
  EXPECT_TRUE(subtitle().startsWith(QStringLiteral("3 shots"))) << subtitle().toStdString();
  EXPECT_TRUE(isEnabled("menu.trash"));
}

TEST_F(ContentViewTest, TitleAndSubtitleStandOnOneBaseline) {
  openWindow();
  const auto baseline = [this](const char* name) {
    const auto* label = find<QLabel>(name);
    const auto metrics = label->fontMetrics();
    return label->y() + (label->height() - metrics.height()) / 2 + metrics.ascent();
  };
  EXPECT_EQ(find<QWidget>("header")->height(), 46);
  EXPECT_EQ(baseline("header.title"), baseline("header.subtitle"));
  EXPECT_EQ(find<QLabel>("header.title")->x(), 16);
}

TEST_F(ContentViewTest, ALongTitleIsCutAndStaysInTheHeader) {
  openWindow();
  store_->setFilter({Filter::Project{std::string(500, 'w')}});
  settle();
  EXPECT_LE(find<QLabel>("header.title")->geometry().right(), find<QWidget>("header")->width() - 16);
  EXPECT_FALSE(find<QLabel>("header.subtitle")->isVisible());
}

TEST_F(ContentViewTest, TheDetailsFollowTheSelection) {
  openWindow(wholeParts());
  EXPECT_EQ(detailsShown(), "details.nothing");
  EXPECT_EQ(find<Placeholder>("details.nothing")->accessibleName(), QStringLiteral("No Selection"));
  EXPECT_EQ(find<Placeholder>("details.nothing")->accessibleDescription(),
            QStringLiteral("Pick a shot to see its details."));
  const auto one = add("a.png");
  const auto other = add("b.png");
  select({one});
  EXPECT_EQ(detailsShown(), "inspector");
  select({one, other});
  EXPECT_EQ(detailsShown(), "several");
  select({});
  EXPECT_EQ(detailsShown(), "details.nothing");
}

TEST_F(ContentViewTest, OneSelectedShotThatTheFilterHidesStaysInTheInspector) {
  openWindow(wholeParts());
  select({add("a.png")});
  store_->setFilter({Filter::Favorites{}});
  settle();
  EXPECT_TRUE(store_->visible().empty());
  EXPECT_EQ(detailsShown(), "inspector");
}

TEST_F(ContentViewTest, ASheetFollowsItsFlag) {
  openWindow(wholeParts());
  store_->setShowPurge(true);
  EXPECT_EQ(sheetShown(), "purge");
  EXPECT_TRUE(find<QDialog>("purge")->isModal());
  store_->setShowPurge(false);
  EXPECT_EQ(sheetShown(), "");
}

TEST_F(ContentViewTest, ClosingASheetTakesItsFlagBack) {
  openWindow(wholeParts());
  store_->setShowPurge(true);
  QTest::keyClick(find<QDialog>("purge"), Qt::Key_Escape);
  EXPECT_FALSE(store_->showPurge());
  EXPECT_EQ(sheetShown(), "");
}

TEST_F(ContentViewTest, SheetsComeOneAfterTheOther) {
  openWindow(wholeParts());
  store_->setShowPurge(true);
  store_->setShowDuplicates(true);
  EXPECT_EQ(sheetShown(), "purge");
  find<QDialog>("purge")->accept();
  EXPECT_EQ(sheetShown(), "duplicates");
  EXPECT_FALSE(store_->showPurge());
  EXPECT_TRUE(store_->showDuplicates());
}

TEST_F(ContentViewTest, AFlagFromBeforeTheWindowOpensItsSheet) {
  store_->setShowDuplicates(true);
  openWindow(wholeParts());
  EXPECT_EQ(sheetShown(), "duplicates");
}

TEST_F(ContentViewTest, ASheetThatIsNotThereIsTakenBack) {
  openWindow();
  store_->setShowShrink(true);
  EXPECT_FALSE(store_->showShrink());
  EXPECT_EQ(sheetShown(), "");
}

TEST_F(ContentViewTest, RecordingToolsWithoutARecordingSayThatThereIsNone) {
  openWindow();
  store_->setShowRecordingTools(true);
  ASSERT_EQ(sheetShown(), "noRecording");
  EXPECT_EQ(find<QDialog>("noRecording")->size(), QSize(420, 260));
  EXPECT_EQ(find<QDialog>("noRecording")->findChild<Placeholder*>()->accessibleName(), QStringLiteral("No Recording"));
  QTest::keyClick(find<QDialog>("noRecording"), Qt::Key_Escape);
  EXPECT_FALSE(store_->showRecordingTools());
}

TEST_F(ContentViewTest, ARequestOpensTheEditorForAShotOfTheCatalogue) {
  openWindow(wholeParts());
  const auto shot = add("a.png");
  store_->requestEdit(shot);
  EXPECT_EQ(sheetShown(), "editor");
  EXPECT_EQ(window_->editor().shot(), std::optional(shot));
}

TEST_F(ContentViewTest, ARequestForAShotThatIsGoneIsIgnored) {
  openWindow(wholeParts());
  const auto shot = add("a.png");
  store_->forget({shot});
  store_->requestEdit(shot);
  EXPECT_EQ(sheetShown(), "");
}

TEST_F(ContentViewTest, RelockingClosesTheEditor) {
  openWindow(wholeParts());
  const auto shot = add("a.png");
  makeSensitive(shot);
  const auto sensitive = Testing::shotNamed(*store_, "a.png");
  store_->requestEdit(sensitive);
  EXPECT_EQ(sheetShown(), "") << "not before the owner has authenticated";
  owner_->decide(true);
  ASSERT_EQ(sheetShown(), "editor");
  store_->lockSensitive();
  EXPECT_EQ(sheetShown(), "");
  EXPECT_FALSE(window_->editor().shot());
}

TEST_F(ContentViewTest, ARequestForAnotherShotReplacesTheEditor) {
  openWindow(wholeParts());
  const auto first = add("a.png");
  const auto second = add("b.png");
  store_->requestEdit(first);
  const QPointer<QDialog> former = find<QDialog>("editor");
  store_->requestEdit(second);
  EXPECT_EQ(sheetShown(), "editor");
  EXPECT_EQ(window_->editor().shot(), std::optional(second));
  EXPECT_TRUE(!former || !former->isVisible());
}

TEST_F(ContentViewTest, RelockingClosesTheEditorOfAShotThatTurnedOutToBeSensitive) {
  openWindow(wholeParts());
  const auto shot = add("a.png");
  store_->requestEdit(shot);
  makeSensitive(shot);
  EXPECT_EQ(sheetShown(), "editor") << "nobody has left it";
  store_->lockSensitive();
  EXPECT_EQ(sheetShown(), "");
}

TEST_F(ContentViewTest, RemovingTheShotInTheEditorDoesNotCloseIt) {
  openWindow(wholeParts());
  const auto shot = add("a.png");
  window_->editor().setShot(shot);
  store_->forget({shot});
  settle();
  EXPECT_EQ(sheetShown(), "editor");
}

TEST_F(ContentViewTest, ClosingTheEditorEmptiesItsTarget) {
  openWindow(wholeParts());
  window_->editor().setShot(add("a.png"));
  find<QDialog>("editor")->reject();
  EXPECT_FALSE(window_->editor().shot());
}

TEST_F(ContentViewTest, ClosingTheWindowIsTold) {
  openWindow();
  const QSignalSpy closed(window_.get(), &ContentView::closed);
  window_->close();
  EXPECT_EQ(closed.count(), 1);
}

}  // namespace
}  // namespace Nimbrel
