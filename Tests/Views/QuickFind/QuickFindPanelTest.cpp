#include "Views/QuickFind/QuickFindPanel.h"

#include "Support/FakeWindowActivation.h"
#include "Support/FakeWindowFocus.h"
#include "Support/FakeWindowStacking.h"
#include "Support/Waiting.h"
#include "Views/QuickFind/QuickFindResults.h"
#include "Views/Sheets/SheetFixture.h"

#include <QApplication>
#include <QLineEdit>
#include <QListView>
#include <QTest>

#include <chrono>
#include <string>
#include <vector>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Testing::waitUntil;

constexpr FocusedWindow editorInFront{.id = 77, .isOurs = false, .place = {0, 0, 640, 480}};

class QuickFindPanelTest : public Testing::SheetFixture {
 protected:
  QuickFindPanelTest() { focus_.front = editorInFront; }

  /// A shot with a file and that text.
  void addShot(const std::string& name, const std::string& text, const std::vector<std::string>& sensitive = {}) {
    addFile(name, ++shots_);
    add({.name = name, .daysAgo = 1.0 * shots_, .text = text, .sensitive = sensitive});
  }
  void open() {
    panel_.open();
    ASSERT_TRUE(QTest::qWaitForWindowActive(panel_.window()));
  }
  [[nodiscard]] QLineEdit& field() const { return *in<QLineEdit>(*panel_.window(), "quickFind.field"); }
  [[nodiscard]] QListView& list() const { return *in<QListView>(*panel_.window(), "quickFind.list"); }
  [[nodiscard]] QuickFindResults& results() const { return *qobject_cast<QuickFindResults*>(list().model()); }
  [[nodiscard]] std::vector<std::string> found() const { return Testing::namesOf(results().shots()); }
  /// The text of a label; empty while it is not seen.
  [[nodiscard]] std::string label(const char* name) const {
    const auto* shown = in<QLabel>(*panel_.window(), name);
    return shown->isVisible() ? shown->text().toStdString() : std::string();
  }
  [[nodiscard]] bool isPictureOf(const char* name, const QImage& picture) const {
    const QImage file(QString::fromStdString(home_.desktop(name)));
    return picture.convertToFormat(QImage::Format_RGB32) == file.convertToFormat(QImage::Format_RGB32);
  }
  /// As the keyboard reaches it.
  void press(Qt::Key key) const { QTest::keyClick(panel_.window()->windowHandle(), key); }
  void type(const char* text) const { QTest::keyClicks(&field(), QString::fromUtf8(text)); }
  [[nodiscard]] bool isInField() const { return QApplication::focusWidget() == &field(); }
  /// In another window of ours, which comes to the front.
  void workElsewhere() {
    window_.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
  }
  /// As if another program's window had the focus now.
  static void leave() { Q_EMIT qApp->focusWindowChanged(nullptr); }

  Testing::FakeWindowStacking stacking_;
  Testing::FakeWindowFocus focus_;
  Testing::FakeWindowActivation activation_;
  QuickFindPanel panel_{*store_, thumbs_, previews_, {stacking_, focus_, activation_}};

 private:
  int shots_ = 0;
};

TEST_F(QuickFindPanelTest, ItsWindowIsMadeWhenItIsOpenedAndKept) {
  EXPECT_EQ(panel_.window(), nullptr);
  EXPECT_FALSE(panel_.isVisible());
  open();
  const auto* window = panel_.window();
  EXPECT_EQ(window->size(), QSize(620, 420));
  EXPECT_EQ(window->accessibleName(), QStringLiteral("Quick Find"));
  panel_.close();
  EXPECT_FALSE(panel_.isVisible());
  open();
  EXPECT_EQ(panel_.window(), window);
}

TEST_F(QuickFindPanelTest, ItComesUpAboveOthersWithTheKeyboardInItsField) {
  open();
  EXPECT_THAT(activation_.brought,
              ElementsAre(Testing::FakeWindowActivation::Brought{panel_.window()->windowHandle(), ""}));
  EXPECT_THAT(stacking_.kept, ElementsAre(Testing::FakeWindowStacking::Kept{panel_.window()->windowHandle(), false}));
  EXPECT_TRUE(isInField());
  EXPECT_EQ(field().placeholderText(), QStringLiteral("Find a screenshot by its text"));
}

TEST_F(QuickFindPanelTest, ItInvitesToSearchUntilSomethingIsTyped) {
  open();
  EXPECT_EQ(label("quickFind.emptyTitle"), "Type to search your screenshots");
  EXPECT_EQ(label("quickFind.emptyHint"), "Return copies the image · Esc closes");
  EXPECT_EQ(label("quickFind.hint"), "");
  type(" ");
  EXPECT_EQ(label("quickFind.emptyTitle"), "No matches");
  EXPECT_EQ(label("quickFind.emptyHint"), "");
}

TEST_F(QuickFindPanelTest, EachKeySearchesBeforeItReturns) {
  addShot("a.png", "Halden ground site");
  addShot("b.png", "Departure from platform nine");
  open();
  type("platform");
  EXPECT_THAT(found(), ElementsAre("b.png"));
  EXPECT_TRUE(list().isVisible());
  EXPECT_EQ(label("quickFind.hint"), "↩ copy");
  EXPECT_EQ(label("quickFind.emptyTitle"), "");
  type("zz");
  EXPECT_THAT(found(), IsEmpty());
  EXPECT_FALSE(list().isVisible());
  EXPECT_EQ(label("quickFind.emptyTitle"), "No matches");
}

TEST_F(QuickFindPanelTest, ArrowsMoveTheHighlightAndTheKeyboardStaysInTheField) {
  addShot("a.png", "halden one");
  addShot("b.png", "halden two");
  open();
  type("halden");
  press(Qt::Key_Down);
  EXPECT_EQ(results().highlighted(), 1);
  EXPECT_EQ(list().currentIndex().row(), 1);
  press(Qt::Key_Down);
  EXPECT_EQ(results().highlighted(), 1);
  press(Qt::Key_Up);
  EXPECT_EQ(results().highlighted(), 0);
  EXPECT_TRUE(isInField());
  press(Qt::Key_Down);
  type(" ");
  EXPECT_EQ(results().highlighted(), 0) << "another text begins at the first row";
}

TEST_F(QuickFindPanelTest, ScreenReadersHearTheHighlightedRowFromTheField) {
  addShot("a.png", "halden one");
  addShot("b.png", "halden two");
  open();
  type("halden");
  EXPECT_TRUE(field().accessibleDescription().startsWith(QStringLiteral("halden one")));
  press(Qt::Key_Down);
  EXPECT_TRUE(field().accessibleDescription().startsWith(QStringLiteral("halden two")));
}

TEST_F(QuickFindPanelTest, TheHighlightedRowIsBroughtIntoView) {
  for (int i = 0; i < 12; ++i) addShot("shot " + std::to_string(i) + ".png", "halden");
  open();
  type("halden");
  for (int i = 0; i < 8; ++i) press(Qt::Key_Down);
  const auto row = list().visualRect(list().currentIndex());
  EXPECT_TRUE(list().viewport()->rect().contains(row));
  EXPECT_NEAR(row.center().y(), list().viewport()->rect().center().y(), 2) << "in the middle";
}

TEST_F(QuickFindPanelTest, ReturnCopiesTheHighlightedPictureAndGivesTheKeyboardBack) {
  addShot("a.png", "halden one");
  addShot("b.png", "halden two");
  open();
  type("halden");
  press(Qt::Key_Down);
  press(Qt::Key_Return);
  ASSERT_TRUE(pasteboard_->picture);
  EXPECT_EQ(pasteboard_->picture->size(), QSize(240, 160));
  EXPECT_EQ(pasteboard_->writes, 1);
  EXPECT_FALSE(panel_.isVisible());
  EXPECT_THAT(focus_.given, ElementsAre(editorInFront.id));
}

TEST_F(QuickFindPanelTest, AClickCopiesTheRowUnderIt) {
  addShot("a.png", "halden one");
  addShot("b.png", "halden two");
  open();
  type("halden");
  const auto row = list().visualRect(results().index(1));
  QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, row.center());
  ASSERT_EQ(pasteboard_->writes, 1);
  EXPECT_TRUE(isPictureOf("b.png", *pasteboard_->picture));
  EXPECT_FALSE(isPictureOf("a.png", *pasteboard_->picture));
  EXPECT_FALSE(panel_.isVisible());
}

TEST_F(QuickFindPanelTest, ReturnWithoutResultsDoesNothing) {
  open();
  press(Qt::Key_Return);
  type("nothing");
  press(Qt::Key_Return);
  EXPECT_TRUE(panel_.isVisible());
  EXPECT_EQ(pasteboard_->writes, 0);
}

TEST_F(QuickFindPanelTest, AFileThatCannotBeReadCopiesNothingAndThePanelCloses) {
  add({.name = "gone.png", .text = "halden"});
  open();
  type("halden");
  press(Qt::Key_Return);
  EXPECT_EQ(pasteboard_->writes, 0);
  EXPECT_FALSE(panel_.isVisible());
}

TEST_F(QuickFindPanelTest, AProtectedShotAsksTheOwnerFirst) {
  addShot("a.png", "the key is under the mat", {"Password"});
  open();
  type("mat");
  press(Qt::Key_Return);
  ASSERT_TRUE(owner_->isAsked());
  EXPECT_EQ(pasteboard_->writes, 0);
  EXPECT_TRUE(panel_.isVisible());
  owner_->decide(true);
  EXPECT_EQ(pasteboard_->writes, 1);
  EXPECT_FALSE(panel_.isVisible());
}

TEST_F(QuickFindPanelTest, ARefusalLeavesThePanelOpenWithNothingCopied) {
  addShot("a.png", "the key is under the mat", {"Password"});
  open();
  type("mat");
  press(Qt::Key_Return);
  owner_->decide(false);
  EXPECT_EQ(pasteboard_->writes, 0);
  EXPECT_TRUE(panel_.isVisible());
  EXPECT_THAT(focus_.given, IsEmpty());
}

TEST_F(QuickFindPanelTest, WhatAnotherProcessFoundToBeSensitiveIsAskedForAsWell) {
  addShot("a.png", "halden one");
  open();
  type("halden");
  // As another process would, which this one has not heard of yet.
  store_->database().setOCR(shot("a.png")->id, "halden one", {"Password"});
  press(Qt::Key_Return);
  EXPECT_TRUE(owner_->isAsked());
  EXPECT_EQ(pasteboard_->writes, 0);
}

TEST_F(QuickFindPanelTest, EscapeClosesItAndGivesTheKeyboardBack) {
  open();
  type("hal");
  press(Qt::Key_Escape);
  EXPECT_FALSE(panel_.isVisible());
  EXPECT_THAT(focus_.given, ElementsAre(editorInFront.id));
}

TEST_F(QuickFindPanelTest, TheWindowManagersCloseIsTheSameAndHoldsNothingUp) {
  open();
  EXPECT_TRUE(panel_.window()->close()) << "as all windows have to, or the session does not end";
  EXPECT_FALSE(panel_.isVisible());
  EXPECT_THAT(focus_.given, ElementsAre(editorInFront.id));
}

TEST_F(QuickFindPanelTest, OverAWindowOfOursNothingIsGivenBack) {
  focus_.front->isOurs = true;
  open();
  panel_.close();
  EXPECT_THAT(focus_.given, IsEmpty());
}

TEST_F(QuickFindPanelTest, WhereTheSessionDoesNotTellNothingIsGivenBack) {
  focus_.front.reset();
  open();
  panel_.close();
  EXPECT_THAT(focus_.given, IsEmpty());
}

TEST_F(QuickFindPanelTest, EachOpeningStartsEmpty) {
  addShot("a.png", "halden one");
  open();
  type("halden");
  panel_.close();
  workElsewhere();
  open();
  EXPECT_EQ(field().text(), QString());
  EXPECT_THAT(found(), IsEmpty());
  EXPECT_EQ(label("quickFind.emptyTitle"), "Type to search your screenshots");
  EXPECT_TRUE(isInField());
}

TEST_F(QuickFindPanelTest, TheCommandOpensAndCloses) {
  panel_.toggle();
  EXPECT_TRUE(panel_.isVisible());
  panel_.toggle();
  EXPECT_FALSE(panel_.isVisible());
  EXPECT_THAT(focus_.given, ElementsAre(editorInFront.id));
}

TEST_F(QuickFindPanelTest, AnotherProgramInFrontHidesItAndKeepsTheKeyboard) {
  open();
  leave();
  EXPECT_TRUE(waitUntil([this] { return !panel_.isVisible(); }));
  EXPECT_THAT(focus_.given, IsEmpty());
}

TEST_F(QuickFindPanelTest, OpenedAMomentAfterLeavingItStays) {
  leave();
  panel_.open();
  Testing::runEventLoopFor(std::chrono::milliseconds(400));
  EXPECT_TRUE(panel_.isVisible());
}

TEST_F(QuickFindPanelTest, DismissedItLeavesTheKeyboardWhereItIs) {
  panel_.dismiss();
  open();
  type("hal");
  panel_.dismiss();
  EXPECT_FALSE(panel_.isVisible());
  EXPECT_EQ(field().text(), QString());
  EXPECT_THAT(focus_.given, IsEmpty());
}

TEST_F(QuickFindPanelTest, WhatTheLauncherGaveForItIsPassedOn) {
  panel_.open("token");
  ASSERT_FALSE(activation_.brought.empty());
  EXPECT_EQ(activation_.brought.back().token, "token");
}

TEST_F(QuickFindPanelTest, AQuestionOverItKeepsItOpenWhileTheUserIsElsewhere) {
  open();
  auto* question = new QDialog(panel_.window());
  question->open();
  ASSERT_TRUE(QTest::qWaitForWindowActive(question));
  leave();
  Testing::runEventLoopFor(std::chrono::milliseconds(400));
  EXPECT_TRUE(panel_.isVisible());
  question->close();
  panel_.window()->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(panel_.window())) << "the keyboard comes back";
  EXPECT_TRUE(panel_.isVisible());
  leave();
  EXPECT_TRUE(waitUntil([this] { return !panel_.isVisible(); }));
}

TEST_F(QuickFindPanelTest, ClosingItTakesTheQuestionBack) {
  open();
  QDialog question(panel_.window());
  bool wasRefused = false;
  QObject::connect(&question, &QDialog::rejected, &question, [&] { wasRefused = true; });
  question.open();
  panel_.toggle();
  EXPECT_TRUE(wasRefused);
  EXPECT_FALSE(panel_.isVisible());
}

TEST_F(QuickFindPanelTest, ThumbnailsOfOpenShotsAloneAreLookedFor) {
  addShot("a.png", "halden one");
  addShot("b.png", "halden two", {"Password"});
  open();
  type("halden");
  EXPECT_TRUE(waitUntil([this] { return thumbs_.holds(home_.desktop("a.png")); }));
  EXPECT_FALSE(thumbs_.holds(home_.desktop("b.png")));
}

TEST_F(QuickFindPanelTest, WithCornersThatBlendItIsTranslucent) {
  stacking_.composited = false;
  open();
  EXPECT_FALSE(panel_.window()->testAttribute(Qt::WA_TranslucentBackground));
  QuickFindPanel other(*store_, thumbs_, previews_, {stacking_, focus_, activation_});
  stacking_.composited = true;
  other.open();
  EXPECT_TRUE(other.window()->testAttribute(Qt::WA_TranslucentBackground));
}

}  // namespace
}  // namespace Nimbrel
