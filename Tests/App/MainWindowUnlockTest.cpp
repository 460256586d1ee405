// A sensitive shot in the main window, with the system asked for its owner.

#include "App/ApplicationFixture.h"

#include "Linux/Authentication/PamOwnerAuthentication.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>

namespace Nimbrel {
namespace {

using ::testing::IsEmpty;
using Testing::waitUntil;

class MainWindowUnlockTest : public Testing::ApplicationFixture {
 protected:
  MainWindowUnlockTest() {
    services_.ownerAuthentication = makePamOwnerAuthentication();
    addShot("Screenshot open.png", "A recipe for soup");
    addShot("Screenshot secret.png", "the key is under the mat", {"Password"});
    openWindow();
    QGuiApplication::clipboard()->setText(QStringLiteral("before"));
    clickShot("Screenshot secret.png");
  }

  [[nodiscard]] bool isLocked() const { return store().isProtected(*shot("Screenshot secret.png")); }
  [[nodiscard]] bool isAsked() const {
    return waitUntil([this] {
      return isShown(QStringLiteral("authentication.answer")) && part("authentication.answer").isEnabled();
    });
  }
  void answer(const QString& password) const {
    ASSERT_TRUE(isAsked());
    typeInto("authentication.answer", password);
    clickPart("authentication.unlock");
  }
  [[nodiscard]] bool sheetGoes() const {
    return waitUntil([this] { return !isShown(QStringLiteral("authenticationSheet")); });
  }
};

TEST_F(MainWindowUnlockTest, ALockedShotShowsNothingOfItself) {
  EXPECT_TRUE(waitUntil([this] { return isShown(QStringLiteral("inspector.locked")); }));
  EXPECT_FALSE(isShown(QStringLiteral("inspector.form")));
  EXPECT_TRUE(isLocked());
}

TEST_F(MainWindowUnlockTest, TheRightPasswordShowsIt) {
  clickPart("inspector.unlock");
  answer(QStringLiteral("secret"));
  EXPECT_TRUE(waitUntil([this] { return isShown(QStringLiteral("inspector.form")); }));
  EXPECT_TRUE(sheetGoes());
  EXPECT_FALSE(isLocked());
  EXPECT_EQ(part<QLineEdit>("inspector.name").text(), QStringLiteral("Screenshot secret.png"));
  clickPart("inspector.copyText");
  EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("the key is under the mat"));
}

TEST_F(MainWindowUnlockTest, AWrongPasswordIsToldAndAskedForAgain) {
  clickPart("inspector.unlock");
  answer(QStringLiteral("guess"));
  EXPECT_TRUE(waitUntil([this] { return !part<QLabel>("authentication.refusal").text().isEmpty(); }));
  EXPECT_TRUE(isLocked());
  answer(QStringLiteral("secret"));
  EXPECT_TRUE(waitUntil([this] { return !isLocked(); }));
  EXPECT_TRUE(sheetGoes());
}

TEST_F(MainWindowUnlockTest, CancellingLeavesItLocked) {
  clickPart("inspector.unlock");
  ASSERT_TRUE(isAsked());
  clickPart("authentication.cancel");
  EXPECT_TRUE(sheetGoes());
  EXPECT_TRUE(waitUntil([this] { return store().status() == "Sensitive preview remains locked"; }));
  EXPECT_TRUE(isLocked());
  EXPECT_TRUE(isShown(QStringLiteral("inspector.locked")));
}

TEST_F(MainWindowUnlockTest, TheTextIsCopiedOnceTheOwnerHasAnswered) {
  chooseFromMenu("menu.copyText");
  ASSERT_TRUE(isAsked());
  EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("before"));
  answer(QStringLiteral("secret"));
  EXPECT_TRUE(
      waitUntil([] { return QGuiApplication::clipboard()->text() == QStringLiteral("the key is under the mat"); }));
}

TEST_F(MainWindowUnlockTest, ClosingTheWindowWhileItIsAskedUnlocksNothing) {
  clickPart("inspector.unlock");
  ASSERT_TRUE(isAsked());
  window().close();
  EXPECT_TRUE(sheetGoes());
  EXPECT_TRUE(isLocked());
  EXPECT_THAT(store().unlockedSensitiveIDs(), IsEmpty());
}

}  // namespace
}  // namespace Nimbrel
