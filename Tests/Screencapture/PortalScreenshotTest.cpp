#include "Screencapture/PortalScreenshot.h"

#include "Platform/MetadataStore.h"
#include "Screencapture/PortalFixture.h"
#include "Support/Pictures.h"

#include <QImage>
#include <QUrl>

#include <tuple>

namespace Nimbrel::Screencapture {

namespace {

using Subject = CaptureRequest::Subject;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using Testing::PortalDouble;

const auto method = QStringLiteral("Screenshot");

QVariantMap at(const std::string& path) {
  return {{QStringLiteral("uri"), QUrl::fromLocalFile(QString::fromStdString(path)).toString(QUrl::FullyEncoded)}};
}

bool isInteractive(const PortalDouble::Call& call) {
  return call.options().value(QStringLiteral("interactive")).toBool();
}

class PortalScreenshotTest : public Testing::PortalFixture {
 protected:
  PortalScreenshotTest() { portal_.offer(method, {{QStringLiteral("version"), 2U}}); }

  void start(Subject subject) { PortalFixture::start(takePortalScreenshot, subject); }

  /// A picture that the portal has written.
  std::string portalPicture(const std::string& name = "portal/picture.png") {
    const auto path = folder_.path(name);
    Testing::writePicture(path);
    return path;
  }

  Testing::SessionBus bus_;
  PortalDouble portal_;
};

}  // namespace

TEST_F(PortalScreenshotTest, WhatIsGrantedIsCopiedAsItStands) {
  const auto picture = portalPicture();
  const auto content = Testing::contentOf(picture);
  portal_.answer(method, 0, at(picture));
  start(Subject::selection);
  EXPECT_EQ(outcome(), Outcome());
  EXPECT_THAT(written(), ElementsAre("Screenshot 1.png"));
  EXPECT_EQ(Testing::contentOf(target_), content);
}

TEST_F(PortalScreenshotTest, TheKindOfTheCaptureIsLeftWithTheFile) {
  for (const auto& [subject, kind] : {std::pair(Subject::selection, "selection"), std::pair(Subject::window, "window"),
                                      std::pair(Subject::mainScreen, "display")}) {
    portal_.answer(method, 0, at(portalPicture()));
    target_ = folder_.path(std::string("shots/") + kind + ".png");
    outcome_.reset();
    start(subject);
    EXPECT_EQ(outcome(), Outcome());
    EXPECT_EQ(MetadataStore::isScreenCapture(target_), true);
    EXPECT_EQ(MetadataStore::screenCaptureType(target_), kind);
  }
}

TEST_F(PortalScreenshotTest, TheUserChoosesOnlyWhatIsToBeSelected) {
  for (const auto& [subject, asks] :
       {std::pair(Subject::selection, true), std::pair(Subject::window, true), std::pair(Subject::mainScreen, false)}) {
    portal_.answer(method, 1);
    outcome_.reset();
    start(subject);
    EXPECT_EQ(outcome(), Outcome());
    EXPECT_EQ(isInteractive(portal_.calls(method).back()), asks);
  }
}

TEST_F(PortalScreenshotTest, CancellingLeavesNoFileAndIsNoFailure) {
  portal_.answer(method, 1);
  start(Subject::selection);
  EXPECT_EQ(outcome(), Outcome());
  EXPECT_THAT(written(), IsEmpty());
}

TEST_F(PortalScreenshotTest, ARefusalIsTold) {
  portal_.answer(method, 2);
  start(Subject::selection);
  EXPECT_EQ(outcome(), (Outcome{Refused, "The desktop portal refused"}));
  EXPECT_EQ(portal_.calls(method).size(), 1U);
  EXPECT_THAT(written(), IsEmpty());
}

TEST_F(PortalScreenshotTest, TheUserIsAskedForAScreenThatMustNotBeTakenUnasked) {
  const auto picture = portalPicture();
  portal_.behave(method, [&](const QDBusMessage& call) {
    const bool asks = isInteractive({.arguments = call.arguments()});
    portal_.acknowledge(call, PortalDouble::requestPath(call));
    portal_.respond(call, PortalDouble::requestPath(call), asks ? 0 : 2, asks ? at(picture) : QVariantMap());
  });
  start(Subject::mainScreen);
  EXPECT_EQ(outcome(), Outcome());
  EXPECT_EQ(portal_.calls(method).size(), 2U);
  EXPECT_THAT(written(), ElementsAre("Screenshot 1.png"));
}

TEST_F(PortalScreenshotTest, AScreenIsRefusedForGoodOnceTheUserWasAsked) {
  portal_.answer(method, 2);
  start(Subject::mainScreen);
  EXPECT_EQ(outcome().status, Refused);
  EXPECT_EQ(portal_.calls(method).size(), 2U);
}

TEST_F(PortalScreenshotTest, APortalThatCannotAskIsTakenAtItsFirstWord) {
  portal_.offer(method, {{QStringLiteral("version"), 1U}});
  portal_.answer(method, 2);
  start(Subject::mainScreen);
  EXPECT_EQ(outcome().status, Refused);
  EXPECT_EQ(portal_.calls(method).size(), 1U);
}

TEST_F(PortalScreenshotTest, AnAnswerBeforeTheCallHasReturnedIsHeard) {
  const auto picture = portalPicture();
  portal_.behave(method, [&](const QDBusMessage& call) {
    portal_.respond(call, PortalDouble::requestPath(call), 0, at(picture));
    portal_.acknowledge(call, PortalDouble::requestPath(call));
  });
  start(Subject::selection);
  EXPECT_EQ(outcome(), Outcome());
  EXPECT_THAT(written(), ElementsAre("Screenshot 1.png"));
}

TEST_F(PortalScreenshotTest, APortalThatChoosesThePathOfTheRequestIsHeard) {
  const auto path = QStringLiteral("/org/freedesktop/portal/desktop/request/old/7");
  QDBusMessage asked;
  portal_.behave(method, [&](const QDBusMessage& call) {
    asked = call;
    portal_.acknowledge(call, path);
  });
  start(Subject::selection);
  waitForCall(portal_, "Screenshot");
  // How soon the other path is listened at cannot be seen from here.
  EXPECT_TRUE(Testing::waitUntil([&] {
    portal_.respond(asked, path, 1, {});
    return outcome_.has_value();
  }));
  EXPECT_EQ(outcome(), Outcome());
}

TEST_F(PortalScreenshotTest, ACallThatFailsIsARefusal) {
  portal_.behave(method, [&](const QDBusMessage& call) {
    portal_.refuse(call, QStringLiteral("org.freedesktop.portal.Error.NotAllowed"));
  });
  start(Subject::selection);
  EXPECT_EQ(outcome(), (Outcome{Refused, "The desktop portal refused: not today"}));
}

TEST_F(PortalScreenshotTest, AnInterruptTakesTheQuestionOffTheScreen) {
  portal_.keepAsking(method);
  start(Subject::selection);
  waitForCall(portal_, "Screenshot");
  capture_->interrupt();
  capture_->interrupt();
  EXPECT_EQ(outcome(), Outcome());
  waitForCall(portal_, "Close");
  const auto token = portal_.calls(method).front().options().value(QStringLiteral("handle_token")).toString();
  EXPECT_TRUE(portal_.calls(QStringLiteral("Close")).front().path.endsWith(token));
}

TEST_F(PortalScreenshotTest, ACaptureThatIsGivenUpTakesTheQuestionOffTheScreen) {
  portal_.keepAsking(method);
  start(Subject::selection);
  waitForCall(portal_, "Screenshot");
  capture_.reset();
  waitForCall(portal_, "Close");
  EXPECT_FALSE(outcome_);
}

TEST_F(PortalScreenshotTest, AnInterruptBeforeThePortalWasFoundCancels) {
  start(Subject::selection);
  capture_->interrupt();
  EXPECT_EQ(outcome(), Outcome());
  EXPECT_TRUE(portal_.calls(method).empty());
}

TEST_F(PortalScreenshotTest, APortalThatEndsWhileItAsksIsARefusal) {
  portal_.keepAsking(method);
  start(Subject::selection);
  waitForCall(portal_, "Screenshot");
  portal_.vanish();
  EXPECT_EQ(outcome(), (Outcome{Refused, "The desktop portal has ended"}));
}

TEST_F(PortalScreenshotTest, ABusThatEndsWhileThePortalAsksIsARefusal) {
  portal_.keepAsking(method);
  start(Subject::selection);
  waitForCall(portal_, "Screenshot");
  Testing::runEventLoopFor(std::chrono::milliseconds(20));
  bus_.kill();
  EXPECT_EQ(outcome().status, Refused);
}

TEST_F(PortalScreenshotTest, APortalWithoutScreenshotsIsToldFromOneThatRefuses) {
  portal_.vanish();
  PortalDouble other;
  other.offer(QStringLiteral("OpenURI"), {{QStringLiteral("version"), 3U}});
  start(Subject::selection);
  EXPECT_EQ(outcome().status, Refused);
  EXPECT_THAT(outcome().reason, HasSubstr("does not offer Screenshot"));
  EXPECT_TRUE(other.calls(method).empty());
}

TEST_F(PortalScreenshotTest, ASessionWithoutAPortalSaysSo) {
  portal_.vanish();
  start(Subject::selection);
  EXPECT_EQ(outcome().status, Refused);
  EXPECT_THAT(outcome().reason, HasSubstr("does not offer Screenshot"));
}

TEST_F(PortalScreenshotTest, ASessionWithoutABusSaysSo) {
  qunsetenv("DBUS_SESSION_BUS_ADDRESS");
  start(Subject::selection);
  EXPECT_EQ(outcome(), (Outcome{Refused, "There is no session bus"}));
}

TEST_F(PortalScreenshotTest, ABusThatIsGoneSaysSo) {
  bus_.kill();
  start(Subject::selection);
  EXPECT_EQ(outcome().status, Refused);
  EXPECT_THAT(outcome().reason, HasSubstr("session bus"));
}

TEST_F(PortalScreenshotTest, TheBusOfTheRuntimeFolderIsFoundWithoutAName) {
  const auto socket = qgetenv("DBUS_SESSION_BUS_ADDRESS").mid(static_cast<int>(sizeof("unix:path=") - 1));
  const auto former = qgetenv("XDG_RUNTIME_DIR");
  qputenv("XDG_RUNTIME_DIR", QByteArray::fromStdString(std::filesystem::path(socket.toStdString()).parent_path()));
  qunsetenv("DBUS_SESSION_BUS_ADDRESS");
  portal_.answer(method, 1);
  start(Subject::selection);
  EXPECT_EQ(outcome(), Outcome());
  qputenv("XDG_RUNTIME_DIR", former);
}

TEST_F(PortalScreenshotTest, NothingThatStandsThereIsReplaced) {
  Testing::writePicture(target_, 10, 10);
  const auto content = Testing::contentOf(target_);
  portal_.answer(method, 0, at(portalPicture()));
  start(Subject::selection);
  EXPECT_EQ(outcome().status, Failed);
  EXPECT_THAT(written(), ElementsAre("Screenshot 1.png"));
  EXPECT_EQ(Testing::contentOf(target_), content);
}

TEST_F(PortalScreenshotTest, AnAddressThatLeadsNowhereIsAnError) {
  for (const auto& results : {at(folder_.path("nothing.png")), at(folder_.path()), QVariantMap(),
                              QVariantMap{{QStringLiteral("uri"), QStringLiteral("https://example.org/a.png")}},
                              QVariantMap{{QStringLiteral("uri"), 5}}}) {
    portal_.answer(method, 0, results);
    outcome_.reset();
    start(Subject::selection);
    EXPECT_EQ(outcome().status, Failed);
    EXPECT_THAT(outcome().reason, HasSubstr("portal's picture"));
    EXPECT_THAT(written(), IsEmpty());
  }
}

}  // namespace Nimbrel::Screencapture
