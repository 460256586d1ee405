#include "Views/Settings/SettingsViewFixture.h"

#include "Support/Pictures.h"
#include "Views/Shared/ElidedLabel.h"

#include <QLabel>
#include <QSignalSpy>

#include <fstream>
#include <iterator>

namespace Nimbrel {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

class SyncPaneTest : public Testing::SettingsViewFixture {
 protected:
  [[nodiscard]] std::string path() const { return at<ElidedLabel>("syncPath").fullText().toStdString(); }
};

TEST_F(SyncPaneTest, WithoutAFolderItSaysSo) {
  show();
  EXPECT_EQ(path(), "Not configured");
  type("passphrase", QStringLiteral("correct horse"));
  EXPECT_FALSE(isEnabled("syncNow"));
}

TEST_F(SyncPaneTest, AChosenFolderIsTheVault) {
  home_.folder().makeFolder("Vault");
  show();
  click("syncChoose");
  EXPECT_EQ(picker("syncPicker").windowTitle(), QStringLiteral("Choose an iCloud, Dropbox, or shared sync folder"));
  choose("syncPicker", home_.path("Vault"));
  EXPECT_EQ(settings().syncRoot(), home_.path("Vault"));
  EXPECT_EQ(path(), home_.path("Vault"));
}

TEST_F(SyncPaneTest, SevenCharactersAreTooFewAndEightEnough) {
  settings().syncRoot.set(home_.path("Vault"));
  show();
  EXPECT_FALSE(isEnabled("syncNow"));
  type("passphrase", QStringLiteral("1234567"));
  EXPECT_FALSE(isEnabled("syncNow"));
  type("passphrase", QStringLiteral("12345678"));
  EXPECT_TRUE(isEnabled("syncNow"));
}

TEST_F(SyncPaneTest, CharactersCountAsPeopleCountThem) {
  settings().syncRoot.set(home_.path("Vault"));
  show();
  field("passphrase").setText(QStringLiteral("\U0001F600").repeated(7));
  EXPECT_FALSE(isEnabled("syncNow"));
  field("passphrase").setText(QStringLiteral("e\u0301").repeated(7));
  EXPECT_FALSE(isEnabled("syncNow"));
  field("passphrase").setText(QStringLiteral("e\u0301").repeated(8));
  EXPECT_TRUE(isEnabled("syncNow"));
}

TEST_F(SyncPaneTest, AFolderThatIsTakenAwayEndsIt) {
  settings().syncRoot.set(home_.path("Vault"));
  show();
  type("passphrase", QStringLiteral("12345678"));
  settings().syncRoot.set(std::nullopt);
  EXPECT_FALSE(isEnabled("syncNow"));
  EXPECT_EQ(path(), "Not configured");
}

TEST_F(SyncPaneTest, SyncNowExchangesAndEmptiesTheField) {
  Testing::writePicture(home_.inLibrary("a.png"), 10, 10, 1);
  settings().syncRoot.set(home_.path("Vault"));
  show();
  type("passphrase", QStringLiteral("correct horse"));
  const QSignalSpy ended(store_.get(), &Store::syncEnded);
  click("syncNow");
  EXPECT_EQ(field("passphrase").text(), QString());
  EXPECT_FALSE(isEnabled("syncNow"));
  EXPECT_EQ(store_->status(), "Syncing encrypted library…");
  EXPECT_FALSE(at("syncRing").isHidden());
  ASSERT_TRUE(Testing::waitUntil([&ended] { return ended.count() == 1; }));
  EXPECT_THAT(store_->status(), HasSubstr("1 sent"));
  EXPECT_TRUE(at("syncRing").isHidden());
  EXPECT_EQ(at<QLabel>("syncCount").text(), QString());
}

TEST_F(SyncPaneTest, TheCountStandsBesideTheButtonWhileItRuns) {
  for (int i = 0; i < 30; ++i) {
    Testing::writePicture(home_.inLibrary(std::to_string(i) + ".png"), 10, 10, i);
  }
  settings().syncRoot.set(home_.path("Vault"));
  show();
  type("passphrase", QStringLiteral("correct horse"));
  std::vector<std::string> shown;
  QObject::connect(store_.get(), &Store::syncProgressChanged, view_,
                   [&] { shown.push_back(at<QLabel>("syncCount").text().toStdString()); });
  const QSignalSpy ended(store_.get(), &Store::syncEnded);
  click("syncNow");
  ASSERT_TRUE(Testing::waitUntil([&ended] { return ended.count() == 1; }));
  EXPECT_THAT(shown, ::testing::Contains("30 of 30"));
}

TEST_F(SyncPaneTest, ThePassphraseIsHiddenAndWrittenNowhere) {
  settings().syncRoot.set(home_.path("Vault"));
  show();
  EXPECT_EQ(field("passphrase").echoMode(), QLineEdit::Password);
  type("passphrase", QStringLiteral("correct horse"));
  click("syncNow");
  type("passphrase", QStringLiteral("correct horse"));
  view_->close();
  ASSERT_TRUE(isGone());
  show();
  EXPECT_EQ(field("passphrase").text(), QString());
  std::ifstream suite(home_.suiteOfOtherProcess()->filePath().toStdString());
  const std::string stored(std::istreambuf_iterator<char>(suite), {});
  EXPECT_THAT(stored, HasSubstr("Vault"));
  EXPECT_THAT(stored, Not(HasSubstr("correct horse")));
}

}  // namespace
}  // namespace Nimbrel
