#include "Linux/Desktop/DesktopWorkspace.h"

#include "Linux/FileManagerDouble.h"
#include "Screencapture/PortalDouble.h"
#include "Support/EnvironmentVariable.h"
#include "Support/LogRecorder.h"
#include "Support/Pictures.h"
#include "Support/SessionBus.h"
#include "Support/TemporaryFolder.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusUnixFileDescriptor>
#include <QFile>
#include <QProcess>

#include <filesystem>
#include <optional>

namespace Nimbrel {

namespace {

using ::testing::Each;
using Testing::EnvironmentVariable;
using Testing::FileManagerDouble;
using ::testing::HasSubstr;
using Testing::SessionBus;
using Testing::TemporaryFolder;
using Testing::waitUntil;

/// A desktop with one application, which notes down what it was started with. Installed once, since the library may
/// take a while to hear of a change.
class Desktop {
 public:
  Desktop() {
    const auto program = notes_.write(
        "program", "#!/bin/sh\nprintf '%s' \"$1\" > '" + part() + "' && mv '" + part() + "' '" + note() + "'\n");
    std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    const auto dataHome = qgetenv("XDG_DATA_HOME").toStdString();
    Testing::installDesktopEntry(dataHome, "org.example.Viewer", "Name=Viewer\nExec=" + program + " %f\n");
    Testing::installDesktopEntry(dataHome, "org.example.Browser", "Name=Browser\nExec=" + program + " %u\n");
    const std::filesystem::path configuration(qgetenv("XDG_CONFIG_HOME").toStdString());
    std::filesystem::create_directories(configuration);
    std::filesystem::copy_file(notes_.write("mimeapps.list",
                                            "[Default Applications]\n"
                                            "image/png=org.example.Viewer.desktop\n"
                                            "inode/directory=org.example.Viewer.desktop\n"
                                            "x-scheme-handler/https=org.example.Browser.desktop\n"
                                            "x-scheme-handler/mailto=org.example.Browser.desktop\n"),
                               configuration / "mimeapps.list");
  }
  ~Desktop() {
    const std::filesystem::path applications(qgetenv("XDG_DATA_HOME").toStdString() + "/applications");
    std::filesystem::remove(applications / "org.example.Viewer.desktop");
    std::filesystem::remove(applications / "org.example.Browser.desktop");
    std::filesystem::remove(qgetenv("XDG_CONFIG_HOME").toStdString() + "/mimeapps.list");
  }

  [[nodiscard]] std::string note() const { return notes_.path("note"); }

 private:
  [[nodiscard]] std::string part() const { return notes_.path("part"); }

  TemporaryFolder notes_;
};

class DesktopWorkspaceTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { desktop_.emplace(); }
  static void TearDownTestSuite() { desktop_.reset(); }

  DesktopWorkspaceTest() { std::filesystem::remove(desktop_->note()); }

  /// What the application was started with, once it was.
  [[nodiscard]] static std::string opened() {
    if (!waitUntil([] { return std::filesystem::exists(desktop_->note()); })) return "nothing";
    return Testing::contentOf(desktop_->note());
  }
  /// A folder in which programs are found: our own script among them, if named so, and what that needs.
  [[nodiscard]] std::string searchPath(const std::vector<std::string>& scripts) const {
    folder_.makeFolder("programs");
    std::filesystem::create_symlink("/bin/mv", folder_.path("programs/mv"));
    for (const auto& name : scripts) {
      const auto script = folder_.write("programs/" + name, "#!/bin/sh\nprintf '%s ' \"$0\" \"$@\" > '" +
                                                                desktop_->note() + ".part' && mv '" + desktop_->note() +
                                                                ".part' '" + desktop_->note() + "'\n");
      std::filesystem::permissions(script, std::filesystem::perms::owner_all);
    }
    return folder_.path("programs");
  }
  [[nodiscard]] std::string addPicture(const std::string& name) const {
    Testing::writePicture(folder_.path("picture.png"));
    std::filesystem::rename(folder_.path("picture.png"), folder_.path(name));
    return folder_.path(name);
  }

  static inline std::optional<Desktop> desktop_;
  TemporaryFolder folder_;
  std::unique_ptr<Workspace> workspace_ = makeDesktopWorkspace();
};

TEST_F(DesktopWorkspaceTest, AFileIsOpenedWithTheApplicationForItsKind) {
  const auto path = addPicture("Screenshot 1.png");
  workspace_->openFile(path);
  EXPECT_EQ(opened(), path);
}

TEST_F(DesktopWorkspaceTest, AFileIsOpenedWhateverBytesItsNameHolds) {
  const auto path = addPicture("caf\xE9 %41 #1?&\n'.png");
  workspace_->openFile(path);
  EXPECT_EQ(opened(), path);
}

TEST_F(DesktopWorkspaceTest, WhatWasAskedForLastStillHappens) {
  const auto path = addPicture("Screenshot 1.png");
  workspace_->openFile(path);
  workspace_.reset();
  EXPECT_EQ(opened(), path);
}

TEST_F(DesktopWorkspaceTest, AnAddressIsOpenedWithTheApplicationForItsScheme) {
  workspace_->openURL("https://example.invalid/?text=a%26b&op=c");
  EXPECT_EQ(opened(), "https://example.invalid/?text=a%26b&op=c");
}

TEST_F(DesktopWorkspaceTest, WhatNothingOpensIsAMatterForTheLog) {
  const Testing::LogRecorder log;
  workspace_->openURL("x-nimbrel-unknown:thing");
  workspace_->openFile(folder_.path("gone.png"));
  workspace_.reset();
  EXPECT_THAT(log.lines(), Each(HasSubstr("Nothing opens what was to be opened: ")));
  EXPECT_EQ(log.lines().size(), 2U);
  EXPECT_FALSE(std::filesystem::exists(desktop_->note()));
}

TEST_F(DesktopWorkspaceTest, TheApplicationThatTheUserHasChosenIsTheFirstThatOpensAFile) {
  const auto openers = workspace_->openersOf(addPicture("Screenshot 1.png"));
  ASSERT_FALSE(openers.empty());
  EXPECT_EQ(openers.front(), (Workspace::Taker{.id = "org.example.Viewer.desktop", .name = "Viewer", .icon = {}}));
  EXPECT_THAT(openers, ::testing::Contains(openers.front()).Times(1));
  EXPECT_TRUE(workspace_->openersOf(folder_.path("gone.png")).empty());
}

TEST_F(DesktopWorkspaceTest, AFileIsOpenedWithAnotherApplication) {
  const auto path = addPicture("Screenshot 1.png");
  workspace_->openFileWith(path, "org.example.Browser.desktop");
  EXPECT_EQ(opened(), path) << "a local file goes by its path, also to who would take an address";
}

TEST_F(DesktopWorkspaceTest, AnApplicationThatIsGoneIsAMatterForTheLog) {
  const Testing::LogRecorder log;
  workspace_->openFileWith(addPicture("Screenshot 1.png"), "org.example.Gone.desktop");
  workspace_.reset();
  EXPECT_THAT(log.lines(), ::testing::ElementsAre("There is no application org.example.Gone.desktop any more"));
}

TEST_F(DesktopWorkspaceTest, AnEMailIsBegunThroughThePortal) {
  const SessionBus bus;
  Testing::PortalDouble portal;
  portal.offer(QStringLiteral("Email"), {{QStringLiteral("version"), 4U}});
  std::string attached;
  portal.behave(QStringLiteral("ComposeEmail"), [&](const QDBusMessage& call) {
    const auto options = qdbus_cast<QVariantMap>(call.arguments().at(1));
    const auto files = qdbus_cast<QList<QDBusUnixFileDescriptor>>(options.value(QStringLiteral("attachment_fds")));
    ASSERT_EQ(files.size(), 1);
    attached =
        std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(files.constFirst().fileDescriptor())).string();
    portal.reply(call, QVariant::fromValue(QDBusObjectPath("/org/freedesktop/portal/desktop/request/1")));
  });
  const auto path = addPicture("Screenshot 1.png");
  workspace_->composeMail(path);
  EXPECT_TRUE(waitUntil([&] { return !attached.empty(); }));
  EXPECT_EQ(attached, path);
}

TEST_F(DesktopWorkspaceTest, WithoutAPortalTheDesktopsScriptBeginsTheEMail) {
  const EnvironmentVariable programs("PATH", searchPath({"xdg-email"}));
  const auto path = addPicture("Screenshot 1.png");
  workspace_->composeMail(path);
  EXPECT_THAT(opened(), ::testing::EndsWith("/xdg-email --attach " + path + " "));
}

TEST_F(DesktopWorkspaceTest, WithoutTheScriptTheAddressNamesTheFile) {
  const EnvironmentVariable programs("PATH", searchPath({}));
  const auto path = addPicture("Screenshot 1.png");
  workspace_->composeMail(path);
  const auto address = opened();
  EXPECT_THAT(address, ::testing::StartsWith("mailto:?attach=file"));
  EXPECT_THAT(address, ::testing::EndsWith("Screenshot%25201.png"));
}

TEST_F(DesktopWorkspaceTest, WhatSendsFilesIsFoundInTheSearchPath) {
  const EnvironmentVariable programs("PATH", searchPath({"blueman-sendto", "kdeconnect-handler"}));
  std::vector<std::string> ids;
  for (const auto& sender : workspace_->senders()) ids.push_back(sender.id);
  EXPECT_THAT(ids, ::testing::ElementsAre("blueman-sendto", "kdeconnect-handler"));
  const auto path = addPicture("Screenshot 1.png");
  workspace_->sendFile(path, "blueman-sendto");
  EXPECT_THAT(opened(), ::testing::EndsWith("/blueman-sendto -- " + path + " "));
}

TEST_F(DesktopWorkspaceTest, ANameThatIsNoUtf8IsMailedAndSentAsItIs) {
  const EnvironmentVariable programs("PATH", searchPath({"xdg-email", "blueman-sendto"}));
  const auto path = addPicture("Screenshot \xe9\xff.png");
  workspace_->composeMail(path);
  EXPECT_THAT(opened(), ::testing::EndsWith("/xdg-email --attach " + path + " "));
  workspace_->sendFile(path, "blueman-sendto");
  EXPECT_TRUE(waitUntil([&] { return opened().ends_with("/blueman-sendto -- " + path + " "); }));
}

TEST_F(DesktopWorkspaceTest, TwoThatSendTheSameWayAreOne) {
  const EnvironmentVariable programs("PATH", searchPath({"bluetooth-sendto", "blueman-sendto"}));
  EXPECT_EQ(workspace_->senders().size(), 1U);
}

TEST_F(DesktopWorkspaceTest, TheFileManagerShowsAFile) {
  const SessionBus bus;
  const FileManagerDouble fileManager;
  workspace_->reveal(folder_.path("caf\xE9 1.png"));
  ASSERT_TRUE(waitUntil([&] { return !fileManager.shown.empty(); }));
  EXPECT_EQ(fileManager.shown.front(), QStringList(QString::fromStdString("file://" + folder_.path("caf%E9%201.png"))));
  workspace_.reset();
  EXPECT_FALSE(std::filesystem::exists(desktop_->note()));
}

TEST_F(DesktopWorkspaceTest, WhereTheFileManagerRefusesTheFolderIsOpened) {
  const SessionBus bus;
  FileManagerDouble fileManager;
  fileManager.refuses = true;
  workspace_->reveal(addPicture("Screenshot 1.png"));
  EXPECT_EQ(opened(), folder_.path());
  EXPECT_EQ(fileManager.shown.size(), 1U);
}

TEST_F(DesktopWorkspaceTest, WithoutAFileManagerOnTheBusTheFolderIsOpened) {
  const SessionBus bus;
  workspace_->reveal(addPicture("Screenshot 1.png"));
  EXPECT_EQ(opened(), folder_.path());
}

TEST_F(DesktopWorkspaceTest, WithoutABusTheFolderIsOpened) {
  workspace_->reveal(addPicture("Screenshot 1.png"));
  EXPECT_EQ(opened(), folder_.path());
}

TEST_F(DesktopWorkspaceTest, InASandboxThePortalOpensAFile) {
  const SessionBus bus;
  Testing::PortalDouble portal;
  portal.offer(QStringLiteral("OpenURI"), {{QStringLiteral("version"), 3U}});
  std::string opened;
  portal.behave(QStringLiteral("OpenFile"), [&](const QDBusMessage& call) {
    const auto file = call.arguments().at(1).value<QDBusUnixFileDescriptor>();
    opened = std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(file.fileDescriptor()));
    portal.reply(call, QVariant::fromValue(QDBusObjectPath("/org/freedesktop/portal/desktop/request/1")));
  });
  // As in a sandbox, where no applications are seen; the library looks once, hence a process of its own.
  const EnvironmentVariable sandbox("GTK_USE_PORTAL", "1");
  const EnvironmentVariable data("XDG_DATA_HOME", folder_.path("data"));
  const EnvironmentVariable shared("XDG_DATA_DIRS", folder_.path("shared"));
  const EnvironmentVariable configuration("XDG_CONFIG_HOME", folder_.path("configuration"));
  const auto path = addPicture("Screenshot 1.png");
  QProcess program;
  program.start(QStringLiteral(NIMBREL_HELPER_PROGRAM), {QStringLiteral("open"), QFile::decodeName(path.c_str())});
  EXPECT_TRUE(waitUntil([&] { return program.state() == QProcess::NotRunning; }));
  EXPECT_EQ(opened, path);
}

}  // namespace

}  // namespace Nimbrel
