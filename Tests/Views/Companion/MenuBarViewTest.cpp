#include "Views/Companion/MenuBarView.h"

#include "Support/FakeWindowActivation.h"
#include "Support/FakeWindowStacking.h"
#include "Support/Waiting.h"
#include "Views/Sheets/SheetFixture.h"

#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QTest>

#include <algorithm>

namespace Nimbrel {
namespace {

using Testing::waitUntil;

class MenuBarViewTest : public Testing::SheetFixture {
 protected:
  void open() {
    panel_.openAt({});
    ASSERT_TRUE(QTest::qWaitForWindowActive(&panel_));
  }
  [[nodiscard]] QString textOf(const char* label) const { return in<QLabel>(panel_, label)->text(); }
  [[nodiscard]] MenuBarRow* row(int index) const {
    return in<MenuBarRow>(panel_, ("recent.row" + std::to_string(index)).c_str());
  }
  [[nodiscard]] QString words(int index, const char* part) const {
    return in<ElidedLabel>(*row(index), part)->fullText();
  }
  [[nodiscard]] QPushButton* button(const char* name) const { return in<QPushButton>(panel_, name); }
  static void click(QWidget* widget) { QTest::mouseClick(widget, Qt::LeftButton, {}, widget->rect().center()); }
  void addMany(int count) {
    for (int i = 1; i <= count; ++i) add({.name = std::to_string(i) + ".png", .daysAgo = double(i)});
  }
  /// The menu of a row, by its titles.
  QMenu* menuOf(int index) {
    QContextMenuEvent event(QContextMenuEvent::Mouse, {10, 10}, row(index)->mapToGlobal(QPoint(10, 10)));
    QApplication::sendEvent(row(index), &event);
    auto* menu = panel_.findChild<QMenu*>(QStringLiteral("recentMenu"));
    EXPECT_NE(menu, nullptr);
    return menu;
  }
  void choose(int index, const QString& title) {
    auto* menu = menuOf(index);
    const auto actions = menu->actions();
    const auto found = std::ranges::find(actions, title, &QAction::text);
    ASSERT_NE(found, actions.end()) << title.toStdString();
    EXPECT_TRUE((*found)->isEnabled()) << title.toStdString();
    (*found)->trigger();
    close(menu);
  }
  /// It deletes itself in a later turn.
  static void close(QMenu* menu) {
    const QPointer watched(menu);
    menu->close();
    EXPECT_TRUE(waitUntil([&] { return watched.isNull(); }));
  }

  Testing::FakeWindowStacking stacking_;
  Testing::FakeWindowActivation activation_;
  MenuBarView panel_{
      {.store = *store_, .thumbs = thumbs_, .previews = previews_, .stacking = stacking_, .activation = activation_}};
};

TEST_F(MenuBarViewTest, TheHeadTellsOfTheInboxAndOfSecrets) {
  open();
  EXPECT_EQ(textOf("panel.inbox"), QStringLiteral("Running in menu bar · 0 in Inbox"));
  EXPECT_FALSE(in<QWidget>(panel_, "panel.sensitive")->isVisible());
  add({.name = "a.png", .filed = false});
  add({.name = "b.png", .filed = false, .sensitive = {"email"}});
  EXPECT_EQ(textOf("panel.inbox"), QStringLiteral("Running in menu bar · 2 in Inbox"));
  EXPECT_TRUE(in<QWidget>(panel_, "panel.sensitive")->isVisible());
  EXPECT_EQ(in<QWidget>(panel_, "panel.sensitive")->toolTip(), QStringLiteral("1 shots may contain secrets"));
}

TEST_F(MenuBarViewTest, TenShotsAreListedAndOfElevenTheNewestTen) {
  addMany(10);
  open();
  EXPECT_EQ(textOf("recent.count"), QStringLiteral("Latest 10"));
  EXPECT_EQ(panel_.recent(), store_->shots());
  EXPECT_TRUE(row(9)->isVisibleTo(&panel_));
  add({.name = "new.png", .daysAgo = 0});
  EXPECT_EQ(textOf("recent.count"), QStringLiteral("Latest 10"));
  EXPECT_EQ(words(0, "recent.name"), QStringLiteral("new.png"));
  EXPECT_EQ(words(9, "recent.name"), QStringLiteral("9.png"));
  EXPECT_EQ(panel_.findChildren<MenuBarRow*>().size(), 10);
}

TEST_F(MenuBarViewTest, WithoutShotsItSaysSo) {
  open();
  EXPECT_EQ(textOf("recent.placeholder"), QStringLiteral("No shots yet"));
  EXPECT_TRUE(in<QLabel>(panel_, "recent.placeholder")->isVisible());
  EXPECT_FALSE(in<QWidget>(panel_, "recent.scroller")->isVisible());
  const auto height = panel_.height();
  add({.name = "a.png"});
  EXPECT_FALSE(in<QLabel>(panel_, "recent.placeholder")->isVisible());
  EXPECT_TRUE(in<QWidget>(panel_, "recent.scroller")->isVisible());
  EXPECT_TRUE(waitUntil([&] { return panel_.height() > height; })) << "it grows with what it shows";
}

TEST_F(MenuBarViewTest, AShotThatGoesLeavesItsRow) {
  addMany(2);
  open();
  store_->forget({store_->shots().front()});
  EXPECT_EQ(words(0, "recent.name"), QStringLiteral("2.png"));
  EXPECT_FALSE(row(1)->isVisible());
}

TEST_F(MenuBarViewTest, ARowTellsSourceNameAndTime) {
  addFile("a.png");
  add({.name = "a.png", .filed = false});
  open();
  EXPECT_EQ(words(0, "recent.source").toStdString(), store_->derived().contentOf(shot("a.png")->id).title);
  EXPECT_EQ(words(0, "recent.name"), QStringLiteral("a.png"));
  EXPECT_TRUE(words(0, "recent.time").endsWith(QStringLiteral(" · Inbox")));
  EXPECT_FALSE(in<QWidget>(*row(0), "recent.warning")->isVisible());
  store_->fileAll();
  EXPECT_FALSE(words(0, "recent.time").contains(QStringLiteral("Inbox")));
}

TEST_F(MenuBarViewTest, AProtectedShotGivesNothingAwayUntilTheOwnerSaysSo) {
  add({.name = "secret.png", .sensitive = {"email"}});
  open();
  EXPECT_EQ(words(0, "recent.source"), QStringLiteral("Sensitive screenshot"));
  EXPECT_EQ(words(0, "recent.name"), QStringLiteral("Preview locked"));
  EXPECT_TRUE(row(0)->isObscured());
  EXPECT_TRUE(in<QWidget>(*row(0), "recent.warning")->isVisible());
  EXPECT_FALSE(row(0)->accessibleName().contains(QStringLiteral("secret")));
  click(row(0));
  ASSERT_TRUE(owner_->isAsked());
  EXPECT_TRUE(workspace_->files.empty());
  owner_->decide(true);
  EXPECT_EQ(workspace_->files, std::vector{shot("secret.png")->path});
  EXPECT_EQ(words(0, "recent.name"), QStringLiteral("secret.png"));
}

TEST_F(MenuBarViewTest, AClickAndReturnOpenAShot) {
  add({.name = "a.png"});
  open();
  click(row(0));
  row(0)->setFocus();
  QTest::keyClick(row(0), Qt::Key_Return);
  EXPECT_EQ(workspace_->files.size(), 2U);
}

TEST_F(MenuBarViewTest, TheMenuOfARowOpensRevealsAndTrashes) {
  add({.name = "a.png"});
  open();
  choose(0, QStringLiteral("Open"));
  EXPECT_EQ(workspace_->files.size(), 1U);
  choose(0, QStringLiteral("Reveal in Finder"));
  EXPECT_EQ(workspace_->revealed.size(), 1U);
  choose(0, QStringLiteral("Copy Text"));
  EXPECT_EQ(store_->status(), "Copied text");
  choose(0, QStringLiteral("Move to Trash"));
  EXPECT_EQ(trashed(), std::vector<std::string>{"a.png"});
}

TEST_F(MenuBarViewTest, TextThatIsNotThereCannotBeCopied) {
  add({.name = "a.png", .text = ""});
  open();
  auto* menu = menuOf(0);
  for (const auto* action : menu->actions()) {
    if (!action->isSeparator()) {
      EXPECT_EQ(action->isEnabled(), action->text() != QStringLiteral("Copy Text"));
    }
  }
  close(menu);
}

TEST_F(MenuBarViewTest, ThePickersFollowTheSettingsAndSetThem) {
  store_->settings().captureDelay.set(10);
  open();
  auto* destination = in<QComboBox>(panel_, "panel.destination");
  auto* delay = in<QComboBox>(panel_, "panel.delay");
  EXPECT_EQ(destination->currentText(), QStringLiteral("Inbox"));
  EXPECT_EQ(delay->currentText(), QStringLiteral("10 sec"));
  QTest::keyClick(destination, Qt::Key_Down);
  EXPECT_EQ(store_->settings().captureDestination(), CaptureDestination::library);
  QTest::keyClick(delay, Qt::Key_Up);
  EXPECT_EQ(store_->settings().captureDelay(), 3);
  home_.suiteOfOtherProcess()->set(QStringLiteral("captureDelay"), 0);
  store_->poll();
  EXPECT_EQ(delay->currentText(), QStringLiteral("None"));
}

TEST_F(MenuBarViewTest, TheLastRecordingIsShownAndEdited) {
  open();
  EXPECT_FALSE(button("panel.showRecording")->isVisible());
  const auto file = home_.addFile(home_.desktop("Recording.mov"));
  store_->setLastRecordingURL(file);
  ASSERT_TRUE(button("panel.showRecording")->isVisible());
  click(button("panel.showRecording"));
  EXPECT_EQ(workspace_->revealed, std::vector{file});
  EXPECT_FALSE(store_->showRecordingTools());
  int asked = 0;
  QObject::connect(&panel_, &MenuBarView::recordingToolsRequested, &panel_, [&] { ++asked; });
  click(button("panel.editRecording"));
  EXPECT_TRUE(store_->showRecordingTools());
  click(button("panel.editRecording"));
  EXPECT_EQ(asked, 2) << "also while they are open";
}

TEST_F(MenuBarViewTest, TheStatusIsALineWhileThereIsOne) {
  open();
  EXPECT_FALSE(in<QLabel>(panel_, "panel.status")->isVisible());
  store_->setStatus("Captured from Firefox");
  EXPECT_TRUE(in<QLabel>(panel_, "panel.status")->isVisible());
  EXPECT_EQ(in<ElidedLabel>(panel_, "panel.status")->fullText(), QStringLiteral("Captured from Firefox"));
}

TEST_F(MenuBarViewTest, TheFootFilesTheInboxWhileThereIsSomethingInIt) {
  open();
  EXPECT_FALSE(button("panel.fileInbox")->isVisible());
  addFile("a.png");
  add({.name = "a.png", .filed = false});
  ASSERT_TRUE(button("panel.fileInbox")->isVisible());
  click(button("panel.fileInbox"));
  EXPECT_EQ(store_->inboxCount(), 0U);
  EXPECT_FALSE(button("panel.fileInbox")->isVisible());
}

TEST_F(MenuBarViewTest, WhatConcernsProcessesLeavesAsASignal) {
  int opened = 0;
  int quit = 0;
  QObject::connect(&panel_, &MenuBarView::openMainAppRequested, &panel_, [&] { ++opened; });
  QObject::connect(&panel_, &MenuBarView::quitRequested, &panel_, [&] { ++quit; });
  open();
  click(button("panel.openMainApp"));
  EXPECT_EQ(opened, 1);
  EXPECT_EQ(button("panel.quit")->accessibleName(), QStringLiteral("Quit Nimbrel Menu Bar"));
  EXPECT_EQ(button("panel.quit")->toolTip(), QStringLiteral("Quit Nimbrel Menu Bar"));
  click(button("panel.quit"));
  EXPECT_EQ(quit, 1);
}

TEST_F(MenuBarViewTest, OpensBesideItsIconAboveOthersWithTheToken) {
  const auto screen = QGuiApplication::primaryScreen()->availableGeometry();
  panel_.openAt(QRect(screen.center().x(), screen.bottom() - 20, 20, 20), "token");
  ASSERT_TRUE(QTest::qWaitForWindowActive(&panel_));
  EXPECT_EQ(panel_.width(), 430);
  EXPECT_TRUE(screen.contains(panel_.geometry()) || panel_.height() > screen.height());
  EXPECT_LE(panel_.geometry().left(), screen.center().x());
  EXPECT_EQ(stacking_.kept, (std::vector<Testing::FakeWindowStacking::Kept>{{panel_.windowHandle(), false}}));
  ASSERT_EQ(activation_.brought.size(), 1U);
  EXPECT_EQ(activation_.brought.front().token, "token");
}

TEST_F(MenuBarViewTest, GoesToAnotherScreenWhenItsOwnIsTakenAway) {
  open();
  const auto screen = QGuiApplication::primaryScreen()->geometry();
  panel_.move(screen.topRight() + QPoint(500, 0));
  Q_EMIT qApp->screenRemoved(nullptr);
  EXPECT_TRUE(waitUntil([&] { return screen.contains(panel_.geometry().topLeft()); }));
  EXPECT_LE(panel_.geometry().right(), screen.right());
  EXPECT_TRUE(panel_.isVisible());
}

TEST_F(MenuBarViewTest, EscapeAndLeavingCloseIt) {
  open();
  QTest::keyClick(&panel_, Qt::Key_Escape);
  EXPECT_FALSE(panel_.isVisible());
  open();
  window_.activateWindow();
  EXPECT_TRUE(waitUntil([this] { return !panel_.isVisible(); }));
}

TEST_F(MenuBarViewTest, TheIconTogglesItAlsoWithTheClickThatTookTheKeyboardAway) {
  panel_.toggleAt({});
  ASSERT_TRUE(QTest::qWaitForWindowActive(&panel_));
  panel_.toggleAt({});
  EXPECT_FALSE(panel_.isVisible());
  panel_.toggleAt({});
  ASSERT_TRUE(QTest::qWaitForWindowActive(&panel_));
  window_.activateWindow();
  ASSERT_TRUE(waitUntil([this] { return !panel_.isVisible(); }));
  panel_.toggleAt({});
  EXPECT_FALSE(panel_.isVisible()) << "the same click";
  panel_.toggleAt({});
  EXPECT_TRUE(panel_.isVisible());
}

TEST_F(MenuBarViewTest, ReadsFromRightToLeft) {
  add({.name = "a.png"});
  panel_.setLayoutDirection(Qt::RightToLeft);
  open();
  const auto* atTheStart = button("panel.openMainApp");
  EXPECT_GT(atTheStart->mapTo(&panel_, QPoint()).x(), button("panel.quit")->mapTo(&panel_, QPoint()).x());
}

TEST_F(MenuBarViewTest, LooksAsDesigned) {
  for (int i = 1; i <= 5; ++i) {
    const auto name = "Screenshot " + std::to_string(i) + ".png";
    addFile(name, i);
    add({.name = name, .daysAgo = double(i), .filed = i % 2 == 0});
  }
  add({.name = "secret.png", .daysAgo = 1.5, .filed = false, .sensitive = {"email"}});
  store_->setLastRecordingURL(home_.addFile(home_.desktop("Recording.mov")));
  store_->setStatus("Saved Screen recording 2026-11-12 13-58-04.mov");
  open();
  ASSERT_TRUE(waitUntil([this] { return thumbs_.size() == 5; }));
  keepPictures(panel_, QStringLiteral("menu-bar-panel"));
}

}  // namespace
}  // namespace Nimbrel
