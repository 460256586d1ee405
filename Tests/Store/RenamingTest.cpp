#include "Support/StoreHome.h"

#include <gmock/gmock.h>

#include <QSignalSpy>

#include <filesystem>

namespace Nimbrel {
namespace {

namespace fs = std::filesystem;
using Testing::FakeFileEvents;
using ::testing::IsSupersetOf;
using Testing::StoreHome;

class Renaming : public ::testing::Test {
 protected:
  std::unique_ptr<Store> openWith(const std::string& path) {
    home_.addFile(path);
    auto store = home_.open(ProcessRole::tool);
    store->importFiles({path});
    return store;
  }

  static const Shot& only(const Store& store) {
    EXPECT_EQ(store.shots().size(), 1U);
    return *store.shots().front();
  }

  /// What the file is called after its shot was given this name.
  std::string renamed(const std::string& from, std::string_view to) {
    const auto store = openWith(home_.path("d/" + from));
    store->rename(only(*store), to);
    EXPECT_TRUE(fs::exists(only(*store).path));
    EXPECT_EQ(only(*store).path, home_.path("d/" + only(*store).name));
    return only(*store).name;
  }

  StoreHome home_;
};

TEST_F(Renaming, ANameWithoutExtensionKeepsTheOldOne) { EXPECT_EQ(renamed("a.png", "report"), "report.png"); }

TEST_F(Renaming, AnExtensionInTheNameIsTakenAsItStands) {
  EXPECT_EQ(renamed("a.png", "report.jpg"), "report.jpg");
  EXPECT_EQ(Testing::contentOf(home_.path("d/report.jpg")), "no picture");
}

TEST_F(Renaming, BlanksAndTabsAtTheEndsAreTrimmed) { EXPECT_EQ(renamed("a.png", " \treport "), "report.png"); }

TEST_F(Renaming, AFileWithoutExtensionGetsNoDot) {
  const auto path = home_.addFile(home_.path("d/recording"));
  const auto store = home_.open(ProcessRole::tool);
  Shot shot;
  shot.path = path;
  shot.name = "recording";
  store->database().insert(shot);
  store->reload();
  store->rename(only(*store), "report");
  EXPECT_EQ(only(*store).path, home_.path("d/report"));
}

TEST_F(Renaming, ATakenNameIsNumbered) {
  home_.addFile(home_.path("d/report.png"));
  EXPECT_EQ(renamed("a.png", "report"), "report 2.png");
  EXPECT_EQ(Testing::contentOf(home_.path("d/report.png")), "no picture");
}

TEST_F(Renaming, TheCurrentNameOrBlanksDoNothing) {
  const auto store = openWith(home_.path("d/a.png"));
  const QSignalSpy status(store.get(), &Store::statusChanged);
  const QSignalSpy shots(store.get(), &Store::shotsChanged);
  for (const auto* name : {"a.png", " a.png ", "", " \t "}) store->rename(only(*store), name);
  EXPECT_EQ(only(*store).name, "a.png");
  EXPECT_EQ(status.count(), 0);
  EXPECT_EQ(shots.count(), 0);
}

TEST_F(Renaming, SaysNothingWhenItWorked) {
  const auto store = openWith(home_.path("d/a.png"));
  store->rename(only(*store), "report");
  EXPECT_EQ(store->status(), "Imported 1");
}

TEST_F(Renaming, AShotStaysInInboxOrLibrary) {
  const auto store = openWith(home_.inLibrary("a.png"));
  ASSERT_TRUE(only(*store).filed);
  store->rename(only(*store), "report");
  EXPECT_TRUE(only(*store).filed);
  EXPECT_EQ(only(*store).path, home_.inLibrary("report.png"));
}

TEST_F(Renaming, TheNewNameIsFoundBySearch) {
  const auto store = openWith(home_.path("d/a.png"));
  store->rename(only(*store), "report");
  EXPECT_EQ(store->database().searchIDs("report")->size(), 1U);
}

TEST_F(Renaming, ANameDoesNotClimbIntoAnotherFolder) {
  for (const auto* name : {"../report", "below/report", "/report"}) {
    const auto store = openWith(home_.path("d/a.png"));
    store->rename(only(*store), name);
    EXPECT_EQ(store->status(), "Rename failed: A name cannot hold a slash");
    EXPECT_EQ(only(*store).path, home_.path("d/a.png"));
    EXPECT_TRUE(fs::exists(home_.path("d/a.png")));
  }
}

TEST_F(Renaming, NamesOfFoldersAreRefused) {
  const auto path = home_.addFile(home_.path("d/recording"));
  const auto store = home_.open(ProcessRole::tool);
  Shot shot;
  shot.path = path;
  shot.name = "recording";
  store->database().insert(shot);
  store->reload();
  for (const auto* name : {".", ".."}) {
    store->rename(only(*store), name);
    EXPECT_EQ(store->status(), "Rename failed: This name stands for a folder");
    EXPECT_TRUE(fs::exists(path));
  }
}

TEST_F(Renaming, ANameThatIsTooLongFails) {
  const auto store = openWith(home_.path("d/a.png"));
  store->rename(only(*store), std::string(300, 'n'));
  EXPECT_EQ(store->status(), "Rename failed: The name is too long");
  EXPECT_EQ(only(*store).name, "a.png");
}

TEST_F(Renaming, ANameWithAZeroFails) {
  const auto store = openWith(home_.path("d/a.png"));
  store->rename(only(*store), std::string_view("a\0b", 3));
  EXPECT_EQ(store->status(), "Rename failed: The name is not possible there");
  EXPECT_EQ(only(*store).name, "a.png");
}

TEST_F(Renaming, AVanishedFileFailsAndKeepsItsRow) {
  const auto store = openWith(home_.path("d/a.png"));
  fs::remove_all(home_.path("d"));
  store->rename(only(*store), "report");
  EXPECT_EQ(store->status(), "Rename failed: The file is not there");
  EXPECT_EQ(only(*store).path, home_.path("d/a.png"));
  EXPECT_FALSE(fs::exists(home_.path("d")));
}

TEST_F(Renaming, BytesThatAreNotUtf8AreKept) { EXPECT_EQ(renamed("a.png", "r\xFF\xFE"), "r\xFF\xFE.png"); }

TEST_F(Renaming, AWorkerAnnouncesBothPaths) {
  FakeFileEvents* events = nullptr;
  const auto path = home_.addFile(home_.desktop("Screenshot 1.png"));
  const auto store = home_.open(ProcessRole::headless, &events);
  store->rename(only(*store), "report");
  EXPECT_THAT(events->expected, IsSupersetOf({path, home_.desktop("report.png")}));
}

}  // namespace
}  // namespace Nimbrel
