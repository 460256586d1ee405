// The programs as a user has them in a session: a display with a window manager, a session bus with a tray and a screen
// reader, which is how the test finds and presses what they show.

#include "App/AccessibilityTree.h"
#include "App/MenuBarCompanion.h"
#include "Linux/NotifierWatcherDouble.h"
#include "Support/DesktopSession.h"
#include "Support/ProgramRun.h"
#include "Support/StoreHome.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QImageReader>
#include <QProcess>
#include <QUuid>

#include <signal.h>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Nimbrel {
namespace {

using Testing::AccessiblePart;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Testing::waitUntil;

/// What a hand does or an eye sees, in words of xdotool; nothing where it came to nothing.
QByteArray xdotool(const QStringList& words) {
  QProcess tool;
  tool.start(QStringLiteral("xdotool"), words);
  const bool isDone = waitUntil([&] { return tool.state() == QProcess::NotRunning; }) && tool.exitCode() == 0;
  return isDone ? tool.readAllStandardOutput().trimmed() : QByteArray();
}

void press(const char* keys) { xdotool({QStringLiteral("key"), QString::fromLatin1(keys)}); }

/// Whose window is in front.
qint64 processInFront() {
  return xdotool({QStringLiteral("getactivewindow"), QStringLiteral("getwindowpid")}).toLongLong();
}

bool isQuickFindInFront() {
  return xdotool({QStringLiteral("getactivewindow"), QStringLiteral("getwindowname")}).startsWith("Quick Find");
}

/// The processes that were started, by whomever, for the user of that home.
std::vector<pid_t> processesOf(const std::string& home) {
  const auto mark = "HOME=" + home + '\0';
  std::vector<pid_t> found;
  for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
    const auto name = entry.path().filename().string();
    pid_t process = 0;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), process);
    if (error != std::errc() || end != name.data() + name.size()) continue;
    std::ifstream file(entry.path() / "environ");
    const std::string environment{std::istreambuf_iterator<char>(file), {}};
    if (environment.starts_with(mark) || environment.find('\0' + mark) != std::string::npos) found.push_back(process);
  }
  return found;
}

class SessionTest : public ::testing::Test {
 protected:
  SessionTest() : name_(QUuid::createUuid().toString()) {
    session_ = std::make_unique<QDBusConnection>(
        QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), name_));
    observer_->settings().quickFindHotkey.set(true);
  }
  ~SessionTest() override {
    // Only those that a test which has failed did not come to end.
    for (const auto process : processesOf(home_.folder().path())) ::kill(process, SIGKILL);
    session_.reset();
    QDBusConnection::disconnectFromBus(name_);
  }

  [[nodiscard]] std::unique_ptr<QProcess> startWindow() const {
    auto process = std::make_unique<QProcess>();
    auto environment = Testing::environmentOf(home_.folder().path());
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    environment.insert(QStringLiteral("QT_LINUX_ACCESSIBILITY_ALWAYS_ON"), QStringLiteral("1"));
    process->setProcessEnvironment(environment);
    process->start(Testing::programPath("nimbrel"), QStringList());
    EXPECT_TRUE(process->waitForStarted());
    return process;
  }
  [[nodiscard]] static bool comesToFront(const QProcess& window) {
    return waitUntil([&] { return processInFront() == window.processId(); });
  }
  [[nodiscard]] bool runs(qint64 process) const {
    const auto all = processesOf(home_.folder().path());
    return std::ranges::find(all, process) != all.end();
  }
  /// 0 while there is none.
  [[nodiscard]] qint64 companion() const {
    const auto name = QString::fromStdString(MenuBarCompanion::bundleIdentifier());
    return session_->interface()->servicePid(name).value();
  }
  [[nodiscard]] bool hasTrayIcon() const { return !tray_.items().isEmpty(); }
  void clickTrayIcon() {
    const auto item = tray_.items().constFirst();
    EXPECT_EQ(tray_.call(item, QStringLiteral("Activate"), {640, 2}).type(), QDBusMessage::ReplyMessage);
  }

  [[nodiscard]] std::optional<AccessiblePart> shownButton(const std::string& name) const {
    const auto parts = screenReader_.parts();
    const auto found = std::ranges::find_if(parts, [&](const AccessiblePart& part) {
      return part.role == "push button" && part.name == name && part.isShowing;
    });
    return found == parts.end() ? std::nullopt : std::optional(*found);
  }
  [[nodiscard]] bool isPanelOpen() const { return shownButton("Quit Nimbrel Menu Bar").has_value(); }
  void openPanel() {
    clickTrayIcon();
    ASSERT_TRUE(waitUntil([this] { return isPanelOpen(); }));
  }
  void pressButton(const std::string& name) const {
    std::optional<AccessiblePart> button;
    ASSERT_TRUE(waitUntil([&] { return (button = shownButton(name)).has_value(); })) << name;
    static_cast<void>(screenReader_.act(*button));
  }
  void takeScreenFromPanel() {
    openPanel();
    pressButton("Screen");
    ASSERT_TRUE(waitUntil([this] { return observer_->shots().size() == 1; }));
    const auto& shot = *observer_->shots().front();
    EXPECT_EQ(QImageReader(QString::fromStdString(shot.path)).size(), QSize(1280, 800));
    EXPECT_FALSE(isPanelOpen());
  }
  /// Presses the combination until quick find is in front: a companion takes a moment to hear of its setting.
  [[nodiscard]] static bool comesToQuickFind() {
    return waitUntil([] {
      press("ctrl+shift+space");
      return waitUntil(&isQuickFindInFront, std::chrono::seconds(3));
    });
  }
  void useQuickFind() const {
    ASSERT_TRUE(comesToQuickFind());
    EXPECT_EQ(processInFront(), companion());
    press("Escape");
    EXPECT_TRUE(waitUntil([] { return !isQuickFindInFront(); }));
  }
  /// As the user does it.
  static void quit(QProcess& window) {
    ASSERT_TRUE(comesToFront(window));
    press("ctrl+q");
    ASSERT_TRUE(waitUntil([&] { return window.state() == QProcess::NotRunning; }));
    EXPECT_EQ(window.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(window.exitCode(), 0);
  }
  void startAgain(const QProcess& window) const {
    const Testing::DesktopClient other({Testing::programPath("TestWindow").toStdString(), "WM_CLASS", "other/Other"});
    Testing::bringToFront("Other");
    const auto again = startWindow();
    EXPECT_TRUE(waitUntil([&] { return again->state() == QProcess::NotRunning; }));
    EXPECT_EQ(again->exitCode(), 0);
    EXPECT_TRUE(comesToFront(window));
  }
  [[nodiscard]] std::vector<std::string> socketsLeft() const {
    std::vector<std::string> sockets;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(home_.folder().path())) {
      if (entry.is_socket()) sockets.push_back(entry.path().string());
    }
    return sockets;
  }

  Testing::DesktopSession display_;
  Testing::AccessibilityBus screenReader_;  ///< with the session bus
  Testing::StoreHome home_;
  Testing::NotifierWatcherDouble tray_;
  QString name_;
  std::unique_ptr<QDBusConnection> session_;
  std::unique_ptr<Store> observer_ = home_.open(ProcessRole::mainApplication);
};

TEST_F(SessionTest, GoesFromTheFirstStartThroughTheCompanionToTheLastEnd) {
  const auto first = startWindow();
  ASSERT_TRUE(comesToFront(*first));
  ASSERT_TRUE(waitUntil([this] { return hasTrayIcon(); })) << "the window starts the companion";
  const auto companionAtFirst = companion();
  ASSERT_NE(companionAtFirst, 0);
  EXPECT_NE(companionAtFirst, first->processId());
  takeScreenFromPanel();
  useQuickFind();

  quit(*first);
  EXPECT_EQ(companion(), companionAtFirst) << "it outlives the window";
  openPanel();
  pressButton("Open Nimbrel");
  ASSERT_TRUE(waitUntil([&] { return processInFront() != 0 && processInFront() != companionAtFirst; }));
  const auto opened = processInFront();
  press("ctrl+q");
  EXPECT_TRUE(waitUntil([&] { return !runs(opened); }));

  const auto second = startWindow();
  ASSERT_TRUE(comesToFront(*second));
  startAgain(*second);
  EXPECT_EQ(companion(), companionAtFirst) << "there is only ever one";
  EXPECT_THAT(tray_.items(), ElementsAre(tray_.items().constFirst()));

  quit(*second);
  openPanel();
  pressButton("Quit Nimbrel Menu Bar");
  EXPECT_TRUE(waitUntil([this] { return processesOf(home_.folder().path()).empty(); }));
  EXPECT_FALSE(hasTrayIcon());
  EXPECT_THAT(socketsLeft(), IsEmpty());
}

}  // namespace
}  // namespace Nimbrel
