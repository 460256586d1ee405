#include "Views/QuickFind/QuickFindResults.h"

#include "Support/FakeOwnerAuthentication.h"
#include "Support/StoreHome.h"

#include <gmock/gmock.h>

#include <QSignalSpy>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Testing::namesOf;
using ::testing::SizeIs;

class QuickFindResultsTest : public ::testing::Test {
 protected:
  QuickFindResultsTest() {
    Services services;
    auto owner = std::make_unique<Testing::FakeOwnerAuthentication>();
    owner_ = owner.get();
    services.ownerAuthentication = std::move(owner);
    store_ = home_.open(ProcessRole::tool, std::move(services));
    results_ = std::make_unique<QuickFindResults>(*store_);
  }

  /// A shot with that text, each a minute older than the one before it.
  ShotPtr add(const std::string& name, const std::string& text, const std::vector<std::string>& sensitive = {}) {
    Shot shot;
    shot.path = home_.desktop(name);
    shot.name = name;
    shot.captureType = "window";
    shot.date = home_.now - Seconds(60.0 * ++shots_);
    shot.added = home_.now;
    const auto id = store_->database().insert(shot);
    store_->database().setOCR(id, text, sensitive);
    store_->reload();
    return Testing::shotNamed(*store_, name);
  }
  void addMany(int count) {
    for (int number = 0; number < count; ++number) {
      Shot shot;
      shot.path = home_.desktop("many " + std::to_string(number) + ".png");
      shot.name = "many.png";
      shot.date = home_.now - Seconds(number);
      shot.added = home_.now;
      store_->database().setOCR(store_->database().insert(shot), "halden", {});
    }
    store_->reload();
  }
  void search(const char* text) { results_->setText(QString::fromUtf8(text)); }
  [[nodiscard]] std::vector<std::string> found() const { return namesOf(results_->shots()); }

  Testing::StoreHome home_;
  Testing::FakeOwnerAuthentication* owner_ = nullptr;
  std::unique_ptr<Store> store_;
  std::unique_ptr<QuickFindResults> results_;

 private:
  int shots_ = 0;
};

TEST_F(QuickFindResultsTest, FindsTheShotsWithTheTextNewestFirst) {
  add("a.png", "Halden ground site");
  add("b.png", "Departure from platform nine");
  add("c.png", "Halden-3 flight telemetry");
  search("halden");
  EXPECT_THAT(found(), ElementsAre("a.png", "c.png"));
  EXPECT_EQ(results_->rowCount(), 2);
}

TEST_F(QuickFindResultsTest, LeavesTheSearchAndTheFilterOfTheWindowAlone) {
  add("a.png", "Halden ground site");
  store_->setFilter({Filter::Favorites{}});
  search("halden");
  EXPECT_THAT(found(), ElementsAre("a.png")) << "the filter plays no part";
  EXPECT_EQ(store_->query(), "");
  EXPECT_EQ(store_->matchedIDs(), std::nullopt);
}

TEST_F(QuickFindResultsTest, BlanksAroundTheTextDoNotCount) {
  add("a.png", "Halden ground site");
  search(" \t halden ");
  EXPECT_THAT(found(), ElementsAre("a.png"));
}

TEST_F(QuickFindResultsTest, BlanksAloneFindNothing) {
  add("a.png", "Halden ground site");
  search("   ");
  EXPECT_THAT(found(), IsEmpty());
  EXPECT_EQ(results_->text(), QStringLiteral("   "));
  search("");
  EXPECT_THAT(found(), IsEmpty());
}

TEST_F(QuickFindResultsTest, ResultsAreThereWhenTheCallReturns) {
  addMany(3);
  QSignalSpy resets(results_.get(), &QAbstractItemModel::modelReset);
  search("halden");
  EXPECT_EQ(resets.size(), 1);
  EXPECT_THAT(results_->shots(), SizeIs(3));
}

TEST_F(QuickFindResultsTest, AtMostFortyAreShown) {
  addMany(40);
  search("halden");
  EXPECT_THAT(results_->shots(), SizeIs(40));
  add("one more.png", "halden");
  search("halden");
  EXPECT_THAT(results_->shots(), SizeIs(40));
  EXPECT_EQ(results_->shots().front(), store_->shots().front());
}

TEST_F(QuickFindResultsTest, TheHighlightStopsAtBothEnds) {
  addMany(3);
  search("halden");
  results_->moveUp();
  EXPECT_EQ(results_->highlighted(), 0);
  for (int i = 0; i < 5; ++i) results_->moveDown();
  EXPECT_EQ(results_->highlighted(), 2);
  results_->moveUp();
  EXPECT_EQ(results_->highlighted(), 1);
}

TEST_F(QuickFindResultsTest, WithoutResultsNothingIsSelectedAndTheHighlightStays) {
  results_->moveDown();
  results_->moveUp();
  results_->highlight(3);
  EXPECT_EQ(results_->highlighted(), 0);
  EXPECT_EQ(results_->selected(), std::nullopt);
}

TEST_F(QuickFindResultsTest, AnyOtherTextHighlightsTheFirstRow) {
  addMany(3);
  search("halden");
  results_->highlight(2);
  EXPECT_EQ(results_->selected(), results_->shots()[2]);
  search("halden ");
  EXPECT_EQ(results_->highlighted(), 0);
  EXPECT_EQ(results_->selected(), results_->shots()[0]);
}

TEST_F(QuickFindResultsTest, ARowTellsTheFirstLineAndKindAndDate) {
  add("a.png", "\n  Halden-3 flight telemetry  \nmore");
  search("telemetry");
  const auto row = results_->rowAt(0);
  EXPECT_EQ(row.title, QStringLiteral("Halden-3 flight telemetry"));
  EXPECT_TRUE(row.subtitle.startsWith(QStringLiteral("Window · "))) << row.subtitle.toStdString();
  EXPECT_TRUE(row.subtitle.contains(QStringLiteral("2026"))) << row.subtitle.toStdString();
  EXPECT_FALSE(row.isProtected);
  EXPECT_FALSE(row.isSensitive);
  EXPECT_EQ(results_->data(results_->index(0), Qt::AccessibleTextRole).toString(),
            row.title + QStringLiteral(", ") + row.subtitle);
}

TEST_F(QuickFindResultsTest, ARowOfAProtectedShotGivesNothingAway) {
  add("a.png", "the key is under the mat", {"Password"});
  search("mat");
  const QuickFindRow protectedRow{.title = QStringLiteral("Sensitive screenshot"),
                                  .subtitle = QStringLiteral("Unlock to preview"),
                                  .isProtected = true,
                                  .isSensitive = true};
  EXPECT_EQ(results_->rowAt(0), protectedRow);
  store_->withAccess({results_->shots().front()}, [] {});
  owner_->decide(true);
  EXPECT_EQ(results_->rowAt(0).title, QStringLiteral("the key is under the mat"));
  EXPECT_TRUE(results_->rowAt(0).isSensitive);
  store_->lockSensitive();
  EXPECT_EQ(results_->rowAt(0), protectedRow);
}

TEST_F(QuickFindResultsTest, AShotThatTurnsOutToBeSensitiveIsProtectedAtOnce) {
  const auto shot = add("a.png", "the key is under the mat");
  search("mat");
  QSignalSpy changes(results_.get(), &QAbstractItemModel::dataChanged);
  store_->database().setOCR(shot->id, "the key is under the mat", {"Password"});
  store_->reload();
  EXPECT_GE(changes.size(), 1);
  EXPECT_TRUE(results_->rowAt(0).isProtected);
  EXPECT_EQ(results_->selected(), store_->shots().front());
}

TEST_F(QuickFindResultsTest, ProtectionFollowsTheSetting) {
  add("a.png", "the key is under the mat", {"Password"});
  search("mat");
  store_->settings().protectSensitive.set(false);
  EXPECT_FALSE(results_->rowAt(0).isProtected);
  EXPECT_TRUE(results_->rowAt(0).isSensitive);
}

TEST_F(QuickFindResultsTest, AVeryLongLineIsCutForItsRow) {
  add("a.png", "halden " + std::string(1'000'000, 'x'));
  search("halden");
  EXPECT_LE(results_->rowAt(0).title.size(), 512);
  EXPECT_TRUE(results_->rowAt(0).title.startsWith(QStringLiteral("halden xxx")));
}

}  // namespace
}  // namespace Nimbrel
