// Files that go by the pointer from one program to another, by way of the display's own protocol.

#include "App/DesktopFixture.h"

#include "Support/Pictures.h"
#include "Support/TellingProgram.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QDrag>
#include <QPointer>

#include <filesystem>

namespace Nimbrel {
namespace {

using Testing::TellingProgram;
using Testing::waitUntil;

const QString source = QStringLiteral("^Source of files$");
const QString target = QStringLiteral("^Target of files$");

class MainWindowDragTest : public Testing::DesktopFixture {
 protected:
  MainWindowDragTest() {
    addShot("Screenshot 1.png", "A recipe for soup");
    addShot("Screenshot secret.png", "the key is under the mat", {"Password"});
    openWindowAside();
  }

  /// A picture in a folder that nobody watches.
  [[nodiscard]] QString outsider(const std::string& name) const {
    Testing::writePicture(home_.path("elsewhere/" + name), 64, 48, 9);
    return QString::fromStdString(home_.path("elsewhere/" + name));
  }
  /// Takes hold of what is there; whoever has it there knows that the button is pressed.
  static void takeHold(QPoint place) {
    pointTo(place);
    act(QStringLiteral("mousedown 1"));
  }
  void takeHoldOf(const std::string& name) const {
    takeHold(placeOfShot(name));
    ASSERT_TRUE(waitUntil([] { return QGuiApplication::mouseButtons().testFlag(Qt::LeftButton); }));
  }
  [[nodiscard]] QPoint middleOfWindow() const { return window().geometry().center(); }
};

TEST_F(MainWindowDragTest, FilesOfAnotherProgramAreImportedWhereTheyLie) {
  TellingProgram other("DragProgram", {QStringLiteral("drag"), outsider("a.png"), outsider("b.png")});
  other.expectLine("ready");
  takeHold(middleOf(source));
  carryTo(middleOfWindow(), [&] { return other.hasTold("welcome"); });
  other.expectLine("copied");
  EXPECT_TRUE(waitUntil([this] { return catalogued("a.png") && catalogued("b.png"); }));
  EXPECT_EQ(catalogued("a.png").value().path, home_.path("elsewhere/a.png"));
  EXPECT_FALSE(catalogued("a.png").value().filed);
  EXPECT_TRUE(std::filesystem::exists(home_.path("elsewhere/b.png")));
}

TEST_F(MainWindowDragTest, OfAFolderTheImagesAreImported) {
  Testing::writePicture(home_.path("elsewhere/deep/c.png"));
  home_.folder().write("elsewhere/deep/letter.txt", "no picture");
  const auto folder = QString::fromStdString(home_.path("elsewhere/deep"));
  TellingProgram other("DragProgram", {QStringLiteral("drag"), folder});
  other.expectLine("ready");
  takeHold(middleOf(source));
  carryTo(middleOfWindow(), [&] { return other.hasTold("welcome"); });
  EXPECT_TRUE(waitUntil([this] { return catalogued("c.png").has_value(); }));
  EXPECT_FALSE(catalogued("letter.txt"));
}

TEST_F(MainWindowDragTest, AShotIsHandedOutAsItsFileAndItsPicture) {
  TellingProgram other("DragProgram", {QStringLiteral("drop")});
  other.expectLine("ready");
  const auto place = middleOf(target);
  takeHoldOf("Screenshot 1.png");
  carryTo(place, [&] { return other.hasTold("entered"); });
  other.expectLine("done");
  const auto url = "file://" + QByteArray::fromStdString(home_.desktop("Screenshot 1.png")).replace(' ', "%20");
  EXPECT_TRUE(other.hasTold("file " + url));
  EXPECT_TRUE(other.hasTold("picture 320x200"));
  EXPECT_TRUE(std::filesystem::exists(home_.desktop("Screenshot 1.png"))) << "it stays where it is";
  EXPECT_TRUE(catalogued("Screenshot 1.png"));
}

TEST_F(MainWindowDragTest, AnUnlockedShotStaysSoWhileItIsCarried) {
  TellingProgram other("DragProgram", {QStringLiteral("drop")});
  other.expectLine("ready");
  const auto place = middleOf(target);
  comeBack();
  unlock("Screenshot secret.png");
  takeHoldOf("Screenshot secret.png");
  carryTo(place, [&] { return other.hasTold("entered") && isUnlocked(); });
  other.expectLine("done");
  EXPECT_TRUE(other.hasTold("picture 320x200"));
  EXPECT_TRUE(staysUnlocked());
}

TEST_F(MainWindowDragTest, ALockedShotCannotBeCarriedAway) {
  takeHoldOf("Screenshot secret.png");
  int moves = 0;
  carryTo(placeOfShot("Screenshot secret.png") + QPoint(60, 0), [&] { return ++moves > 10; });
  ASSERT_TRUE(waitUntil([] { return QGuiApplication::mouseButtons() == Qt::NoButton; }));
  EXPECT_EQ(window().findChild<QDrag*>(), nullptr);
  EXPECT_FALSE(owner_->isAsked());
}

TEST_F(MainWindowDragTest, AFlickThatIsOverAtOnceLeavesNoDragBehind) {
  const auto from = placeOfShot("Screenshot 1.png");
  act(QStringLiteral("mousemove %1 %2 mousedown 1 mousemove %3 %2 mousemove %4 %2 mouseup 1")
          .arg(from.x())
          .arg(from.y())
          .arg(from.x() + 40)
          .arg(from.x() + 80));
  EXPECT_TRUE(waitUntil([this] { return window().findChild<QDrag*>() == nullptr; }));
  clickShot("Screenshot 1.png");
  EXPECT_THAT(selectedNames(), ::testing::ElementsAre("Screenshot 1.png")) << "the pointer is free again";
}

}  // namespace
}  // namespace Nimbrel
