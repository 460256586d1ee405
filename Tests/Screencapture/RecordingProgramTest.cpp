#include "Platform/MediaFile.h"
#include "Platform/MetadataStore.h"
#include "Screencapture/CaptureRequest.h"
#include "Screencapture/PaintedScreen.h"
#include "Screencapture/PixelMemory.h"
#include "Screencapture/SoundServer.h"
#include "Support/DesktopSession.h"
#include "Support/EnvironmentVariable.h"
#include "Support/ProgramRun.h"
#include "Support/TemporaryFolder.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <signal.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <vector>

namespace Nimbrel::Screencapture {

namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using Testing::PaintedScreen;
using Testing::waitUntil;
using Clock = std::chrono::steady_clock;

const auto controlName = QStringLiteral("^Recording$");

/// What a tool prints, in words.
QStringList run(const QString& tool, const QStringList& arguments) {
  QProcess process;
  process.start(tool, arguments);
  EXPECT_TRUE(process.waitForFinished()) << tool.toStdString();
  return QString::fromUtf8(process.readAllStandardOutput()).simplified().split(u' ', Qt::SkipEmptyParts);
}

QStringList xdotool(const QStringList& arguments) { return run(QStringLiteral("xdotool"), arguments); }

bool isLike(const QColor& one, const QColor& other) {
  const auto isNear = [](int first, int second) { return std::abs(first - second) < 40; };
  return isNear(one.red(), other.red()) && isNear(one.green(), other.green()) && isNear(one.blue(), other.blue());
}

/// The program as it is started for a recording, on a screen that is red at first.
class RecordingProgramTest : public ::testing::Test {
 protected:
  void start(const QStringList& options) { startAs(Testing::programPath("nimbrel-screencapture"), options); }
  void startAs(const QString& program, const QStringList& arguments) {
    program_ = std::make_unique<QProcess>();
    auto environment = Testing::environmentOf(folder_.makeFolder("home"));
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    program_->setProcessEnvironment(environment);
    program_->start(program, arguments + QStringList{QStringLiteral("-d"), QString::fromStdString(path_)});
    EXPECT_TRUE(program_->waitForStarted());
  }
  void startWithMainScreen() {
    start({QStringLiteral("-v"), QStringLiteral("-m")});
    EXPECT_TRUE(waitUntil([this] { return hasControl(); })) << program_->readAllStandardError().toStdString();
  }
  /// As it is while an area is chosen.
  [[nodiscard]] bool isDimmed() const {
    const auto pixels = screenPixels(screen_.display(), {600, 400, 1, 1});
    return pixels && pixels.value()->image().pixelColor(0, 0) != Qt::red;
  }
  /// The windows of stop controls that are shown.
  [[nodiscard]] static QStringList controls() {
    return xdotool({QStringLiteral("search"), QStringLiteral("--onlyvisible"), QStringLiteral("--name"), controlName});
  }
  [[nodiscard]] static bool hasControl() { return !controls().isEmpty(); }
  [[nodiscard]] QRect frameOfControl() const {
    const auto window = static_cast<xcb_window_t>(controls().value(0).toUInt());
    auto* server = screen_.display().get();
    const XcbOwned<xcb_get_geometry_reply_t> size(
        xcb_get_geometry_reply(server, xcb_get_geometry(server, window), nullptr));
    const XcbOwned<xcb_translate_coordinates_reply_t> place(xcb_translate_coordinates_reply(
        server, xcb_translate_coordinates(server, window, screen_.display().root(), 0, 0), nullptr));
    return size && place ? QRect(place->dst_x, place->dst_y, size->width, size->height) : QRect();
  }

  void signal(int number) { ::kill(static_cast<pid_t>(program_->processId()), number); }
  /// How it ended; -1 when not by itself.
  int exitStatus() {
    EXPECT_TRUE(waitUntil([this] { return program_->state() == QProcess::NotRunning; }));
    return program_->exitStatus() == QProcess::NormalExit ? program_->exitCode() : -1;
  }

  [[nodiscard]] QImage frameAt(double time) const {
    const auto pictures = MediaFile::FrameGrabber::open(path_);
    EXPECT_TRUE(pictures);
    if (!pictures) return {};
    auto frame = pictures.value()->frameAt(time);
    return frame ? frame.value() : QImage();
  }
  [[nodiscard]] bool shows(double time, const QColor& colour) const {
    const auto frame = frameAt(time);
    return !frame.isNull() && isLike(frame.pixelColor(frame.width() / 3, frame.height() / 3), colour);
  }
  [[nodiscard]] double duration() const {
    const auto length = MediaFile::duration(path_);
    return length ? length.value() : -1;
  }
  [[nodiscard]] std::vector<std::string> names() const {
    std::vector<std::string> result;
    for (const auto& entry : std::filesystem::directory_iterator(folder_.path("out"))) {
      result.push_back(entry.path().filename());
    }
    return result;
  }

  Testing::TemporaryFolder folder_;
  std::string path_ = folder_.makeFolder("out") + "/Recording.mov";
  Testing::NoSoundServer silence_;
  Testing::DesktopSession session_;
  PaintedScreen screen_{Qt::red};
  std::unique_ptr<QProcess> program_;
};

TEST_F(RecordingProgramTest, RecordsTheMainScreenUntilItIsInterrupted) {
  const auto started = Clock::now();
  startWithMainScreen();
  const auto begun = Clock::now();
  Testing::runEventLoopFor(500ms);
  screen_.paint(Qt::blue);
  Testing::runEventLoopFor(500ms);
  const auto interrupted = Clock::now();
  signal(SIGINT);
  EXPECT_EQ(exitStatus(), Done);
  EXPECT_LT(Clock::now() - interrupted, 10s);
  EXPECT_GE(duration(), std::chrono::duration<double>(interrupted - begun).count());
  EXPECT_LE(duration(), std::chrono::duration<double>(Clock::now() - started).count());
  EXPECT_EQ(frameAt(0).size(), QSize(1280, 800));
  EXPECT_TRUE(shows(0, Qt::red));
  EXPECT_TRUE(shows(duration() - 0.9, Qt::red));
  EXPECT_TRUE(shows(duration() - 0.2, Qt::blue));
  EXPECT_THAT(Testing::contentOf(path_), HasSubstr("avc1")) << "it is no H.264";
  EXPECT_EQ(MetadataStore::screenCaptureType(path_), "display");
  EXPECT_THAT(names(), ElementsAre("Recording.mov"));
}

TEST_F(RecordingProgramTest, AClickOnTheControlEndsIt) {
  startWithMainScreen();
  xdotool({QStringLiteral("search"), QStringLiteral("--onlyvisible"), QStringLiteral("--name"), controlName,
           QStringLiteral("mousemove"), QStringLiteral("--window"), QStringLiteral("%1"), QStringLiteral("80"),
           QStringLiteral("20"), QStringLiteral("click"), QStringLiteral("1")});
  EXPECT_EQ(exitStatus(), Done);
  EXPECT_GT(duration(), 0);
}

TEST_F(RecordingProgramTest, TheControlLeavesTheKeyboardToOthersAndIsOnAllWorkspacesAboveThem) {
  const Testing::DesktopClient other({Testing::programPath("TestWindow").toStdString(), "WM_CLASS", "o/Other"});
  Testing::bringToFront("Other");
  const auto active = xdotool({QStringLiteral("getactivewindow")});
  startWithMainScreen();
  const auto control = controls().value(0);
  xdotool({QStringLiteral("mousemove"), QStringLiteral("--window"), control, QStringLiteral("30"), QStringLiteral("20"),
           QStringLiteral("click"), QStringLiteral("1")});
  EXPECT_EQ(xdotool({QStringLiteral("getactivewindow")}), active);
  const auto property = [&](const QString& name) {
    return run(QStringLiteral("xprop"), {QStringLiteral("-id"), control, name}).join(u' ').toStdString();
  };
  EXPECT_THAT(property(QStringLiteral("_NET_WM_DESKTOP")), HasSubstr("4294967295"));
  EXPECT_THAT(property(QStringLiteral("_NET_WM_STATE")), HasSubstr("_NET_WM_STATE_ABOVE"));
  signal(SIGTERM);
  EXPECT_EQ(exitStatus(), Done);
}

TEST_F(RecordingProgramTest, ASelectionIsRecordedWithAFrameAroundIt) {
  start({QStringLiteral("-v"), QStringLiteral("-i"), QStringLiteral("-Jvideo")});
  ASSERT_TRUE(waitUntil([this] { return isDimmed(); }));
  xdotool({QStringLiteral("mousemove"), QStringLiteral("200"), QStringLiteral("150"), QStringLiteral("mousedown"),
           QStringLiteral("1"), QStringLiteral("mousemove"), QStringLiteral("300"), QStringLiteral("250"),
           QStringLiteral("mousemove"), QStringLiteral("401"), QStringLiteral("301"), QStringLiteral("mouseup"),
           QStringLiteral("1")});
  ASSERT_TRUE(waitUntil([] { return hasControl(); }));
  EXPECT_FALSE(frameOfControl().intersects({200, 150, 201, 151}));
  const auto screen = run(QStringLiteral("xwininfo"), {QStringLiteral("-root"), QStringLiteral("-tree")}).join(u' ');
  xdotool({QStringLiteral("mousemove"), QStringLiteral("199"), QStringLiteral("200")});
  const auto* root = &screen_.display();
  const XcbOwned<xcb_query_pointer_reply_t> pointed(
      xcb_query_pointer_reply(root->get(), xcb_query_pointer(root->get(), root->root()), nullptr));
  EXPECT_EQ(pointed->child, 0U) << "the frame takes clicks";
  signal(SIGINT);
  EXPECT_EQ(exitStatus(), Done);
  EXPECT_EQ(frameAt(0).size(), QSize(200, 150)) << "an odd size is not cut";
  EXPECT_TRUE(screen.contains(QStringLiteral("204x2+198+148"))) << screen.toStdString();
  EXPECT_EQ(MetadataStore::screenCaptureType(path_), "selection");
}

TEST_F(RecordingProgramTest, AtTwiceTheScaleTheControlIsTwiceAsLargeAndInTheCorner) {
  const Testing::EnvironmentVariable scale("QT_SCALE_FACTOR", "2");
  startWithMainScreen();
  const auto frame = frameOfControl();
  EXPECT_GE(frame.height(), 60);
  EXPECT_EQ(frame.bottomRight(), QPoint(1279 - 24, 799 - 24));
  signal(SIGINT);
  EXPECT_EQ(exitStatus(), Done);
}

TEST_F(RecordingProgramTest, TheControlGoesToAMonitorThatIsNotRecorded) {
  run(QStringLiteral("xrandr"), {QStringLiteral("--setmonitor"), QStringLiteral("*left"),
                                 QStringLiteral("640/100x800/100+0+0"), QStringLiteral("screen")});
  run(QStringLiteral("xrandr"), {QStringLiteral("--setmonitor"), QStringLiteral("right"),
                                 QStringLiteral("640/100x800/100+640+0"), QStringLiteral("none")});
  startWithMainScreen();
  EXPECT_TRUE(QRect(640, 0, 640, 800).contains(frameOfControl()));
  signal(SIGINT);
  EXPECT_EQ(exitStatus(), Done);
  EXPECT_EQ(frameAt(0).size(), QSize(640, 800));
}

TEST_F(RecordingProgramTest, WithoutADisplayItEndsBadlyAndSaysWhy) {
  const Testing::EnvironmentVariable none("DISPLAY", ":987");
  start({QStringLiteral("-v"), QStringLiteral("-m")});
  EXPECT_EQ(exitStatus(), Refused);
  EXPECT_THAT(program_->readAllStandardError().toStdString(), HasSubstr("display"));
  EXPECT_FALSE(std::filesystem::exists(path_));
}

TEST_F(RecordingProgramTest, WithTheProgramThatStartedItItEndsProperly) {
  // Stays beside it, and is gone the next moment.
  const auto process = Testing::programPath("nimbrel-screencapture");
  startAs(QStringLiteral("sh"), {QStringLiteral("-c"), QStringLiteral("\"$0\" \"$@\" & wait"), process,
                                 QStringLiteral("-v"), QStringLiteral("-m")});
  ASSERT_TRUE(waitUntil([] { return hasControl(); }));
  program_->kill();
  EXPECT_EQ(exitStatus(), -1);
  EXPECT_TRUE(waitUntil([] { return !hasControl(); }));
  const auto isInFragments = [this] { return Testing::contentOf(path_).find("moof") != std::string::npos; };
  EXPECT_TRUE(waitUntil([&] { return duration() > 0 && !isInFragments(); })) << "it is not finished";
}

TEST_F(RecordingProgramTest, CancelledDuringTheChoiceThereIsNoFile) {
  start({QStringLiteral("-v"), QStringLiteral("-i"), QStringLiteral("-Jvideo")});
  EXPECT_TRUE(waitUntil([this] { return isDimmed(); }));
  xdotool({QStringLiteral("key"), QStringLiteral("Escape")});
  EXPECT_EQ(exitStatus(), Done);
  EXPECT_THAT(names(), IsEmpty());
}

TEST_F(RecordingProgramTest, InterruptedDuringTheChoiceThereIsNoFile) {
  start({QStringLiteral("-v"), QStringLiteral("-i"), QStringLiteral("-Jvideo")});
  EXPECT_TRUE(waitUntil([this] { return isDimmed(); }));
  signal(SIGINT);
  EXPECT_EQ(exitStatus(), Done);
  EXPECT_THAT(names(), IsEmpty());
}

TEST_F(RecordingProgramTest, WhatStandsAtThePathIsLeftAlone) {
  folder_.write("out/Recording.mov", "somebody's");
  start({QStringLiteral("-v"), QStringLiteral("-m")});
  EXPECT_EQ(exitStatus(), Failed);
  EXPECT_EQ(Testing::contentOf(path_), "somebody's");
}

TEST_F(RecordingProgramTest, KilledItLeavesAMovie) {
  startWithMainScreen();
  EXPECT_TRUE(waitUntil([this] { return duration() > 0; }));
  program_->kill();
  EXPECT_EQ(exitStatus(), -1);
  EXPECT_TRUE(shows(0, Qt::red));
}

TEST_F(RecordingProgramTest, ADisplayThatGoesAwayEndsIt) {
  startWithMainScreen();
  Testing::runEventLoopFor(300ms);
  session_.kill();
  EXPECT_EQ(exitStatus(), Done);
  EXPECT_GT(duration(), 0.2);
  EXPECT_TRUE(shows(0, Qt::red));
}

TEST_F(RecordingProgramTest, WhatIsHeardIsInTheMovie) {
  Testing::SoundServer server;
  server.playTone();
  startWithMainScreen();
  Testing::runEventLoopFor(1s);
  signal(SIGINT);
  EXPECT_EQ(exitStatus(), Done);
  double loud = 0;
  const auto listen = [&](const MediaFile::SoundBuffer& buffer) {
    const auto count = std::ranges::count_if(buffer.samples, [](auto sample) { return std::abs(sample) > 1000; });
    loud += static_cast<double>(count) / 2 / 48000;
  };
  EXPECT_EQ(MediaFile::forEachSoundBuffer(path_, listen), std::nullopt);
  EXPECT_GT(loud, 0.5);
}

}  // namespace

}  // namespace Nimbrel::Screencapture
