#include "Support/Pictures.h"
#include "Support/ProgramRun.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <QProcess>
#include <QSettings>

#include <filesystem>

namespace Nimbrel {
namespace {

using ::testing::Contains;
using Testing::contentOf;
using ::testing::HasSubstr;
using ::testing::Not;
using Testing::runProgram;
using ::testing::StartsWith;
using ::testing::UnorderedElementsAreArray;

const std::string identifier = "com.halderquist.nimbrel";

/// All that is installed, under a root of the test's own.
class InstallTest : public ::testing::Test {
 protected:
  InstallTest() {
    QProcess cmake;
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DESTDIR"), QString::fromStdString(root_.path()));
    cmake.setProcessEnvironment(environment);
    cmake.start(QStringLiteral(NIMBREL_CMAKE), {QStringLiteral("--install"), QStringLiteral(NIMBREL_BUILD)});
    EXPECT_TRUE(cmake.waitForFinished(-1));
    EXPECT_EQ(cmake.exitCode(), 0) << cmake.readAllStandardError().toStdString();
  }

  /// Where something below the prefix lies.
  [[nodiscard]] std::string installed(const std::string& name) const {
    return root_.path() + NIMBREL_PREFIX "/" + name;
  }
  /// All files and links, below the root.
  [[nodiscard]] std::vector<std::string> files() const {
    std::vector<std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root_.path())) {
      if (!entry.is_directory() || entry.is_symlink()) files.push_back(entry.path().lexically_relative(root_.path()));
    }
    return files;
  }

  Testing::TemporaryFolder root_;
  Testing::TemporaryFolder home_;
};

TEST_F(InstallTest, TheProgramsWorkFromWhereTheyAreInstalled) {
  Testing::writePicture(home_.path("Desktop/Screenshot 1.png"), 400, 300, 1);
  const auto version = runProgram(installed("bin/nimbrelctl"), {QStringLiteral("--version")}, home_.path());
  EXPECT_THAT(version.output, StartsWith("nimbrelctl "));
  const auto pass = runProgram(installed("bin/nimbrel"), {QStringLiteral("--scan")}, home_.path());
  EXPECT_EQ(pass.status, 0) << pass.errors;
  EXPECT_THAT(pass.output, StartsWith("1 shots indexed"));
  const auto read = runProgram(installed("bin/nimbrelctl"),
                               {QStringLiteral("read"), QString::fromStdString(home_.path("Desktop/Screenshot 1.png"))},
                               home_.path());
  EXPECT_EQ(read.status, 0) << "the reader is found beside the program: " << read.errors;
}

TEST_F(InstallTest, EverythingHasItsPlace) {
  std::vector<std::string> expected{"etc/xdg/autostart/" + identifier + ".menubar.desktop", "usr/lib/pam.d/nimbrel"};
  for (const auto& name : std::vector<std::string>{
           "bin/nimbrel",
           "bin/nimbrel-menubar",
           "bin/nimbrelctl",
           "libexec/nimbrel/nimbrel",
           "libexec/nimbrel/nimbrel-info.json",
           "libexec/nimbrel/nimbrel-menubar",
           "libexec/nimbrel/nimbrel-reader",
           "libexec/nimbrel/nimbrel-screencapture",
           "libexec/nimbrel/nimbrel-screenrecord",
           "libexec/nimbrel/nimbrelctl",
           "share/applications/" + identifier + ".desktop",
           "share/bash-completion/completions/nimbrel",
           "share/bash-completion/completions/nimbrel-menubar",
           "share/bash-completion/completions/nimbrelctl",
           "share/dbus-1/services/" + identifier + ".menubar.service",
           "share/dbus-1/services/" + identifier + ".service",
           "share/icons/hicolor/scalable/apps/" + identifier + ".svg",
           "share/icons/hicolor/symbolic/apps/" + identifier + "-symbolic.svg",
           "share/man/man1/nimbrel-menubar.1",
           "share/man/man1/nimbrel.1",
           "share/man/man1/nimbrelctl.1",
           "share/metainfo/" + identifier + ".metainfo.xml",
           "share/nimbrel/autostart/" + identifier + ".menubar.desktop",
       }) {
    expected.push_back(std::string(NIMBREL_PREFIX "/" + name).substr(1));
  }
  EXPECT_THAT(files(), UnorderedElementsAreArray(expected));
}

TEST_F(InstallTest, EveryLinkLeadsToAFileOfOurs) {
  int links = 0;
  for (const auto& file : files()) {
    const std::filesystem::path path(root_.path(file));
    if (!std::filesystem::is_symlink(path)) continue;
    ++links;
    const auto target = std::filesystem::read_symlink(path);
    const auto found =
        target.is_absolute() ? std::filesystem::path(root_.path() + target.string()) : path.parent_path() / target;
    EXPECT_TRUE(std::filesystem::exists(found)) << file << " -> " << target;
  }
  EXPECT_GT(links, 4);
}

TEST_F(InstallTest, NothingOfTheSystemsSettingsIsAFile) {
  for (const auto& file : files()) {
    if (!file.starts_with("etc/")) continue;
    EXPECT_TRUE(std::filesystem::is_symlink(root_.path(file))) << file << " would outlive the package";
  }
  EXPECT_THAT(files(), Contains("etc/xdg/autostart/" + identifier + ".menubar.desktop"));
  EXPECT_THAT(files(), Contains("usr/lib/pam.d/nimbrel"));
}

TEST_F(InstallTest, TheBusStartsTheProgramsThatAreInstalled) {
  for (const auto& [name, program] :
       {std::pair(identifier, "nimbrel"), std::pair(identifier + ".menubar", "nimbrel-menubar")}) {
    const auto file = installed("share/dbus-1/services/" + name + ".service");
    const QSettings service(QString::fromStdString(file), QSettings::IniFormat);
    EXPECT_EQ(service.value(QStringLiteral("D-BUS Service/Name")).toString().toStdString(), name);
    const auto command = service.value(QStringLiteral("D-BUS Service/Exec")).toString().toStdString();
    EXPECT_EQ(command, std::string(NIMBREL_PREFIX "/bin/") + program);
    EXPECT_TRUE(std::filesystem::exists(root_.path() + command)) << command;
  }
}

TEST_F(InstallTest, TheDesktopFindsIconAndActionsUnderOneName) {
  const auto entry = contentOf(installed("share/applications/" + identifier + ".desktop"));
  EXPECT_THAT(entry, HasSubstr("\nIcon=" + identifier + "\n"));
  EXPECT_THAT(entry, HasSubstr("\nDBusActivatable=true\n"));
  for (const auto* action : {"selection", "window", "screen", "record", "find"}) {
    EXPECT_THAT(entry, HasSubstr("\n[Desktop Action " + std::string(action) + "]\n"));
    EXPECT_THAT(entry, HasSubstr("\nExec=gapplication action " + identifier + " " + action + "\n"));
  }
  EXPECT_TRUE(std::filesystem::exists(installed("share/icons/hicolor/scalable/apps/" + identifier + ".svg")));
  EXPECT_TRUE(std::filesystem::exists(installed("share/icons/hicolor/symbolic/apps/" + identifier + "-symbolic.svg")));
}

TEST_F(InstallTest, ASoftwareCentreUnderstandsTheWhole) {
  QProcess validator;
  validator.start(QStringLiteral("appstreamcli"), {QStringLiteral("validate-tree"), QStringLiteral("--no-net"),
                                                   QString::fromStdString(root_.path() + NIMBREL_PREFIX)});
  ASSERT_TRUE(validator.waitForFinished(-1));
  EXPECT_EQ(validator.exitCode(), 0) << validator.readAllStandardOutput().toStdString();
}

TEST_F(InstallTest, TheCompanionAtLoginIsShownInNoMenu) {
  const auto entry = contentOf(installed("share/nimbrel/autostart/" + identifier + ".menubar.desktop"));
  EXPECT_THAT(entry, HasSubstr("\nExec=nimbrel-menubar\n"));
  EXPECT_THAT(entry, HasSubstr("\nNoDisplay=true\n"));
  EXPECT_THAT(entry, Not(HasSubstr("\nHidden=")));
}

}  // namespace
}  // namespace Nimbrel
