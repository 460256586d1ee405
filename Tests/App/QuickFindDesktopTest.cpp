// Quick find on a real display, over another program.

#include "App/FloatingFixture.h"

#include <QClipboard>
#include <QDialog>
#include <QLineEdit>
#include <QListView>
#include <QProcess>
#include <QSignalSpy>

#include <chrono>

namespace Nimbrel {
namespace {

using namespace std::chrono_literals;
using Testing::waitUntil;

/// Longer than a focus takes that is on its way.
constexpr auto aWhile = 400ms;

class QuickFindDesktopTest : public Testing::FloatingFixture {
 protected:
  void openQuickFind() {
    quickFind().open();
    ASSERT_TRUE(QTest::qWaitForWindowActive(quickFind().window()));
    ASSERT_TRUE(waitUntil([this] { return isSeen(*quickFind().window()); }));
  }
  void type(const char* words) {
    act(QStringLiteral("type ") + QString::fromLatin1(words));
    const auto* field = quickFind().window()->findChild<QLineEdit*>(QStringLiteral("quickFind.field"));
    ASSERT_TRUE(waitUntil([&] { return field->text() == QString::fromLatin1(words); })) << field->text().toStdString();
  }
};

TEST_F(QuickFindDesktopTest, WhatIsPickedCanBePastedWhereTheUserWas) {
  workElsewhere();
  openQuickFind();
  type("platform");
  act(QStringLiteral("key Return"));
  ASSERT_TRUE(waitUntil([this] { return !quickFind().isVisible(); }));
  ASSERT_TRUE(waitUntil([] { return QGuiApplication::focusWindow() == nullptr; }));
  EXPECT_TRUE(letterGets('x'));
  act(QStringLiteral("key ctrl+v"));
  letter_->expectLine("pasted 320x200");
}

TEST_F(QuickFindDesktopTest, EscapeGivesTheKeyboardBackAlsoPastAWindowThatCameMeanwhile) {
  workElsewhere();
  openQuickFind();
  // Under quick find, where a desktop would have it take over next.
  window().raise();
  act(QStringLiteral("key Escape"));
  ASSERT_TRUE(waitUntil([this] { return !quickFind().isVisible(); }));
  EXPECT_TRUE(letterGets('x'));
  EXPECT_FALSE(window().isActiveWindow());
}

TEST_F(QuickFindDesktopTest, OverOurOwnWindowItGoesBackThere) {
  openQuickFind();
  act(QStringLiteral("key Escape"));
  EXPECT_TRUE(QTest::qWaitForWindowActive(&window()));
  EXPECT_FALSE(quickFind().isVisible());
}

TEST_F(QuickFindDesktopTest, TheKeysOfItsCommandShowAndHideIt) {
  act(QStringLiteral("key ctrl+shift+f"));
  ASSERT_TRUE(waitUntil([this] { return quickFind().isVisible() && quickFind().window()->isActiveWindow(); }));
  act(QStringLiteral("key ctrl+shift+f"));
  EXPECT_TRUE(waitUntil([this] { return !quickFind().isVisible(); }));
  EXPECT_TRUE(QTest::qWaitForWindowActive(&window()));
}

TEST_F(QuickFindDesktopTest, AnotherProgramInFrontHidesItAndKeepsTheKeyboard) {
  workElsewhere();
  openQuickFind();
  goBackToLetter();
  EXPECT_TRUE(waitUntil([this] { return !quickFind().isVisible(); }));
  Testing::runEventLoopFor(aWhile);
  EXPECT_TRUE(letterGets('x'));
}

TEST_F(QuickFindDesktopTest, ItStandsAboveAWindowThatCoversEverything) {
  const auto cover = coverEverything();
  openQuickFind();
  const auto visible = quickFind().window()->screen()->availableGeometry();
  EXPECT_EQ(quickFind().window()->pos(), quickFindPlace(visible, QuickFindPanel::panelSize));
}

TEST_F(QuickFindDesktopTest, ItIsMovedByWhatIsNotForAnythingElse) {
  openQuickFind();
  const auto before = quickFind().window()->pos();
  dragBy(before + QPoint(300, 300), {-120, 60});
  EXPECT_TRUE(waitUntil([&] { return quickFind().window()->pos() == before + QPoint(-120, 60); }));
  EXPECT_TRUE(isSeen(*quickFind().window()));
  quickFind().close();
  openQuickFind();
  EXPECT_EQ(quickFind().window()->pos(), before) << "each time it opens in its own place";
}

TEST_F(QuickFindDesktopTest, ItOpensOnWhateverWorkspaceTheUserIs) {
  openQuickFind();
  quickFind().close();
  act(QStringLiteral("set_desktop 1"));
  Testing::runEventLoopFor(aWhile);
  openQuickFind();
  type("soup");
}

TEST_F(QuickFindDesktopTest, AQuestionForTheOwnerKeepsItOpen) {
  workElsewhere();
  openQuickFind();
  type("mat");
  act(QStringLiteral("key Return"));
  ASSERT_TRUE(waitUntil([this] { return owner_->isAsked(); }));
  owner_->prompt->ask("Password: ", CredentialPrompt::Echo::Off, [](const auto&) {});
  auto* question = quickFind().window()->findChild<QDialog*>();
  ASSERT_NE(question, nullptr) << "it is asked over quick find";
  ASSERT_TRUE(QTest::qWaitForWindowActive(question));
  goBackToLetter();
  Testing::runEventLoopFor(aWhile);
  EXPECT_TRUE(quickFind().isVisible());
  act(QStringLiteral("windowactivate --sync %1").arg(question->winId()));
  ASSERT_TRUE(QTest::qWaitForWindowActive(question));
  owner_->prompt->end();
  owner_->decide(true);
  EXPECT_FALSE(quickFind().isVisible());
  EXPECT_TRUE(letterGets('x'));
  act(QStringLiteral("key ctrl+v"));
  letter_->expectLine("pasted 320x200");
  EXPECT_TRUE(locks()) << "the user has left";
}

TEST_F(QuickFindDesktopTest, ARefusalLeavesItOpenWithTheKeyboard) {
  QSignalSpy copies(QGuiApplication::clipboard(), &QClipboard::dataChanged);
  workElsewhere();
  openQuickFind();
  type("mat");
  act(QStringLiteral("key Return"));
  ASSERT_TRUE(waitUntil([this] { return owner_->isAsked(); }));
  owner_->prompt->ask("Password: ", CredentialPrompt::Echo::Off, [](const auto&) {});
  auto* question = quickFind().window()->findChild<QDialog*>();
  ASSERT_NE(question, nullptr);
  ASSERT_TRUE(QTest::qWaitForWindowActive(question));
  act(QStringLiteral("windowactivate --sync %1").arg(question->winId()));
  act(QStringLiteral("key Escape"));
  ASSERT_TRUE(waitUntil([this] { return quickFind().window()->findChild<QDialog*>() == nullptr; }));
  owner_->decide(false);
  EXPECT_TRUE(quickFind().isVisible());
  ASSERT_TRUE(QTest::qWaitForWindowActive(quickFind().window()));
  act(QStringLiteral("key s"));
  const auto* field = quickFind().window()->findChild<QLineEdit*>(QStringLiteral("quickFind.field"));
  EXPECT_TRUE(waitUntil([&] { return field->text() == QStringLiteral("mats"); })) << field->text().toStdString();
  EXPECT_TRUE(copies.isEmpty());
  act(QStringLiteral("key Escape"));
  EXPECT_TRUE(letterGets('x'));
}

TEST_F(QuickFindDesktopTest, OpenedAgainAtOnceItHasTheKeyboard) {
  workElsewhere();
  openQuickFind();
  quickFind().toggle();
  quickFind().toggle();
  ASSERT_TRUE(QTest::qWaitForWindowActive(quickFind().window()));
  Testing::runEventLoopFor(aWhile);
  EXPECT_TRUE(quickFind().isVisible());
  type("soup");
}

TEST_F(QuickFindDesktopTest, AClickOnARowCopiesIt) {
  workElsewhere();
  openQuickFind();
  type("platform");
  const auto* rows = quickFind().window()->findChild<QListView*>(QStringLiteral("quickFind.list"));
  pointTo(rows->viewport()->mapToGlobal(rows->visualRect(rows->model()->index(0, 0)).center()));
  act(QStringLiteral("click 1"));
  ASSERT_TRUE(waitUntil([this] { return !quickFind().isVisible(); }));
  EXPECT_TRUE(letterGets('x'));
  act(QStringLiteral("key ctrl+v"));
  letter_->expectLine("pasted 320x200");
}

TEST_F(QuickFindDesktopTest, ItStaysOutOfTheListsOfWindows) {
  openQuickFind();
  Testing::runEventLoopFor(aWhile);
  QProcess tool;
  tool.start(QStringLiteral("xprop"),
             {QStringLiteral("-id"), QString::number(quickFind().window()->winId()), QStringLiteral("_NET_WM_STATE")});
  ASSERT_TRUE(waitUntil([&] { return tool.state() == QProcess::NotRunning; }));
  const auto states = tool.readAllStandardOutput();
  EXPECT_TRUE(states.contains("_NET_WM_STATE_SKIP_TASKBAR")) << states.toStdString();
  EXPECT_TRUE(states.contains("_NET_WM_STATE_ABOVE")) << states.toStdString();
}

}  // namespace
}  // namespace Nimbrel
