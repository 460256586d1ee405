#include "Screencapture/PortalRecording.h"

#include "Platform/MetadataStore.h"
#include "Screencapture/PortalFixture.h"
#include "Screencapture/ScreenCastDouble.h"
#include "Screencapture/ScreenDouble.h"
#include "Support/Movies.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDBusObjectPath>
#include <QScreen>

namespace Nimbrel::Screencapture {

namespace {

using Subject = CaptureRequest::Subject;
using ::testing::AllOf;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using Testing::numberedPicture;
using Testing::PortalDouble;
using Testing::readMovie;
using Testing::ScreenDouble;
using Testing::waitUntil;

QAbstractButton* stopButton() {
  for (auto* window : QApplication::topLevelWidgets()) {
    if (auto* button = window->findChild<QAbstractButton*>(); button != nullptr && window->isVisible()) return button;
  }
  return nullptr;
}

class PortalRecordingTest : public Testing::PortalFixture {
 protected:
  PortalRecordingTest() { target_ = folder_.path("shots/Recording 1.mov"); }

  void start(Subject subject) { PortalFixture::start(recordPortalScreenCast, subject); }

  /// Shows this screen to whoever starts a stream, of that type of source.
  void show(const QImage& picture, unsigned sourceType) {
    screen_ = ScreenDouble::open(pipeWire_, picture);
    cast_.show({{screen_->node(), {{QStringLiteral("source_type"), sourceType}}}});
  }

  /// Starts a recording and waits until it takes frames.
  void record(Subject subject = Subject::mainScreen) {
    start(subject);
    EXPECT_TRUE(waitUntil([] { return stopButton() != nullptr; })) << "nothing is recorded";
  }

  [[nodiscard]] QVariantMap optionsOf(const char* method) const {
    const auto calls = portal_.calls(QLatin1String(method));
    EXPECT_EQ(calls.size(), 1U) << method;
    return calls.empty() ? QVariantMap() : calls.front().options();
  }

  /// Where the portal was told that something is over.
  [[nodiscard]] bool isClosed(const QString& path) const {
    return std::ranges::any_of(portal_.calls(QStringLiteral("Close")),
                               [&](const auto& call) { return call.path == path; });
  }

  Testing::SessionBus bus_;
  PortalDouble portal_;
  Testing::PipeWireDaemon pipeWire_;
  Testing::ScreenCastDouble cast_{portal_, pipeWire_};
  std::unique_ptr<ScreenDouble> screen_;
};

}  // namespace

TEST_F(PortalRecordingTest, WhatIsShownBecomesAMovieOfItsSize) {
  show(numberedPicture(7, {322, 201}), 1);
  record();
  capture_->interrupt();
  EXPECT_EQ(outcome(), Outcome());
  EXPECT_THAT(written(), ElementsAre("Recording 1.mov"));
  const auto movie = readMovie(target_);
  EXPECT_EQ(movie.size, QSize(322, 200));
  EXPECT_THAT(movie.numbers(), AllOf(Not(IsEmpty()), Each(7)));
  EXPECT_EQ(MetadataStore::screenCaptureType(target_), "display");
  EXPECT_EQ(stopButton(), nullptr);
  EXPECT_TRUE(waitUntil([this] { return isClosed(cast_.session()); }));
}

TEST_F(PortalRecordingTest, WhatChangesIsInTheMovieAndItsSizeStays) {
  show(numberedPicture(7, {160, 120}), 2);
  record(Subject::selection);
  screen_->show(numberedPicture(8, {320, 240}));
  const int shown = screen_->shown();
  EXPECT_TRUE(waitUntil([&] { return screen_->shown() > shown + 30; }));
  capture_->interrupt();
  EXPECT_EQ(outcome(), Outcome());
  const auto movie = readMovie(target_);
  EXPECT_EQ(movie.size, QSize(160, 120));
  EXPECT_EQ(movie.numbers().front(), 7);
  EXPECT_EQ(movie.numbers().back(), 8);
  EXPECT_EQ(MetadataStore::screenCaptureType(target_), "window");
}

TEST_F(PortalRecordingTest, TheMainScreenIsAskedForWithItsPointer) {
  portal_.answer(QStringLiteral("Start"), 1);
  start(Subject::mainScreen);
  EXPECT_EQ(outcome(), Outcome());
  const auto options = optionsOf("SelectSources");
  EXPECT_EQ(options.value(QStringLiteral("types")).toUInt(), 1U);
  EXPECT_EQ(options.value(QStringLiteral("cursor_mode")).toUInt(), 2U);
  EXPECT_FALSE(options.value(QStringLiteral("multiple"), true).toBool());
}

TEST_F(PortalRecordingTest, TheControlStandsBesideTheMonitorThatThePortalNames) {
  const auto around = QApplication::primaryScreen()->availableGeometry();
  const QRect monitor(around.topLeft(), QSize(around.width(), around.height() / 2));
  screen_ = ScreenDouble::open(pipeWire_, numberedPicture(1, {160, 120}));
  cast_.show({{screen_->node(),
               {{QStringLiteral("source_type"), 1U},
                {QStringLiteral("position"), QVariant::fromValue(monitor.topLeft())},
                {QStringLiteral("size"), QVariant::fromValue(monitor.size())}}}});
  record();
  EXPECT_GT(stopButton()->window()->geometry().top(), monitor.bottom());
}

TEST_F(PortalRecordingTest, WhatIsToBeSelectedMayBeAWindow) {
  portal_.answer(QStringLiteral("Start"), 1);
  start(Subject::selection);
  EXPECT_EQ(outcome(), Outcome());
  EXPECT_EQ(optionsOf("SelectSources").value(QStringLiteral("types")).toUInt(), 3U);
}

TEST_F(PortalRecordingTest, OnlyWhatThePortalHasIsAskedFor) {
  portal_.offer(QStringLiteral("ScreenCast"),
                {{QStringLiteral("version"), 1U}, {QStringLiteral("AvailableSourceTypes"), 1U}});
  portal_.answer(QStringLiteral("Start"), 1);
  start(Subject::selection);
  EXPECT_EQ(outcome(), Outcome());
  const auto options = optionsOf("SelectSources");
  EXPECT_EQ(options.value(QStringLiteral("types")).toUInt(), 1U);
  EXPECT_FALSE(options.contains(QStringLiteral("cursor_mode")));
}

TEST_F(PortalRecordingTest, APortalThatShowsNoScreensIsARefusal) {
  portal_.offer(QStringLiteral("ScreenCast"),
                {{QStringLiteral("version"), 4U}, {QStringLiteral("AvailableSourceTypes"), 4U}});
  start(Subject::mainScreen);
  EXPECT_EQ(outcome().status, Refused);
  EXPECT_TRUE(portal_.calls(QStringLiteral("CreateSession")).empty());
}

TEST_F(PortalRecordingTest, CancellingLeavesNoFileAndClosesTheSession) {
  portal_.answer(QStringLiteral("Start"), 1);
  start(Subject::mainScreen);
  EXPECT_EQ(outcome(), Outcome());
  EXPECT_THAT(written(), IsEmpty());
  EXPECT_TRUE(waitUntil([this] { return isClosed(cast_.session()); }));
}

TEST_F(PortalRecordingTest, ARefusalAtAnyStepIsTold) {
  for (const char* method : {"CreateSession", "SelectSources", "Start"}) {
    const Testing::ScreenCastDouble anew(portal_, pipeWire_);
    portal_.answer(QLatin1String(method), 2);
    outcome_.reset();
    start(Subject::mainScreen);
    EXPECT_EQ(outcome(), (Outcome{Refused, "The desktop portal refused"})) << method;
  }
  EXPECT_THAT(written(), IsEmpty());
}

TEST_F(PortalRecordingTest, AConnectionThatIsRefusedIsTold) {
  show(numberedPicture(7, {160, 120}), 1);
  portal_.behave(QStringLiteral("OpenPipeWireRemote"), [this](const QDBusMessage& call) {
    portal_.refuse(call, QStringLiteral("org.freedesktop.portal.Error.NotAllowed"));
  });
  start(Subject::mainScreen);
  EXPECT_EQ(outcome(), (Outcome{Refused, "The desktop portal refused: not today"}));
}

TEST_F(PortalRecordingTest, AnAnswerWithoutAStreamIsARefusal) {
  for (const QVariantMap& results :
       {QVariantMap(), QVariantMap{{QStringLiteral("streams"), 5}},
        QVariantMap{{QStringLiteral("streams"), QStringList(QStringLiteral("one"))}},
        QVariantMap{{QStringLiteral("streams"), QVariant::fromValue(QList<Testing::PortalStream>())}}}) {
    portal_.answer(QStringLiteral("Start"), 0, results);
    outcome_.reset();
    start(Subject::mainScreen);
    EXPECT_EQ(outcome(), (Outcome{Refused, "The desktop portal shows nothing"}));
  }
}

TEST_F(PortalRecordingTest, ASessionWithoutAPortalSaysSo) {
  portal_.vanish();
  start(Subject::mainScreen);
  EXPECT_EQ(outcome().status, Refused);
  EXPECT_THAT(outcome().reason, HasSubstr("does not offer ScreenCast"));
}

TEST_F(PortalRecordingTest, ASessionWithoutABusSaysSo) {
  qunsetenv("DBUS_SESSION_BUS_ADDRESS");
  start(Subject::mainScreen);
  EXPECT_EQ(outcome(), (Outcome{Refused, "There is no session bus"}));
}

TEST_F(PortalRecordingTest, AnInterruptTakesTheQuestionOffTheScreen) {
  portal_.keepAsking(QStringLiteral("Start"));
  start(Subject::mainScreen);
  waitForCall(portal_, "Start");
  capture_->interrupt();
  EXPECT_EQ(outcome(), Outcome());
  EXPECT_THAT(written(), IsEmpty());
  const auto token = optionsOf("Start").value(QStringLiteral("handle_token")).toString();
  EXPECT_TRUE(waitUntil([&] {
    return std::ranges::any_of(portal_.calls(QStringLiteral("Close")),
                               [&](const auto& call) { return call.path.endsWith(token); });
  }));
}

TEST_F(PortalRecordingTest, ASessionThatIsClosedBeforeItShowsAnythingIsARefusal) {
  portal_.keepAsking(QStringLiteral("Start"));
  start(Subject::mainScreen);
  waitForCall(portal_, "Start");
  cast_.closeSession();
  EXPECT_EQ(outcome(), (Outcome{Refused, "The desktop portal has closed the session"}));
}

TEST_F(PortalRecordingTest, TheDesktopsOwnEndLeavesTheMovie) {
  show(numberedPicture(7, {160, 120}), 1);
  record();
  cast_.closeSession();
  EXPECT_EQ(outcome(), Outcome());
  EXPECT_THAT(readMovie(target_).numbers(), AllOf(Not(IsEmpty()), Each(7)));
}

TEST_F(PortalRecordingTest, APortalThatEndsLeavesTheMovie) {
  show(numberedPicture(7, {160, 120}), 1);
  record();
  portal_.vanish();
  EXPECT_EQ(outcome(), Outcome());
  EXPECT_THAT(readMovie(target_).numbers(), AllOf(Not(IsEmpty()), Each(7)));
}

TEST_F(PortalRecordingTest, PipeWireThatEndsLeavesTheMovie) {
  show(numberedPicture(7, {160, 120}), 1);
  record();
  pipeWire_.kill();
  EXPECT_EQ(outcome(), Outcome());
  EXPECT_THAT(readMovie(target_).numbers(), AllOf(Not(IsEmpty()), Each(7)));
}

TEST_F(PortalRecordingTest, TheStopControlEndsIt) {
  show(numberedPicture(7, {160, 120}), 1);
  record();
  stopButton()->click();
  EXPECT_EQ(outcome(), Outcome());
  EXPECT_THAT(written(), ElementsAre("Recording 1.mov"));
}

TEST_F(PortalRecordingTest, AScreenThatNeverShowsAnythingIsNoMovie) {
  cast_.show({{77, {}}});
  start(Subject::mainScreen);
  waitForCall(portal_, "OpenPipeWireRemote");
  Testing::runEventLoopFor(std::chrono::milliseconds(50));
  cast_.closeSession();
  EXPECT_EQ(outcome(), (Outcome{Failed, "The desktop ended the recording before it began"}));
  EXPECT_THAT(written(), IsEmpty());
}

TEST_F(PortalRecordingTest, ARecordingThatIsGivenUpLeavesNothing) {
  show(numberedPicture(7, {160, 120}), 1);
  record();
  capture_.reset();
  EXPECT_THAT(written(), IsEmpty());
  EXPECT_TRUE(waitUntil([this] { return isClosed(cast_.session()); }));
  EXPECT_FALSE(outcome_);
}

TEST_F(PortalRecordingTest, NothingThatStandsThereIsReplaced) {
  folder_.write("shots/Recording 1.mov", "another movie");
  show(numberedPicture(7, {160, 120}), 1);
  start(Subject::mainScreen);
  EXPECT_EQ(outcome().status, Failed);
  EXPECT_EQ(Testing::contentOf(target_), "another movie");
}

}  // namespace Nimbrel::Screencapture
