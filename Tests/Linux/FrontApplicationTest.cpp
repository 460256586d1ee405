#include "Linux/Factory.h"
#include "Linux/X11/WindowFacts.h"
#include "Linux/X11/X11FrontApplication.h"

#include "Support/DesktopSession.h"
#include "Support/EnvironmentVariable.h"
#include "Support/ProgramRun.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <QProcess>

#include <unistd.h>

#include <ctime>
#include <filesystem>

namespace Nimbrel {

namespace {

using Testing::bringToFront;
using ::testing::Contains;
using Testing::DesktopClient;
using Testing::DesktopSession;
using ::testing::ElementsAre;
using Testing::EnvironmentVariable;
using Testing::waitUntil;

const std::string ownIdentifier = "org.example.own";

std::string testWindow() { return Testing::programPath("TestWindow").toStdString(); }

class FrontApplicationTest : public ::testing::Test {
 protected:
  FrontApplicationTest() {
    // Entries whose program is not installed do not count.
    install("org.example.Editor", "Name=Editor\nName[xx]=Texter\nExec=true\nStartupWMClass=Edit\n");
  }
  ~FrontApplicationTest() override {
    std::filesystem::remove_all(qgetenv("XDG_DATA_HOME").toStdString() + "/applications");
  }

  static void install(const std::string& id, const std::string& lines) {
    Testing::installDesktopEntry(qgetenv("XDG_DATA_HOME").toStdString(), id, lines);
  }
  [[nodiscard]] static std::unique_ptr<DesktopClient> window(std::vector<std::string> properties) {
    properties.insert(properties.begin(), testWindow());
    return std::make_unique<DesktopClient>(properties);
  }
  [[nodiscard]] bool isInFront(const Application& application) const {
    return waitUntil([&] { return front_->current() == application; });
  }
  /// The one in front, once there is one.
  [[nodiscard]] Application next() const {
    EXPECT_TRUE(waitUntil([&] { return front_->current().has_value(); }));
    return front_->current().value_or(Application{});
  }
  void observe() {
    front_->observe([this](const Application& application) { seen_.push_back(application); });
  }
  [[nodiscard]] bool isSeen(const Application& application) {
    return waitUntil([&] { return !seen_.empty() && seen_.back() == application; });
  }

  DesktopSession session_;
  std::shared_ptr<XcbConnection> connection_ = std::make_shared<XcbConnection>();
  std::unique_ptr<FrontApplication> front_ = makeX11FrontApplication(connection_, ownIdentifier);
  std::vector<Application> seen_;
};

TEST_F(FrontApplicationTest, WithoutAWindowThereIsNone) { EXPECT_EQ(front_->current(), std::nullopt); }

TEST_F(FrontApplicationTest, IsKnownByTheClassThatItsEntryNames) {
  const auto client = window({"WM_CLASS", "edit/Edit", "_NET_WM_NAME", "Letter"});
  EXPECT_TRUE(isInFront({"Editor", "org.example.Editor"}));
}

TEST_F(FrontApplicationTest, IsNamedInTheUsersLanguage) {
  const EnvironmentVariable language("LANGUAGE", "xx");
  const auto client = window({"WM_CLASS", "edit/Edit"});
  EXPECT_TRUE(isInFront({"Texter", "org.example.Editor"}));
}

TEST_F(FrontApplicationTest, IsKnownByTheIdOfItsEntryOrItsLastPart) {
  install("org.example.Painter", "Name=Paint Box\nExec=true\n");
  install("calculator", "Name=Numbers\nExec=true\n");
  auto client = window({"WM_CLASS", "p/painter"});
  EXPECT_TRUE(isInFront({"Paint Box", "org.example.Painter"}));
  client = window({"WM_CLASS", "Calculator/other"});
  EXPECT_TRUE(isInFront({"Numbers", "calculator"}));
}

TEST_F(FrontApplicationTest, ItsOwnWordComesFirst) {
  install("org.example.Player", "Name=Player\nExec=true\n");
  auto client = window({"WM_CLASS", "edit/Edit", "_GTK_APPLICATION_ID", "org.example.Player"});
  EXPECT_TRUE(isInFront({"Player", "org.example.Player"}));
  client.reset();
  client = window(
      {"WM_CLASS", "play/Play", "_KDE_NET_WM_DESKTOP_FILE", "/usr/share/applications/org.example.Editor.desktop"});
  EXPECT_TRUE(isInFront({"Editor", "org.example.Editor"}));
}

TEST_F(FrontApplicationTest, IsKnownByTheOnlyEntryThatStartsItsFile) {
  install("org.example.Windows", "Name=Windows\nExec=" + testWindow() + " --new\n");
  auto client = window({"WM_CLASS", "some/Thing", "_NET_WM_PID", "own"});
  EXPECT_TRUE(isInFront({"Windows", "org.example.Windows"}));
  client.reset();
  install("org.example.Panes", "Name=Panes\nExec=" + testWindow() + "\n");
  client = window({"WM_CLASS", "any/Other", "_NET_WM_PID", "own"});
  EXPECT_TRUE(isInFront({"Other", ""})) << "either could be meant";
}

TEST_F(FrontApplicationTest, AnotherMachinesProcessIsNotTakenForOneOfThis) {
  install("org.example.Windows", "Name=Windows\nExec=" + testWindow() + "\n");
  const auto client = window({"WM_CLASS", "some/Thing", "_NET_WM_PID", "own", "WM_CLIENT_MACHINE", "elsewhere"});
  EXPECT_TRUE(isInFront({"Thing", ""}));
}

TEST_F(FrontApplicationTest, WithoutAnEntryItsClassOrItsTitleIsItsName) {
  auto client = window({"WM_CLASS", "tool/Tool", "_NET_WM_NAME", "Title"});
  EXPECT_TRUE(isInFront({"Tool", ""}));
  client.reset();
  client = window({"_NET_WM_NAME", "Über uns"});
  EXPECT_TRUE(isInFront({"Über uns", ""}));
  client.reset();
  client = window({"WM_NAME", "caf\xE9"});
  EXPECT_TRUE(isInFront({"café", ""}));
}

TEST_F(FrontApplicationTest, AnEntryThatIsInstalledLaterIsFound) {
  const auto client = window({"WM_CLASS", "later/Later"});
  ASSERT_TRUE(isInFront({"Later", ""}));
  install("org.example.Later", "Name=Sooner\nExec=true\n");
  EXPECT_TRUE(isInFront({"Sooner", "org.example.Later"}));
}

TEST_F(FrontApplicationTest, WindowsOfOurOwnProcessesAreToldUnderOurIdentifier) {
  const auto process = std::to_string(::getpid());
  auto client = window({"WM_CLASS", "edit/Edit", "_NET_WM_PID", process});
  EXPECT_EQ(next().bundleID, ownIdentifier);
  client.reset();
  ASSERT_TRUE(waitUntil([&] { return !front_->current(); }));
  client = window({"_NET_WM_PID", process});
  EXPECT_EQ(next(), (Application{ownIdentifier, ownIdentifier}));
}

TEST_F(FrontApplicationTest, EachThatComesToTheFrontIsTold) {
  observe();
  const auto editor = window({"WM_CLASS", "edit/Edit"});
  EXPECT_TRUE(isSeen({"Editor", "org.example.Editor"}));
  const auto tool = window({"WM_CLASS", "tool/Tool"});
  EXPECT_TRUE(isSeen({"Tool", ""}));
  bringToFront("Edit");
  EXPECT_TRUE(isSeen({"Editor", "org.example.Editor"}));
  EXPECT_THAT(seen_, ElementsAre(Application{"Editor", "org.example.Editor"}, Application{"Tool", ""},
                                 Application{"Editor", "org.example.Editor"}));
}

TEST_F(FrontApplicationTest, WindowsOfOneApplicationAreOneApplication) {
  const auto first = window({"WM_CLASS", "edit/Edit", "_NET_WM_NAME", "one"});
  ASSERT_TRUE(isInFront({"Editor", "org.example.Editor"}));
  observe();
  EXPECT_TRUE(isSeen({"Editor", "org.example.Editor"})) << "it may have come since anybody asked";
  const auto second = window({"WM_CLASS", "edit/Second", "_GTK_APPLICATION_ID", "org.example.Editor"});
  bringToFront("Second");
  const auto tool = window({"WM_CLASS", "tool/Tool"});
  ASSERT_TRUE(isSeen({"Tool", ""}));
  EXPECT_THAT(seen_, ElementsAre(Application{"Editor", "org.example.Editor"}, Application{"Tool", ""}));
}

TEST_F(FrontApplicationTest, NothingIsToldOnceNobodyObserves) {
  observe();
  front_->observe({});
  const auto editor = window({"WM_CLASS", "edit/Edit"});
  ASSERT_TRUE(isInFront({"Editor", "org.example.Editor"}));
  Testing::runEventLoopFor(std::chrono::milliseconds(300));
  EXPECT_TRUE(seen_.empty());
}

TEST_F(FrontApplicationTest, AWindowThatIsGoneSaysNothing) {
  ASSERT_TRUE(connection_->isUp());
  auto client = window({"WM_CLASS", "edit/Edit"});
  ASSERT_TRUE(isInFront({"Editor", "org.example.Editor"}));
  const auto id = activeWindow(*connection_);
  ASSERT_TRUE(id);
  client.reset();
  EXPECT_TRUE(waitUntil([&] { return factsOf(*connection_, *id).className.empty(); }));
  EXPECT_EQ(front_->current(), std::nullopt);
  EXPECT_TRUE(connection_->isUp());
}

TEST_F(FrontApplicationTest, WindowsThatComeAndGoQuicklyDoNoHarm) {
  observe();
  for (int round = 0; round < 20; ++round) {
    const auto brief = window({"WM_CLASS", "brief/Brief"});
    Testing::runEventLoopFor(std::chrono::milliseconds(20));
  }
  const auto editor = window({"WM_CLASS", "edit/Edit"});
  EXPECT_TRUE(isSeen({"Editor", "org.example.Editor"}));
}

TEST_F(FrontApplicationTest, TheEndOfTheServerEndsTheNewsAndNothingElse) {
  observe();
  const auto editor = window({"WM_CLASS", "edit/Edit"});
  ASSERT_TRUE(isSeen({"Editor", "org.example.Editor"}));
  int losses = 0;
  QObject context;
  QObject::connect(connection_.get(), &XcbConnection::lost, &context, [&] { ++losses; });
  session_.kill();
  // At once, before the event loop can have heard of it.
  EXPECT_EQ(front_->current(), std::nullopt);
  EXPECT_TRUE(waitUntil([&] { return losses == 1; }));
  EXPECT_FALSE(connection_->isUp());
  const auto before = std::clock();
  Testing::runEventLoopFor(std::chrono::milliseconds(500));
  EXPECT_LT(std::clock() - before, CLOCKS_PER_SEC * 2 / 5) << "the event loop spins";
  EXPECT_EQ(losses, 1);
  front_->observe([](const Application&) {});
  EXPECT_EQ(front_->current(), std::nullopt);
}

TEST(FrontApplicationOfSession, WithoutAServerThereIsNone) {
  const EnvironmentVariable display("DISPLAY", ":4711");
  const auto services = makeServices(ownIdentifier);
  services.frontApplication->observe([](const Application&) {});
  EXPECT_EQ(services.frontApplication->current(), std::nullopt);
}

TEST(FrontApplicationOfSession, UnderWaylandTheXServerIsNotAsked) {
  const DesktopSession session;
  const DesktopClient client({testWindow(), "WM_CLASS", "tool/Tool"});
  const auto x11 = makeServices(ownIdentifier);
  ASSERT_TRUE(waitUntil([&] { return x11.frontApplication->current().has_value(); }));
  const EnvironmentVariable wayland("WAYLAND_DISPLAY", "wayland-0");
  EXPECT_EQ(makeServices(ownIdentifier).frontApplication->current(), std::nullopt);
}

}  // namespace

}  // namespace Nimbrel
