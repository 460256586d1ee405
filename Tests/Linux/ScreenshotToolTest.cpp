#include "Linux/Desktop/LinuxScreenshotTool.h"

#include "Support/EnvironmentVariable.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <QProcess>
#include <QProcessEnvironment>

#include <sys/stat.h>

#include <optional>
#include <string>

namespace Nimbrel {

namespace {

using Testing::EnvironmentVariable;

class ScreenshotToolTest : public ::testing::Test {
 protected:
  [[nodiscard]] static std::optional<std::string> folderOn(const std::string& desktop) {
    const EnvironmentVariable current("XDG_CURRENT_DESKTOP", desktop);
    return makeLinuxScreenshotTool()->configuredFolder();
  }

  [[nodiscard]] std::optional<std::string> folderOnKde(const std::string& settings) const {
    configurations_.write("spectaclerc", settings);
    return folderOn("KDE");
  }

  [[nodiscard]] std::optional<std::string> folderOnXfce(const std::string& settings) const {
    configurations_.write("xfce4/xfce4-screenshooter", settings);
    return folderOn("XFCE");
  }

  Testing::TemporaryFolder configurations_;
  EnvironmentVariable home_{"HOME", "/home/some one"};
  EnvironmentVariable configurationHome_{"XDG_CONFIG_HOME", configurations_.path()};
};

/// The settings of GNOME are read by a fresh process, since GIO looks for its schemas once.
class GnomeScreenshotTool : public ScreenshotToolTest {
 protected:
  void installSchema(const std::string& key) const {
    configurations_.write("schemas/tool.gschema.xml",
                          "<schemalist><schema id='org.gnome.gnome-screenshot' path='/org/gnome/gnome-screenshot/'>" +
                              key + "</schema></schemalist>");
    const auto folder = QString::fromStdString(configurations_.path("schemas"));
    ASSERT_EQ(QProcess::execute(QStringLiteral("glib-compile-schemas"), {QStringLiteral("--strict"), folder}), 0);
  }

  void installUsualSchema() const {
    installSchema("<key name='auto-save-directory' type='s'><default>'file:///default'</default></key>");
  }

  void setValue(const std::string& value) const {
    configurations_.write("glib-2.0/settings/keyfile",
                          "[org/gnome/gnome-screenshot]\nauto-save-directory=" + value + "\n");
  }

  [[nodiscard]] std::string folderOnGnome(const std::string& desktop = "GNOME") const {
    auto environment = QProcessEnvironment::systemEnvironment();
    const auto folder = QString::fromStdString(configurations_.path());
    environment.insert(QStringLiteral("GSETTINGS_SCHEMA_DIR"), folder + QStringLiteral("/schemas"));
    environment.insert(QStringLiteral("GSETTINGS_BACKEND"), QStringLiteral("keyfile"));
    environment.insert(QStringLiteral("XDG_DATA_HOME"), folder);
    environment.insert(QStringLiteral("XDG_DATA_DIRS"), folder);
    environment.insert(QStringLiteral("XDG_CURRENT_DESKTOP"), QString::fromStdString(desktop));
    QProcess helper;
    helper.setProcessEnvironment(environment);
    helper.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    helper.start(QStringLiteral(NIMBREL_HELPER_PROGRAM), {QStringLiteral("screenshot-folder")});
    EXPECT_TRUE(helper.waitForFinished()) << helper.errorString().toStdString();
    EXPECT_EQ(helper.exitStatus(), QProcess::NormalExit);
    return helper.readAll().toStdString();
  }
};

}  // namespace

TEST_F(ScreenshotToolTest, ADesktopThatIsNotKnownHasNoFolder) {
  configurations_.write("spectaclerc", "[ImageSave]\nimageSaveLocation=/shots\n");
  EXPECT_EQ(folderOn(""), std::nullopt);
  EXPECT_EQ(folderOn("MATE"), std::nullopt);
  const EnvironmentVariable current("XDG_CURRENT_DESKTOP", std::nullopt);
  EXPECT_EQ(makeLinuxScreenshotTool()->configuredFolder(), std::nullopt);
}

TEST_F(ScreenshotToolTest, ADesktopIsFoundAnywhereInTheList) {
  configurations_.write("spectaclerc", "[ImageSave]\nimageSaveLocation=/shots\n");
  EXPECT_EQ(folderOn("some:KDE"), "/shots");
  EXPECT_EQ(folderOn("KDE:other"), "/shots");
}

TEST_F(ScreenshotToolTest, ToolsThatWereNeverSetHaveNoFolder) {
  for (const char* desktop : {"KDE", "XFCE", "LXQt"}) EXPECT_EQ(folderOn(desktop), std::nullopt) << desktop;
}

TEST_F(ScreenshotToolTest, KdeTellsAFileUriOrAPath) {
  EXPECT_EQ(folderOnKde("[ImageSave]\nimageSaveLocation=file:///home/u/My%20Shots/\n"), "/home/u/My Shots");
  EXPECT_EQ(folderOnKde("[ImageSave]\nimageSaveLocation=/home/u/Shots/\n"), "/home/u/Shots");
  EXPECT_EQ(folderOnKde("[ImageSave]\nimageSaveLocation=~/Shots\n"), "~/Shots");
}

TEST_F(ScreenshotToolTest, KdeFillsInVariablesWhereTheKeyIsMarked) {
  EXPECT_EQ(folderOnKde("[ImageSave]\nimageSaveLocation[$e]=file://$HOME/Shots\n"), "/home/some one/Shots");
  EXPECT_EQ(folderOnKde("[ImageSave]\nimageSaveLocation[$ie]=${HOME}/Shots\n"), "/home/some one/Shots");
  EXPECT_EQ(folderOnKde("[ImageSave]\nimageSaveLocation=/$HOME\n"), "/$HOME");
  EXPECT_EQ(folderOnKde("[ImageSave]\nimageSaveLocation[$e]=$NO_SUCH_VARIABLE_HERE/Shots\n"), std::nullopt);
  EXPECT_EQ(folderOnKde("[ImageSave]\nimageSaveLocation[$e]=/shots${HOME\n"), std::nullopt);
}

TEST_F(ScreenshotToolTest, KdeFallsBackToTheKeyOfFormerVersions) {
  EXPECT_EQ(folderOnKde("[Save]\ndefaultSaveLocation=/older\n"), "/older");
  EXPECT_EQ(folderOnKde("[Save]\ndefaultSaveLocation=/older\n[ImageSave]\nimageSaveLocation=\n"), "/older");
  EXPECT_EQ(folderOnKde("[Save]\ndefaultSaveLocation=/older\n[ImageSave]\nimageSaveLocation=/newer\n"), "/newer");
}

TEST_F(ScreenshotToolTest, KdeKeysCountInTheirOwnGroupOnly) {
  EXPECT_EQ(
      folderOnKde("imageSaveLocation=/a\n[Other]\nimageSaveLocation=/b\n[ImageSave][Sub]\nimageSaveLocation=/c\n"),
      std::nullopt);
  EXPECT_EQ(folderOnKde("[ImageSave]\r\n# imageSaveLocation=/a\r\nimageSaveLocation = /b\\sc \r\nmore=/d\r\n"), "/b c");
}

TEST_F(ScreenshotToolTest, PlacesThatAreNoneAreNoFolder) {
  for (const char* value :
       {"", "Shots", "./Shots", "sftp://host/Shots", "file://", "file:///%00", "~other/Shots", "$HOME"}) {
    EXPECT_EQ(folderOnKde(std::string("[ImageSave]\nimageSaveLocation=") + value + "\n"), std::nullopt) << value;
    EXPECT_EQ(folderOnXfce(std::string("[Default]\nscreenshot_dir=") + value + "\n"), std::nullopt) << value;
  }
}

TEST_F(ScreenshotToolTest, DamagedSettingsHaveNoFolder) {
  for (const std::string& settings : {std::string(), std::string("[ImageSave"), std::string("[]\n=\n=/a\n[\n"),
                                      std::string("[ImageSave]\nimageSaveLocation\n"), std::string(100, '\0'),
                                      std::string("\xff\xfe[ImageSave]\n\\")}) {
    EXPECT_EQ(folderOnKde(settings), std::nullopt) << settings;
  }
  EXPECT_EQ(folderOnKde(std::string(2'000'000, '\n') + "[ImageSave]\nimageSaveLocation=/a\n"), std::nullopt);
}

TEST_F(ScreenshotToolTest, SettingsThatAreNoFileHaveNoFolder) {
  ASSERT_EQ(::mkfifo(configurations_.path("spectaclerc").c_str(), 0600), 0);
  configurations_.makeFolder("xfce4/xfce4-screenshooter");
  ASSERT_EQ(::mkdir(configurations_.path("flameshot").c_str(), 0700), 0);
  ASSERT_EQ(::mkfifo(configurations_.path("flameshot/flameshot.ini").c_str(), 0600), 0);
  for (const char* desktop : {"KDE", "XFCE", "LXQt"}) EXPECT_EQ(folderOn(desktop), std::nullopt) << desktop;
}

TEST_F(ScreenshotToolTest, XfceTellsAFileUriOrAPath) {
  EXPECT_EQ(folderOnXfce("[Default]\ndelay=0\nscreenshot_dir=file:///home/u/%C3%A9\naction=1\n"), "/home/u/\xc3\xa9");
  EXPECT_EQ(folderOnXfce("[Default]\nscreenshot_dir=file:/home/u/Shots\n"), "/home/u/Shots");
  EXPECT_EQ(folderOnXfce("[Default]\nscreenshot_dir=/home/u/Shots\n"), "/home/u/Shots");
}

TEST_F(ScreenshotToolTest, LxqtTellsThePathOfItsUsualTool) {
  configurations_.write("flameshot/flameshot.ini", "[General]\nsavePath=/home/u/\\xe9t\\xe9, Shots\n");
  EXPECT_EQ(folderOn("LXQt"), std::nullopt) << "a list is no path";
  configurations_.write("flameshot/flameshot.ini", "[General]\nsavePath=/home/u/\\xe9t\\xe9\n");
  EXPECT_EQ(folderOn("LXQt"), "/home/u/\xc3\xa9t\xc3\xa9");
}

TEST_F(GnomeScreenshotTool, TellsWhatTheUserHasSet) {
  installUsualSchema();
  setValue("'file:///home/u/My%20Shots'");
  EXPECT_EQ(folderOnGnome(), "/home/u/My Shots");
  setValue("'/home/u/Shots/'");
  EXPECT_EQ(folderOnGnome(), "/home/u/Shots");
}

TEST_F(GnomeScreenshotTool, ServesTheDesktopsThatBringItAlong) {
  installUsualSchema();
  setValue("'/shots'");
  for (const char* desktop : {"ubuntu:GNOME", "Unity", "Budgie:GNOME", "X-Cinnamon", "Pantheon"}) {
    EXPECT_EQ(folderOnGnome(desktop), "/shots") << desktop;
  }
  EXPECT_EQ(folderOnGnome("KDE"), "none");
}

TEST_F(GnomeScreenshotTool, HasNoFolderWhenTheUserHasSetNone) {
  installUsualSchema();
  EXPECT_EQ(folderOnGnome(), "none");
  setValue("''");
  EXPECT_EQ(folderOnGnome(), "none");
  setValue("what is no text");
  EXPECT_EQ(folderOnGnome(), "none");
}

TEST_F(GnomeScreenshotTool, HasNoFolderWhenTheToolIsNotInstalled) {
  setValue("'/shots'");
  EXPECT_EQ(folderOnGnome(), "none");
}

TEST_F(GnomeScreenshotTool, HasNoFolderWhenTheSettingIsAnother) {
  setValue("'/shots'");
  installSchema("<key name='other' type='s'><default>''</default></key>");
  EXPECT_EQ(folderOnGnome(), "none");
  installSchema("<key name='auto-save-directory' type='i'><default>0</default></key>");
  setValue("5");
  EXPECT_EQ(folderOnGnome(), "none");
}

}  // namespace Nimbrel
