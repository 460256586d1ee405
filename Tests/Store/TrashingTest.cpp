#include "Support/FakeTrash.h"
#include "Support/StoreHome.h"
#include "Support/Waiting.h"

#include "Linux/Files/DesktopTrash.h"

#include <gmock/gmock.h>

#include <QSignalSpy>

#include <algorithm>
#include <filesystem>

namespace Nimbrel {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using Testing::FakeTrash;
using ::testing::IsEmpty;
using Testing::namesOf;
using Testing::shotNamed;
using Testing::StoreHome;
using Testing::waitUntil;

class Trashing : public ::testing::Test {
 protected:
  Trashing() {
    for (const auto* name : {"Screenshot 1.png", "Screenshot 2.png", "Screenshot 3.png"}) {
      home_.addFile(home_.desktop(name));
    }
    Services services;
    auto trash = std::make_unique<FakeTrash>();
    trash_ = trash.get();
    services.trash = std::move(trash);
    store_ = home_.open(ProcessRole::tool, std::move(services));
    store_->scan();
  }

  [[nodiscard]] ShotList shots(std::initializer_list<int> numbers) const {
    ShotList list;
    for (const int number : numbers)
      list.push_back(shotNamed(*store_, "Screenshot " + std::to_string(number) + ".png"));
    return list;
  }

  StoreHome home_;
  FakeTrash* trash_ = nullptr;
  std::unique_ptr<Store> store_;
};

TEST_F(Trashing, DropsTheRowsOnceTheFilesAreInTheTrash) {
  store_->setSelection({store_->shots().front()->id});
  store_->trash(shots({1, 3}));
  EXPECT_THAT(trash_->asked,
              ElementsAre(ElementsAre(home_.desktop("Screenshot 1.png"), home_.desktop("Screenshot 3.png"))));
  EXPECT_EQ(store_->shots().size(), 3U) << "nothing has moved yet";
  trash_->succeed();
  EXPECT_THAT(namesOf(store_->shots()), ElementsAre("Screenshot 2.png"));
  EXPECT_THAT(store_->selection(), IsEmpty());
  EXPECT_EQ(store_->status(), "Moved 2 to Trash");
}

TEST_F(Trashing, OneShotIsToldLikeMany) {
  store_->trash(shots({1}));
  trash_->succeed();
  EXPECT_EQ(store_->status(), "Moved 1 to Trash");
}

TEST_F(Trashing, AFileThatIsTakenOutOfTheTrashIsWelcome) {
  store_->trash(shots({1}));
  trash_->succeed();
  EXPECT_THAT(store_->database().ignoredPaths(), IsEmpty());
  home_.addFile(home_.desktop("Screenshot 1.png"));
  store_->scan();
  EXPECT_EQ(store_->shots().size(), 3U);
}

TEST_F(Trashing, TheTextOfATrashedShotIsNotFoundAnyMore) {
  const auto trashed = shots({1});
  store_->database().setOCR(trashed.front()->id, "unmistakable", {});
  store_->trash(trashed);
  trash_->succeed();
  EXPECT_THAT(*store_->database().searchIDs("unmistakable"), IsEmpty());
}

TEST_F(Trashing, AFailureLeavesTheCatalogueAloneAndTheNextScanDropsWhatIsGone) {
  store_->setSelection({store_->shots().front()->id});
  store_->trash(shots({1, 2, 3}));
  trash_->failAfter(1, "Permission denied");
  EXPECT_EQ(store_->status(), "Trash failed: Permission denied");
  EXPECT_EQ(store_->shots().size(), 3U);
  EXPECT_EQ(store_->selection().size(), 1U);
  store_->scan();
  EXPECT_EQ(store_->shots().size(), 2U);
  EXPECT_THAT(store_->database().ignoredPaths(), IsEmpty());
}

TEST_F(Trashing, ARowWhoseFileHasMovedMeanwhileStays) {
  const auto trashed = shots({1});
  store_->trash(trashed);
  store_->database().setPath(trashed.front()->id, home_.addFile(home_.inLibrary("b.png")), Database::Filed::Yes);
  trash_->succeed();
  EXPECT_EQ(shotNamed(*store_, "b.png")->id, trashed.front()->id);
}

TEST_F(Trashing, AnotherFileThatGotTheIdMeanwhileStays) {
  const auto last = shots({1, 2, 3});
  const auto highest = *std::ranges::max_element(last, {}, [](const ShotPtr& shot) { return shot->id; });
  store_->trash({highest});
  store_->database().remove(highest->id, Database::IgnorePath::No);
  store_->importFiles({home_.addFile(home_.path("other.png"))});
  ASSERT_EQ(shotNamed(*store_, "other.png")->id, highest->id);
  trash_->succeed();
  EXPECT_EQ(shotNamed(*store_, "other.png")->id, highest->id);
}

TEST_F(Trashing, AShotThatAnotherProcessMovedIsLeftAloneAndSoAreTheOthers) {
  const auto trashed = shots({1, 2});
  home_.open(ProcessRole::tool)->file({trashed.front()});
  // What stands at the former path now is none of the shots.
  home_.addFile(home_.desktop("Screenshot 1.png"));
  store_->setSelection({trashed.back()->id});
  store_->trash(trashed);
  EXPECT_THAT(trash_->asked, IsEmpty());
  EXPECT_EQ(store_->status(), "Trash failed: It has been moved meanwhile");
  EXPECT_EQ(store_->selection().size(), 1U);
}

TEST_F(Trashing, AShotWhoseRowIsGoneIsLeftAlone) {
  const auto trashed = shots({1});
  home_.open(ProcessRole::tool)->forget(trashed);
  store_->trash(trashed);
  EXPECT_THAT(trash_->asked, IsEmpty());
  EXPECT_EQ(store_->status(), "Trash failed: It has been moved meanwhile");
}

TEST_F(Trashing, AShotGivenTwiceIsMovedOnce) {
  store_->trash(shots({1, 2, 1}));
  EXPECT_THAT(trash_->asked,
              ElementsAre(ElementsAre(home_.desktop("Screenshot 1.png"), home_.desktop("Screenshot 2.png"))));
  trash_->succeed();
  EXPECT_EQ(store_->status(), "Moved 2 to Trash");
}

TEST_F(Trashing, TellsOfItsChangesOnce) {
  store_->trash(shots({1, 2}));
  const QSignalSpy told(store_.get(), &Store::shotsChanged);
  const QSignalSpy status(store_.get(), &Store::statusChanged);
  trash_->succeed();
  EXPECT_EQ(told.count(), 1);
  EXPECT_EQ(status.count(), 1);
}

TEST_F(Trashing, WithoutATrashNothingIsLost) {
  const auto store = home_.open(ProcessRole::tool);
  store->trash(store->shots());
  EXPECT_TRUE(waitUntil([&] { return !store->status().empty(); }));
  EXPECT_EQ(store->status(), "Trash failed: There is no Trash");
  EXPECT_EQ(store->shots().size(), 3U);
}

class TrashingForReal : public ::testing::Test {
 protected:
  TrashingForReal() {
    home_.addFile(home_.desktop("Screenshot 1.png"));
    Services services;
    services.trash = makeDesktopTrash(trash_);
    store_ = home_.open(ProcessRole::tool, std::move(services));
    store_->scan();
  }

  StoreHome home_;
  std::string trash_ = home_.path(".local/share/Trash");
  std::unique_ptr<Store> store_;
};

TEST_F(TrashingForReal, MovesTheFile) {
  store_->trash(store_->shots());
  EXPECT_TRUE(waitUntil([&] { return store_->status() == "Moved 1 to Trash"; })) << store_->status();
  EXPECT_THAT(store_->shots(), IsEmpty());
  EXPECT_FALSE(fs::exists(home_.desktop("Screenshot 1.png")));
  EXPECT_EQ(Testing::contentOf(trash_ + "/files/Screenshot 1.png"), "no picture");
}

TEST_F(TrashingForReal, AShotWhoseFileIsGoneReportsTheErrorOfTheSystem) {
  fs::remove(home_.desktop("Screenshot 1.png"));
  store_->trash(store_->shots());
  EXPECT_TRUE(waitUntil([&] { return !store_->status().empty() && store_->status() != "Added 1 shot"; }));
  EXPECT_EQ(store_->status(), "Trash failed: The file is not there");
  EXPECT_EQ(store_->shots().size(), 1U);
}

TEST_F(TrashingForReal, AnEmptyListMovesNothingAndSaysSo) {
  store_->trash({});
  EXPECT_TRUE(waitUntil([&] { return store_->status() == "Moved 0 to Trash"; })) << store_->status();
  EXPECT_EQ(store_->shots().size(), 1U);
}

TEST_F(TrashingForReal, ATrashThatCannotBeMadeLeavesTheFile) {
  home_.addFile(trash_);
  store_->trash(store_->shots());
  EXPECT_TRUE(waitUntil([&] { return store_->status().starts_with("Trash failed"); }));
  EXPECT_EQ(store_->status(), "Trash failed: The Trash cannot be used: A file stands where a folder is needed");
  EXPECT_TRUE(fs::exists(home_.desktop("Screenshot 1.png")));
}

TEST_F(TrashingForReal, AStoreThatEndsMeanwhileWaitsForTheFile) {
  store_->trash(store_->shots());
  store_.reset();
  EXPECT_NE(fs::exists(home_.desktop("Screenshot 1.png")), fs::exists(trash_ + "/files/Screenshot 1.png"));
}

}  // namespace
}  // namespace Nimbrel
