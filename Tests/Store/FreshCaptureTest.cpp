// What a screenshot becomes that was just taken.

#include "CaptureFixture.h"

#include "Platform/MetadataStore.h"

#include <QSignalSpy>

#include <sqlite3.h>

#include <filesystem>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using Testing::namesOf;
using ::testing::SizeIs;
using Testing::waitUntil;

class FreshCaptureTest : public Testing::CaptureFixture {
 protected:
  void SetUp() override { open(); }

  [[nodiscard]] const ShotPtr& newest() const { return store_->shots().front(); }
  [[nodiscard]] std::string keptID() const {
    return home_.suiteOfOtherProcess()->value(QStringLiteral("lastCapturedID")).toVariant().toString().toStdString();
  }
  /// Makes the catalogue refuse rows, as a full disk would.
  void refuseRows() const {
    sqlite3* connection = nullptr;
    const auto path = home_.folders().applicationSupport + "/nimbrel.sqlite";
    ASSERT_EQ(sqlite3_open(path.c_str(), &connection), SQLITE_OK);
    const auto* trigger = "CREATE TRIGGER refusal BEFORE INSERT ON shots BEGIN SELECT RAISE(IGNORE); END";
    EXPECT_EQ(sqlite3_exec(connection, trigger, nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(connection);
  }
};

TEST_F(FreshCaptureTest, IsARowWithTheFactsOfItsFile) {
  begin(CaptureMode::area);
  Testing::writePicture(tool_->path(), 120, 80);
  ASSERT_TRUE(MetadataStore::markScreenCapture(tool_->path(), "selection"));
  home_.now += Seconds(2);
  tool_->end(0);

  ASSERT_THAT(store_->shots(), SizeIs(1));
  const auto& shot = *newest();
  EXPECT_EQ(shot.path, tool_->path());
  EXPECT_EQ(shot.name, std::filesystem::path(tool_->path()).filename());
  EXPECT_EQ(shot.added, home_.now);
  EXPECT_EQ(shot.bytes, static_cast<std::int64_t>(std::filesystem::file_size(tool_->path())));
  EXPECT_EQ(shot.width, 120);
  EXPECT_EQ(shot.height, 80);
  EXPECT_EQ(shot.captureType, "selection");
  EXPECT_EQ(shot.appName, "Editor");
  EXPECT_EQ(shot.bundleID, "org.example.Editor");
  EXPECT_TRUE(shot.appAttributionTrusted);
  EXPECT_FALSE(shot.filed);
  EXPECT_FALSE(shot.ocrDone);
  EXPECT_EQ(store_->status(), "Captured from Editor");
  EXPECT_EQ(store_->database().shot(shot.id), shot);
}

TEST_F(FreshCaptureTest, ItsDateIsThatOfTheFile) {
  begin(CaptureMode::area);
  Testing::writePicture(tool_->path());
  Testing::setModificationTime(tool_->path(), 1'700'000'000);
  tool_->end(0);
  EXPECT_EQ(newest()->date, timestamp(1'700'000'000));
}

TEST_F(FreshCaptureTest, IsFiledExactlyWhenItLiesInTheLibrary) {
  setLibrary();
  take();
  EXPECT_TRUE(newest()->filed);
  store_->settings().captureDestination.set(CaptureDestination::inbox);
  store_->settings().sources.set({home_.path("Pictures/Nimbrel beside")});
  take();
  EXPECT_FALSE(newest()->filed);
}

TEST_F(FreshCaptureTest, AFileThatIsNoPictureIsCataloguedAllTheSame) {
  begin(CaptureMode::area);
  home_.addFile(tool_->path());
  tool_->end(0);
  EXPECT_EQ(newest()->width, 0);
  EXPECT_EQ(store_->status(), "Captured from Editor");
}

TEST_F(FreshCaptureTest, WithOurOwnWindowInFrontItIsOfNoApplication) {
  for (const char* identifier : {"com.halderquist.nimbrel", "com.halderquist.nimbrel.menubar"}) {
    front_->application = Application{"Nimbrel", identifier};
    take();
    EXPECT_EQ(newest()->appName, "");
    EXPECT_EQ(newest()->bundleID, "");
    EXPECT_FALSE(newest()->appAttributionTrusted);
    EXPECT_EQ(store_->status(), "Captured");
    store_->lockSensitive();
  }
}

TEST_F(FreshCaptureTest, IsFoundByItsApplication) {
  take();
  EXPECT_THAT(store_->matching("editor"), SizeIs(1));
}

TEST_F(FreshCaptureTest, StandsFirstAndIsSelectedAlone) {
  store_->importFiles({home_.addFile(home_.path("old.png"))});
  store_->setSelection({newest()->id});
  take();
  EXPECT_THAT(namesOf(store_->shots()), ElementsAre(std::filesystem::path(tool_->path()).filename(), "old.png"));
  EXPECT_THAT(store_->selection(), ElementsAre(newest()->id));
}

TEST_F(FreshCaptureTest, TellsShotsAndSelectionOnce) {
  const QSignalSpy shots(store_.get(), &Store::shotsChanged);
  const QSignalSpy selection(store_.get(), &Store::selectionChanged);
  take();
  EXPECT_EQ(shots.count(), 1);
  EXPECT_EQ(selection.count(), 1);
}

TEST_F(FreshCaptureTest, BeatsTheGuessOfAWatcherThatWasSooner) {
  begin(CaptureMode::area);
  Testing::writePicture(tool_->path());
  const auto other = home_.open(ProcessRole::tool);
  other->scan();
  const auto id = other->shots().front()->id;
  other->database().setApp(id, "Guess", "org.example.Guess", Database::Trusted::Yes);
  other->database().setOCR(id, "a secret", {"Password"});
  store_->reload();
  ASSERT_THAT(store_->shots(), SizeIs(1));

  tool_->end(0);
  ASSERT_THAT(store_->shots(), SizeIs(1)) << "replaced in its place";
  EXPECT_EQ(newest()->id, id);
  EXPECT_EQ(newest()->appName, "Editor");
  EXPECT_EQ(newest()->bundleID, "org.example.Editor");
  EXPECT_TRUE(store_->isProtected(*newest())) << "what was found in it meanwhile still counts";
  EXPECT_EQ(store_->lastCapturedID(), id);
}

TEST_F(FreshCaptureTest, WithoutAnApplicationTheGuessOfAWatcherStays) {
  front_->application.reset();
  begin(CaptureMode::area);
  Testing::writePicture(tool_->path());
  const auto other = home_.open(ProcessRole::tool);
  other->scan();
  other->database().setApp(other->shots().front()->id, "Guess", "", Database::Trusted::Yes);
  tool_->end(0);
  EXPECT_EQ(newest()->appName, "Guess");
  EXPECT_EQ(store_->status(), "Captured");
}

TEST_F(FreshCaptureTest, IsRememberedAsTheLastOne) {
  const QSignalSpy told(store_.get(), &Store::lastCapturedIDChanged);
  EXPECT_EQ(store_->lastCapturedID(), std::nullopt);
  EXPECT_EQ(store_->lastCapturedShot(), std::nullopt);
  take();
  EXPECT_EQ(store_->lastCapturedID(), newest()->id);
  EXPECT_EQ(store_->lastCapturedShot(), newest());
  EXPECT_EQ(told.count(), 1);
  EXPECT_EQ(keptID(), std::to_string(newest()->id));
  EXPECT_EQ(home_.open(ProcessRole::menuBarCompanion)->lastCapturedID(), newest()->id);
}

TEST_F(FreshCaptureTest, TheLastOneHasNoShotOnceThatIsGone) {
  take();
  store_->forget({newest()});
  EXPECT_NE(store_->lastCapturedID(), std::nullopt);
  EXPECT_EQ(store_->lastCapturedShot(), std::nullopt);
}

TEST_F(FreshCaptureTest, AStoredLastOneThatIsNoNumberIsNone) {
  for (const QJsonValue& value : {QJsonValue(QStringLiteral("7")), QJsonValue(true), QJsonValue()}) {
    ASSERT_TRUE(home_.suiteOfOtherProcess()->set(QStringLiteral("lastCapturedID"), value));
    EXPECT_EQ(home_.open(ProcessRole::mainApplication)->lastCapturedID(), std::nullopt);
  }
  ASSERT_TRUE(home_.suiteOfOtherProcess()->set(QStringLiteral("lastCapturedID"), 7));
  EXPECT_EQ(home_.open(ProcessRole::mainApplication)->lastCapturedID(), 7);
}

TEST_F(FreshCaptureTest, ThatTheCatalogueRefusesKeepsItsFileAndChangesNothingElse) {
  refuseRows();
  take();
  EXPECT_EQ(store_->status(), "Captured, but Nimbrel could not add it to the catalogue");
  EXPECT_TRUE(std::filesystem::exists(tool_->path()));
  EXPECT_THAT(store_->shots(), SizeIs(0));
  EXPECT_THAT(store_->selection(), SizeIs(0));
  EXPECT_EQ(store_->lastCapturedID(), std::nullopt);
  EXPECT_FALSE(store_->captureBusy());
}

TEST_F(FreshCaptureTest, IsReadAgainWithTheRestOfTheCatalogueInALaterTurn) {
  take();
  home_.open(ProcessRole::tool)->database().setNote(newest()->id, "written meanwhile");
  EXPECT_EQ(newest()->note, "");
  EXPECT_TRUE(waitUntil([this] { return newest()->note == "written meanwhile"; }));
}

TEST_F(FreshCaptureTest, IsHashedInTheBackground) {
  take();
  EXPECT_TRUE(waitUntil([this] { return newest()->phash != 0; }));
}

TEST_F(FreshCaptureTest, StartsNoWorkWhereTheEventLoopEndsWithTheCommand) {
  open(ProcessRole::tool);
  take();
  Testing::runEventLoopFor(std::chrono::milliseconds(50));
  EXPECT_FALSE(store_->isWorking());
  EXPECT_EQ(newest()->phash, 0);
}

class EditRequestTest : public FreshCaptureTest {};

TEST_F(EditRequestTest, SelectsTheShotAmongAllAndAsksForTheWindow) {
  take();
  store_->setSelection({});
  store_->setFilter({Filter::Inbox{}});
  const auto former = store_->editRequestNonce();
  const QSignalSpy requests(store_.get(), &Store::editRequestNonceChanged);
  const QSignalSpy windows(store_.get(), &Store::windowRequested);
  bool isWindowLast = false;
  QObject::connect(store_.get(), &Store::windowRequested, store_.get(),
                   [&] { isWindowLast = requests.count() == 1 && store_->editRequestShotID().has_value(); });

  store_->requestEdit(newest());
  EXPECT_THAT(store_->selection(), ElementsAre(newest()->id));
  EXPECT_EQ(store_->filter(), Filter{Filter::All{}});
  EXPECT_EQ(store_->editRequestShotID(), newest()->id);
  EXPECT_NE(store_->editRequestNonce(), former);
  EXPECT_EQ(requests.count(), 1);
  EXPECT_EQ(windows.count(), 1);
  EXPECT_TRUE(isWindowLast);
}

TEST_F(EditRequestTest, EachRequestIsAnotherOneEvenForTheSameShot) {
  take();
  EXPECT_FALSE(store_->editRequestNonce().isNull());
  EXPECT_EQ(store_->editRequestShotID(), std::nullopt);
  store_->requestEdit(newest());
  const auto first = store_->editRequestNonce();
  store_->requestEdit(newest());
  EXPECT_NE(store_->editRequestNonce(), first);
}

TEST_F(EditRequestTest, AProtectedShotWaitsForItsOwner) {
  take();
  store_->database().setOCR(newest()->id, "a secret", {"Password"});
  store_->reload();
  const QSignalSpy windows(store_.get(), &Store::windowRequested);
  store_->requestEdit(newest());
  EXPECT_EQ(windows.count(), 0);
  EXPECT_EQ(store_->editRequestShotID(), std::nullopt);
  owner_->decide(true);
  EXPECT_EQ(windows.count(), 1);
  EXPECT_EQ(store_->editRequestShotID(), newest()->id);
}

TEST_F(EditRequestTest, ARefusalOpensNothing) {
  take();
  store_->database().setOCR(newest()->id, "a secret", {"Password"});
  store_->reload();
  const QSignalSpy windows(store_.get(), &Store::windowRequested);
  store_->requestEdit(newest());
  owner_->decide(false);
  EXPECT_EQ(windows.count(), 0);
  EXPECT_EQ(store_->editRequestShotID(), std::nullopt);
}

}  // namespace
}  // namespace Nimbrel
