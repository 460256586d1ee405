#include "Views/Shared/AppIcons.h"

#include "Model/AppIdentity.h"

#include "Support/Pictures.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <QGuiApplication>

#include <map>
#include <vector>

namespace Nimbrel {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Testing::TemporaryFolder;

class FakeInstalledApplications final : public InstalledApplications {
 public:
  std::optional<IconName> iconOfIdentifier(std::string_view bundleID) override { return find(identifiers, bundleID); }
  std::optional<IconName> iconOfName(std::string_view name) override { return find(names, name); }

  std::map<std::string, IconName, std::less<>> identifiers;
  std::map<std::string, IconName, std::less<>> names;
  std::vector<std::string> asked;

 private:
  using Icons = std::map<std::string, IconName, std::less<>>;
  std::optional<IconName> find(const Icons& icons, std::string_view key) {
    asked.emplace_back(key);
    const auto found = icons.find(key);
    return found == icons.end() ? std::nullopt : std::optional(found->second);
  }
};

/// A theme with the icons "red", "blue" and the general one, each a plain square.
class AppIconsTest : public ::testing::Test {
 protected:
  AppIconsTest() {
    folder_.write("plain/index.theme", "[Icon Theme]\nName=Plain\nDirectories=16\n\n[16]\nSize=16\nType=Fixed\n");
    draw("plain/16/red.png", Qt::red);
    draw("plain/16/blue.png", Qt::blue);
    draw("plain/16/application-x-executable.png", Qt::gray);
    QIcon::setThemeSearchPaths({QString::fromStdString(folder_.path())});
    QIcon::setThemeName(QStringLiteral("plain"));
  }
  ~AppIconsTest() override {
    QGuiApplication::setWindowIcon({});
    QIcon::setThemeSearchPaths(formerPaths_);
    QIcon::setThemeName(formerTheme_);
  }

  std::string draw(const std::string& name, Qt::GlobalColor colour) {
    QImage picture(16, 16, QImage::Format_RGB32);
    picture.fill(colour);
    auto path = folder_.write(name, "");
    Testing::writePicture(picture, path);
    return path;
  }
  /// What it looks like; invalid when there is none.
  [[nodiscard]] QColor colourOf(std::string_view name, std::string_view bundleID) {
    const auto icon = icons_.icon(name, bundleID);
    return icon.isNull() ? QColor() : icon.pixmap(16).toImage().pixelColor(8, 8);
  }

  TemporaryFolder folder_;
  FakeInstalledApplications applications_;
  AppIcons icons_{applications_};

 private:
  QStringList formerPaths_ = QIcon::themeSearchPaths();
  QString formerTheme_ = QIcon::themeName();
};

TEST_F(AppIconsTest, AreFoundByTheIdentifierFirst) {
  applications_.identifiers["org.example.Editor"] = "red";
  applications_.names["Editor"] = "blue";
  EXPECT_EQ(colourOf("Editor", "org.example.Editor"), QColor(Qt::red));
}

TEST_F(AppIconsTest, AreFoundByTheNameWhereTheIdentifierIsNotKnown) {
  applications_.names["Editor"] = "blue";
  EXPECT_EQ(colourOf("Editor", "org.example.Editor"), QColor(Qt::blue));
  EXPECT_EQ(colourOf("Editor", ""), QColor(Qt::blue));
}

TEST_F(AppIconsTest, ANameWithALeftToRightMarkFindsTheApplicationOfTheSameVisibleName) {
  applications_.names["Editor"] = "blue";
  EXPECT_EQ(colourOf("\u200EEdi\u202Ctor\u0007 ", ""), QColor(Qt::blue));
}

TEST_F(AppIconsTest, AMarkInsideACharacterBelongsToIt) {
  const std::string family = "👩\u200D👧";
  applications_.names[family] = "blue";
  EXPECT_EQ(colourOf(family, ""), QColor(Qt::blue));
}

TEST_F(AppIconsTest, ANameOfMarksAndBlanksIsNone) {
  applications_.names[""] = "blue";
  EXPECT_FALSE(colourOf(" \u200E ", "").isValid());
  EXPECT_THAT(applications_.asked, IsEmpty());
}

TEST_F(AppIconsTest, AreLookedForOnce) {
  applications_.identifiers["org.example.Editor"] = "red";
  EXPECT_TRUE(colourOf("Editor", "org.example.Editor").isValid());
  applications_.identifiers.clear();
  EXPECT_EQ(colourOf("Other name", "org.example.Editor"), QColor(Qt::red));
  EXPECT_THAT(applications_.asked, ElementsAre("org.example.Editor"));
}

TEST_F(AppIconsTest, AFailureIsRememberedToo) {
  EXPECT_FALSE(colourOf("Editor", "").isValid());
  applications_.names["Editor"] = "blue";
  EXPECT_FALSE(colourOf("Editor", "").isValid());
  EXPECT_THAT(applications_.asked, ElementsAre("Editor"));
}

TEST_F(AppIconsTest, MayBeAPictureOfTheApplicationsOwn) {
  applications_.names["Editor"] = draw("own.png", Qt::green);
  EXPECT_EQ(colourOf("Editor", ""), QColor(Qt::green));
}

TEST_F(AppIconsTest, MayBeADrawing) {
  applications_.names["Editor"] =
      folder_.write("own.svg", R"(<svg xmlns="http://www.w3.org/2000/svg" width="16" height="16">
<rect width="16" height="16" fill="#00ff00"/></svg>)");
  EXPECT_EQ(colourOf("Editor", ""), QColor(Qt::green));
}

TEST_F(AppIconsTest, AnApplicationWithoutOneHasTheGeneralOne) {
  applications_.names = {{"a", ""}, {"b", "unknown"}, {"c", folder_.path("gone.png")}};
  for (const auto* name : {"a", "b", "c"}) EXPECT_EQ(colourOf(name, ""), QColor(Qt::gray)) << name;
}

TEST_F(AppIconsTest, OursIsThatOfOurWindows) {
  QGuiApplication::setWindowIcon(QIcon(QString::fromStdString(draw("ours.png", Qt::magenta))));
  applications_.identifiers[AppIdentity::bundleIdentifier()] = "red";
  EXPECT_EQ(colourOf("Nimbrel", AppIdentity::bundleIdentifier()), QColor(Qt::magenta));
}

TEST_F(AppIconsTest, WithoutWindowsOursIsThatOfOurEntry) {
  applications_.identifiers[AppIdentity::bundleIdentifier()] = "red";
  EXPECT_EQ(colourOf("Nimbrel", AppIdentity::bundleIdentifier()), QColor(Qt::red));
}

}  // namespace

}  // namespace Nimbrel
