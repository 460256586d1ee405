#include "Views/Shelf/CaptureShelf.h"

#include "Support/FakeWindowActivation.h"
#include "Support/FakeWindowFocus.h"
#include "Support/FakeWindowStacking.h"
#include "Support/Waiting.h"
#include "Views/Panels/SharingMenu.h"
#include "Views/Shared/ElidedLabel.h"
#include "Views/Sheets/SheetFixture.h"
#include "Views/Shelf/ShelfThumb.h"
#include "Views/Shelf/TwoLineLabel.h"

#include <QApplication>
#include <QEnterEvent>
#include <QPushButton>
#include <QTest>

#include <chrono>

namespace Nimbrel {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Testing::waitUntil;

class CaptureShelfTest : public Testing::SheetFixture {
 protected:
  /// A new shot with a file, waiting in the Inbox; without a text it has not been read yet.
  ShotPtr addFresh(const std::string& name, const std::optional<std::string>& text = "words",
                   const std::vector<std::string>& sensitive = {}) {
    addFile(name);
    return add({.name = name, .filed = false, .text = text, .sensitive = sensitive});
  }
  void read(const ShotPtr& shot, const std::string& text, const std::vector<std::string>& sensitive = {}) {
    store_->database().setOCR(shot->id, text, sensitive);
    store_->reload();
  }
  template <class Widget>
  [[nodiscard]] Widget& part(const char* name) const {
    return *in<Widget>(*shelf_.window(), name);
  }
  [[nodiscard]] std::string title() const { return part<TwoLineLabel>("shelf.title").fullText().toStdString(); }
  [[nodiscard]] std::string place() const { return part<ElidedLabel>("shelf.place").fullText().toStdString(); }
  [[nodiscard]] bool isMasked() const { return part<ShelfThumb>("shelf.thumb").isMasked(); }
  /// The buttons that can be pressed, by their titles.
  [[nodiscard]] std::vector<std::string> offers() const {
    std::vector<std::string> titles;
    for (const auto* button : shelf_.window()->findChildren<QPushButton*>()) {
      if (button->isEnabled()) titles.push_back(button->text().toStdString());
    }
    return titles;
  }
  void click(const char* name) const {
    auto& button = part<QAbstractButton>(name);
    QTest::mouseClick(&button, Qt::LeftButton, {}, button.rect().center());
  }
  [[nodiscard]] QTimer& countdown() const { return *shelf_.findChild<QTimer*>(QStringLiteral("shelf.countdown")); }
  /// The rest of the time is over.
  void letTimePass() {
    countdown().start(0ms);
    EXPECT_TRUE(waitUntil([this] { return !countdown().isActive(); }));
  }
  void pointAt() {
    QEnterEvent event({50, 50}, {50, 50}, shelf_.window()->mapToGlobal(QPointF(50, 50)));
    QApplication::sendEvent(shelf_.window(), &event);
  }
  void pointElsewhere() {
    QEvent event(QEvent::Leave);
    QApplication::sendEvent(shelf_.window(), &event);
  }

  Testing::FakeWindowStacking stacking_;
  Testing::FakeWindowFocus focus_;
  Testing::FakeWindowActivation activation_;
  CaptureShelf shelf_{*store_, thumbs_, previews_, {stacking_, focus_, activation_}};
};

TEST_F(CaptureShelfTest, ItIsHiddenUntilAScreenshotCame) {
  EXPECT_FALSE(shelf_.isVisible());
  EXPECT_EQ(shelf_.window(), nullptr);
  Q_EMIT store_->freshShotArrived(addFresh("a.png"));
  ASSERT_TRUE(shelf_.isVisible());
  EXPECT_EQ(title(), "a.png");
  EXPECT_EQ(place(), "Saved in Inbox");
  EXPECT_EQ(shelf_.window()->width(), 366);
  EXPECT_EQ(shelf_.window()->accessibleName(), QStringLiteral("Nimbrel capture actions"));
}

TEST_F(CaptureShelfTest, ItIsKeptAboveOthersAndAsksForNoKeyboard) {
  shelf_.show(addFresh("a.png"));
  EXPECT_THAT(stacking_.kept, ElementsAre(Testing::FakeWindowStacking::Kept{shelf_.window()->windowHandle(), false}));
  EXPECT_TRUE(shelf_.window()->testAttribute(Qt::WA_ShowWithoutActivating));
  EXPECT_THAT(activation_.brought, IsEmpty());
}

TEST_F(CaptureShelfTest, ItGoesAwayByItselfAfterTwelveSeconds) {
  shelf_.show(addFresh("a.png"));
  ASSERT_TRUE(countdown().isActive());
  EXPECT_EQ(countdown().intervalAsDuration(), 12s);
  EXPECT_EQ(countdown().timerType(), Qt::PreciseTimer);
  letTimePass();
  EXPECT_FALSE(shelf_.isVisible());
}

TEST_F(CaptureShelfTest, AnotherScreenshotTakesItsPlaceForTheWholeTime) {
  shelf_.show(addFresh("a.png"));
  const auto* window = shelf_.window();
  countdown().start(1h);
  shelf_.show(addFresh("b.png"));
  EXPECT_EQ(shelf_.window(), window);
  EXPECT_EQ(title(), "b.png");
  EXPECT_TRUE(countdown().isActive());
  EXPECT_EQ(countdown().intervalAsDuration(), 12s);
}

TEST_F(CaptureShelfTest, ItStaysWhileThePointerIsOverIt) {
  shelf_.show(addFresh("a.png"));
  pointAt();
  EXPECT_FALSE(countdown().isActive());
  shelf_.show(addFresh("b.png"));
  letTimePass();
  EXPECT_TRUE(shelf_.isVisible()) << "also when another came meanwhile";
  pointElsewhere();
  EXPECT_TRUE(countdown().isActive());
  EXPECT_EQ(countdown().intervalAsDuration(), 12s) << "the whole time anew";
  letTimePass();
  EXPECT_FALSE(shelf_.isVisible());
}

TEST_F(CaptureShelfTest, HiddenUnderThePointerItGoesAwayTheNextTime) {
  shelf_.show(addFresh("a.png"));
  pointAt();
  click("shelf.dismiss");
  ASSERT_FALSE(shelf_.isVisible());
  EXPECT_FALSE(countdown().isActive());
  shelf_.show(addFresh("b.png"));
  letTimePass();
  EXPECT_FALSE(shelf_.isVisible());
}

TEST_F(CaptureShelfTest, ComingBackAfterACaptureItGoesAwayAsWell) {
  shelf_.show(addFresh("a.png"));
  shelf_.window()->hide();
  letTimePass();
  shelf_.window()->show();
  EXPECT_TRUE(countdown().isActive());
}

TEST_F(CaptureShelfTest, HiddenForACaptureUnderThePointerItGoesAwayWhenItIsBack) {
  shelf_.show(addFresh("a.png"));
  pointAt();
  shelf_.window()->hide();
  shelf_.window()->show();
  letTimePass();
  EXPECT_FALSE(shelf_.isVisible());
}

TEST_F(CaptureShelfTest, TheWindowManagersCloseDismissesItAndHoldsNothingUp) {
  shelf_.show(addFresh("a.png"));
  EXPECT_TRUE(shelf_.window()->close()) << "as all windows have to, or the session does not end";
  EXPECT_FALSE(shelf_.isVisible());
  EXPECT_FALSE(countdown().isActive());
  shelf_.show(addFresh("b.png"));
  EXPECT_TRUE(shelf_.isVisible());
}

TEST_F(CaptureShelfTest, AQuestionOverItOutlivesItsTime) {
  shelf_.show(addFresh("a.png"));
  auto* question = new QDialog(shelf_.window());
  question->open();
  letTimePass();
  EXPECT_FALSE(shelf_.isVisible());
  EXPECT_TRUE(question->isVisible());
}

TEST_F(CaptureShelfTest, EscapeAndTheButtonDismissIt) {
  shelf_.show(addFresh("a.png"));
  QTest::keyClick(shelf_.window(), Qt::Key_Escape);
  EXPECT_FALSE(shelf_.isVisible());
  EXPECT_FALSE(countdown().isActive());
  shelf_.show(addFresh("b.png"));
  QTest::keyClick(&part<QPushButton>("shelf.copyImage"), Qt::Key_Escape);
  EXPECT_FALSE(shelf_.isVisible());
  shelf_.show(addFresh("c.png"));
  EXPECT_EQ(part<QAbstractButton>("shelf.dismiss").accessibleName(), QStringLiteral("Dismiss capture actions"));
  click("shelf.dismiss");
  EXPECT_FALSE(shelf_.isVisible());
}

TEST_F(CaptureShelfTest, AFreshShotOpensUpWhenItWasRead) {
  const auto shot = addFresh("a.png", std::nullopt);
  shelf_.show(shot);
  EXPECT_EQ(title(), "Checking screenshot…");
  EXPECT_TRUE(isMasked());
  EXPECT_THAT(offers(), ElementsAre("File"));
  read(shot, "A recipe for soup");
  EXPECT_EQ(title(), "a.png");
  EXPECT_FALSE(isMasked());
  EXPECT_THAT(offers(), ElementsAre("Copy Image", "Copy Text", "Edit", "File", "Share"));
}

TEST_F(CaptureShelfTest, OneThatTurnsOutToBeSensitiveStaysMasked) {
  const auto shot = addFresh("a.png", std::nullopt);
  shelf_.show(shot);
  read(shot, "the key is under the mat", {"Password"});
  EXPECT_EQ(title(), "Sensitive screenshot");
  EXPECT_TRUE(isMasked());
  EXPECT_THAT(offers(), ElementsAre("Copy Image", "Copy Text", "Edit", "File", "Share"));
  Testing::runEventLoopFor(200ms);
  EXPECT_FALSE(thumbs_.holds(shot->path)) << "its file is not looked at";
}

TEST_F(CaptureShelfTest, SwitchingProtectionOffOpensItUp) {
  shelf_.show(addFresh("a.png", std::nullopt));
  ASSERT_TRUE(isMasked());
  store_->settings().protectSensitive.set(false);
  EXPECT_FALSE(isMasked());
  EXPECT_EQ(title(), "a.png");
  EXPECT_THAT(offers(), ElementsAre("Copy Image", "Edit", "File", "Share"));
}

TEST_F(CaptureShelfTest, ItShowsThePicture) {
  shelf_.show(addFresh("a.png"));
  EXPECT_TRUE(waitUntil([this] { return part<ShelfThumb>("shelf.thumb").hasPicture(); }));
}

TEST_F(CaptureShelfTest, CopyImageAndCopyTextCopyAndLeaveItUp) {
  shelf_.show(addFresh("a.png", "A recipe for soup"));
  click("shelf.copyImage");
  ASSERT_TRUE(pasteboard_->picture);
  EXPECT_EQ(pasteboard_->picture->size(), QSize(240, 160));
  click("shelf.copyText");
  EXPECT_EQ(pasteboard_->text, "A recipe for soup");
  EXPECT_TRUE(shelf_.isVisible());
  EXPECT_TRUE(countdown().isActive());
}

TEST_F(CaptureShelfTest, FileMovesTheShotAndSaysSo) {
  shelf_.show(addFresh("a.png"));
  click("shelf.file");
  EXPECT_EQ(place(), "Saved in Library");
  EXPECT_THAT(offers(), ElementsAre("Copy Image", "Copy Text", "Edit", "Share"));
  EXPECT_TRUE(shelf_.isVisible());
  EXPECT_FALSE(owner_->isAsked());
}

TEST_F(CaptureShelfTest, EditAsksForTheEditorAndHidesIt) {
  const auto shot = addFresh("a.png");
  shelf_.show(shot);
  click("shelf.edit");
  EXPECT_EQ(store_->editRequestShotID(), shot->id);
  EXPECT_FALSE(shelf_.isVisible());
}

TEST_F(CaptureShelfTest, ShareOpensItsMenuAndLeavesItUp) {
  shelf_.show(addFresh("a.png"));
  click("shelf.share");
  const auto* menu = shelf_.window()->findChild<SharingMenu*>();
  ASSERT_NE(menu, nullptr);
  EXPECT_TRUE(menu->isVisible());
  EXPECT_TRUE(shelf_.isVisible());
  EXPECT_TRUE(countdown().isActive());
}

TEST_F(CaptureShelfTest, EverythingButFileAsksTheOwnerOfAProtectedShot) {
  const auto shot = addFresh("a.png", "the key is under the mat", {"Password"});
  for (const auto* name : {"shelf.copyImage", "shelf.copyText", "shelf.edit", "shelf.share"}) {
    shelf_.show(shot);
    click(name);
    ASSERT_TRUE(owner_->isAsked()) << name;
    owner_->decide(false);
    EXPECT_TRUE(shelf_.isVisible()) << name;
  }
  EXPECT_EQ(pasteboard_->writes, 0);
  EXPECT_EQ(store_->editRequestShotID(), std::nullopt);
  EXPECT_EQ(shelf_.window()->findChild<SharingMenu*>(), nullptr);
  click("shelf.copyText");
  owner_->decide(true);
  EXPECT_EQ(pasteboard_->text, "the key is under the mat");
  EXPECT_FALSE(isMasked());
  store_->lockSensitive();
  EXPECT_TRUE(isMasked());
}

TEST_F(CaptureShelfTest, AShotThatIsGoneLeavesItBlankUntilItsTimeIsOver) {
  const auto shot = addFresh("a.png");
  shelf_.show(shot);
  const auto size = shelf_.window()->size();
  store_->forget({shot});
  EXPECT_FALSE(part<QPushButton>("shelf.copyImage").isVisible());
  EXPECT_FALSE(part<TwoLineLabel>("shelf.title").isVisible());
  EXPECT_EQ(shelf_.window()->size(), size);
  EXPECT_TRUE(shelf_.isVisible());
  shelf_.show(addFresh("b.png"));
  EXPECT_TRUE(part<QPushButton>("shelf.copyImage").isVisible());
}

TEST_F(CaptureShelfTest, ItsButtonsAreEquallyWideInEachRow) {
  shelf_.show(addFresh("a.png"));
  const auto widthOf = [this](const char* name) { return part<QPushButton>(name).width(); };
  EXPECT_NEAR(widthOf("shelf.copyImage"), widthOf("shelf.edit"), 1);
  EXPECT_NEAR(widthOf("shelf.copyImage"), widthOf("shelf.copyText"), 1);
  EXPECT_NEAR(widthOf("shelf.file"), widthOf("shelf.share"), 1);
  EXPECT_EQ(part<QPushButton>("shelf.file").height(), part<QPushButton>("shelf.edit").height());
}

TEST_F(CaptureShelfTest, TabReachesItsControls) {
  shelf_.show(addFresh("a.png"));
  for (const auto* name :
       {"shelf.dismiss", "shelf.copyImage", "shelf.copyText", "shelf.edit", "shelf.file", "shelf.share"}) {
    EXPECT_TRUE(part<QAbstractButton>(name).focusPolicy() & Qt::TabFocus) << name;
  }
}

}  // namespace
}  // namespace Nimbrel
