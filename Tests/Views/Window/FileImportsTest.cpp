#include "Views/Window/FileImports.h"

#include "Views/Window/WindowFixture.h"

#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QImage>
#include <QMimeData>
#include <QUrl>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::StartsWith;
using ::testing::UnorderedElementsAre;

class FileImportsTest : public Testing::WindowFixture {
 protected:
  FileImportsTest() { openWindow(); }

  /// Drops on the main window, as another program's drag does; false when it does not want that.
  bool drop(const QMimeData& data) {
    const QPoint place(600, 400);
    QDragEnterEvent enter(place, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(window_.get(), &enter);
    if (!enter.isAccepted()) return false;
    QDropEvent event(place, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(window_.get(), &event);
    EXPECT_EQ(event.dropAction(), Qt::CopyAction) << "nothing is taken away from where it lies";
    return event.isAccepted();
  }
  static QMimeData* files(QMimeData& data, const std::vector<std::string>& paths) {
    QList<QUrl> urls;
    for (const auto& path : paths) urls << QUrl::fromLocalFile(QString::fromStdString(path));
    data.setUrls(urls);
    return &data;
  }
  bool dropFiles(const std::vector<std::string>& paths) {
    QMimeData data;
    return drop(*files(data, paths));
  }
  [[nodiscard]] bool waitForStatus() {
    return QTest::qWaitFor([this] { return !store_->status().empty(); });
  }
  [[nodiscard]] std::vector<std::string> names() const { return Testing::namesOf(store_->shots()); }
  static QImage picture() {
    QImage image(40, 30, QImage::Format_RGB32);
    image.fill(Qt::red);
    return image;
  }
};

TEST_F(FileImportsTest, DroppedFilesAreImportedWhereTheyLie) {
  const auto one = home_.addFile(home_.path("elsewhere/a.png"));
  EXPECT_TRUE(dropFiles({one, home_.addFile(home_.path("elsewhere/b.jpg"))}));
  ASSERT_TRUE(waitForStatus());
  EXPECT_EQ(store_->status(), "Imported 2");
  EXPECT_EQ(Testing::shotNamed(*store_, "a.png")->path, one);
}

TEST_F(FileImportsTest, OfDroppedFoldersTheImagesAreImported) {
  home_.addFile(home_.path("album/a.png"));
  home_.addFile(home_.path("album/deeper/b.heic"));
  home_.addFile(home_.path("album/notes.txt"));
  EXPECT_TRUE(dropFiles({home_.path("album")}));
  ASSERT_TRUE(waitForStatus());
  EXPECT_THAT(names(), UnorderedElementsAre("a.png", "b.heic"));
}

TEST_F(FileImportsTest, AFileThatIsNoImageOrGoneContributesNothing) {
  EXPECT_TRUE(
      dropFiles({home_.addFile(home_.path("notes.txt")), home_.path("gone.png"), home_.addFile(home_.path("a.png"))}));
  ASSERT_TRUE(waitForStatus());
  EXPECT_THAT(names(), ::testing::Contains("a.png"));
  EXPECT_THAT(names(), ::testing::Not(::testing::Contains("notes.txt")));
}

TEST_F(FileImportsTest, NamesThatAreNoTextAreKept) {
  const auto path = home_.addFile(home_.path("odd \xff name.png"));
  QMimeData data;
  data.setData(QStringLiteral("text/uri-list"),
               "file://" + QByteArray::fromStdString(path).toPercentEncoding("/") + "\r\n");
  ASSERT_TRUE(drop(data));
  ASSERT_TRUE(waitForStatus());
  ASSERT_THAT(store_->shots(), SizeIs(1));
  EXPECT_EQ(store_->shots().front()->path, path);
}

TEST_F(FileImportsTest, TextAloneIsNotWanted) {
  QMimeData data;
  data.setText(QStringLiteral("hello"));
  EXPECT_FALSE(drop(data));
}

TEST_F(FileImportsTest, AnAddressOfTheWebAloneIsNotWanted) {
  QMimeData data;
  data.setUrls({QUrl(QStringLiteral("https://example.org/a.png"))});
  EXPECT_FALSE(drop(data));
}

TEST_F(FileImportsTest, ADroppedPictureBecomesAFileNamedLikeACapture) {
  QMimeData data;
  data.setImageData(picture());
  EXPECT_TRUE(drop(data));
  ASSERT_TRUE(waitForStatus());
  ASSERT_THAT(store_->shots(), SizeIs(1));
  const auto& shot = *store_->shots().front();
  EXPECT_THAT(shot.path, StartsWith(home_.path("Desktop/")));
  EXPECT_THAT(shot.path, EndsWith(".png"));
  EXPECT_EQ(QImage(QString::fromStdString(shot.path)).pixelColor(5, 5), QColor(Qt::red));
}

TEST_F(FileImportsTest, AFileIsPreferredToItsPicture) {
  QMimeData data;
  files(data, {home_.addFile(home_.path("a.png"))});
  data.setImageData(picture());
  EXPECT_TRUE(drop(data));
  ASSERT_TRUE(waitForStatus());
  EXPECT_THAT(names(), ElementsAre("a.png"));
}

TEST_F(FileImportsTest, PastingAPictureMakesAPngInTheFirstWatchedFolder) {
  const auto watched = home_.path("Captures");
  store_->settings().sources.set({watched, home_.path("Desktop")});
  QGuiApplication::clipboard()->setImage(picture());
  find<QWidget>("sidebar")->setFocus();
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_V, Qt::ControlModifier);
  ASSERT_TRUE(waitForStatus());
  EXPECT_EQ(store_->status(), "Imported 1");
  ASSERT_THAT(store_->shots(), SizeIs(1));
  EXPECT_THAT(store_->shots().front()->path, StartsWith(watched + "/"));
  EXPECT_EQ(store_->shots().front()->path.substr(0, watched.size()),
            store_->captureLocation(CaptureMode::area, CaptureDestination::inbox).substr(0, watched.size()));
}

TEST_F(FileImportsTest, PicturesOfOneSecondHaveFilesOfTheirOwn) {
  store_->importPicture(picture());
  store_->importPicture(picture());
  store_->importPicture(picture());
  EXPECT_TRUE(QTest::qWaitFor([this] { return store_->shots().size() == 3; }));
}

TEST_F(FileImportsTest, PastingTextOutsideOfFieldsDoesNothing) {
  QGuiApplication::clipboard()->setText(QStringLiteral("hello"));
  find<QWidget>("sidebar")->setFocus();
  action("menu.paste")->trigger();
  settle();
  EXPECT_THAT(store_->shots(), IsEmpty());
  EXPECT_EQ(store_->status(), "");
}

TEST_F(FileImportsTest, APictureThatCannotBeWrittenIsTold) {
  home_.addFile(home_.path("no folder"));
  store_->settings().sources.set({home_.path("no folder")});
  store_->importPicture(picture());
  ASSERT_TRUE(waitForStatus());
  EXPECT_THAT(store_->status(), StartsWith("Could not save the picture: "));
}

}  // namespace
}  // namespace Nimbrel
