#include "Store/Store.h"

#include "StoreFixture.h"
#include "Support/LogRecorder.h"

#include <QSignalSpy>

#include <sqlite3.h>

#include <filesystem>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Testing::shotNamed;

class RulesTest : public Testing::StoreFixture {
 protected:
  void add(const std::string& name, const std::string& text, const std::string& application = {}) {
    Shot shot;
    shot.path = home_.addFile(home_.desktop(name));
    shot.name = name;
    shot.date = home_.now;
    shot.appName = application;
    shot.appAttributionTrusted = !application.empty();
    const auto id = store_->database().insert(shot);
    store_->database().setOCR(id, text, {});
    store_->reload();
  }
  void apply(std::vector<AutomationRule> rules) {
    for (auto& rule : rules) rule.id = QUuid::createUuid();
    store_->settings().automationRules.set(std::move(rules));
    store_->applyAutomationRules(store_->shots());
  }
};

TEST_F(RulesTest, ARuleWithOnlyANameDoesNothing) {
  add("a.png", "text");
  apply({{.name = "my rule", .tag = "t", .project = "p", .favorite = true, .fileToLibrary = true}});
  EXPECT_THAT(tagsOf("a.png"), IsEmpty());
  EXPECT_FALSE(shotNamed(*store_, "a.png")->favorite);
  EXPECT_FALSE(shotNamed(*store_, "a.png")->filed);
  EXPECT_THAT(projects(), IsEmpty());
  EXPECT_EQ(store_->status(), "");
}

TEST_F(RulesTest, ConditionsOfBlanksAreNone) {
  add("a.png", "two words \n more");
  apply({{.containsText = " \n", .source = "\t ", .tag = "t"}});
  EXPECT_THAT(tagsOf("a.png"), IsEmpty());
}

TEST_F(RulesTest, ASourceMatchesTheTitleOfTheGroupInAnyCase) {
  add("a.png", "", "Safari");
  add("b.png", "", "Terminal");
  apply({{.source = " saFAri ", .tag = "web"}});
  EXPECT_THAT(tagsOf("a.png"), ElementsAre("web"));
  EXPECT_THAT(tagsOf("b.png"), IsEmpty());
}

TEST_F(RulesTest, ASourceMatchesALockedShotToo) {
  add("a.png", "password: abcdef", "Safari");
  store_->rescanSensitive();
  ASSERT_TRUE(store_->isProtected(*shotNamed(*store_, "a.png")));
  apply({{.source = "safari", .tag = "web"}});
  EXPECT_THAT(tagsOf("a.png"), ElementsAre("web"));
}

TEST_F(RulesTest, AShotOfNoApplicationHasNoSource) {
  add("a.png", "", "Desktop");
  add("b.png", "");
  apply({{.source = "desktop", .tag = "t"}, {.source = "screenshot", .tag = "t"}});
  EXPECT_THAT(tagsOf("a.png"), IsEmpty());
  EXPECT_THAT(tagsOf("b.png"), IsEmpty());
}

TEST_F(RulesTest, ATextIsLookedForInTheTextAndInTheName) {
  add("Invoice.png", "");
  add("b.png", "Your INVOICE");
  add("c.png", "else");
  apply({{.containsText = "invoice", .tag = "money"}});
  EXPECT_THAT(tagsOf("Invoice.png"), ElementsAre("money"));
  EXPECT_THAT(tagsOf("b.png"), ElementsAre("money"));
  EXPECT_THAT(tagsOf("c.png"), IsEmpty());
}

TEST_F(RulesTest, BothConditionsMustHold) {
  add("a.png", "invoice", "Terminal");
  add("b.png", "invoice", "Safari");
  apply({{.containsText = "invoice", .source = "safari", .tag = "t"}});
  EXPECT_THAT(tagsOf("a.png"), IsEmpty());
  EXPECT_THAT(tagsOf("b.png"), ElementsAre("t"));
}

TEST_F(RulesTest, ADisabledRuleIsSkipped) {
  add("a.png", "text");
  apply({{.containsText = "text", .tag = "t", .enabled = false}});
  EXPECT_THAT(tagsOf("a.png"), IsEmpty());
}

TEST_F(RulesTest, AllRulesThatMatchAreAppliedInTheirOrderBehindTheTagsThatAreThere) {
  add("a.png", "text");
  store_->database().setTags(shotNamed(*store_, "a.png")->id, {"old", "two"});
  store_->reload();
  apply({{.containsText = "text", .tag = " two "}, {.containsText = "t", .tag = " one\n", .project = "p"}});
  EXPECT_THAT(tagsOf("a.png"), ElementsAre("old", "two", "one", "project:p"));
  EXPECT_EQ(store_->status(), "Applied automatic rules");
}

TEST_F(RulesTest, ATagIsFoundInSearch) {
  add("a.png", "text");
  apply({{.containsText = "text", .tag = "money"}});
  EXPECT_THAT(store_->database().searchIDs("money").value(), ElementsAre(shotNamed(*store_, "a.png")->id));
}

TEST_F(RulesTest, ARuleWhoseProjectIsBlanksAddsNothing) {
  add("a.png", "text");
  apply({{.containsText = "text", .project = "  "}});
  EXPECT_THAT(tagsOf("a.png"), IsEmpty());
  EXPECT_THAT(projects(), IsEmpty());
  EXPECT_EQ(store_->status(), "");
}

TEST_F(RulesTest, ANewProjectStandsAtTheEndOfTheList) {
  store_->settings().projects.set({"m", "z"});
  add("a.png", "text");
  apply({{.containsText = "text", .project = " a "}, {.containsText = "text", .project = "m"}});
  EXPECT_THAT(tagsOf("a.png"), ElementsAre("project:a", "project:m"));
  EXPECT_THAT(projects(), ElementsAre("m", "z", "a"));
}

TEST_F(RulesTest, AProjectThatWasTakenOffTheListIsPutBackWithoutAnotherChange) {
  add("a.png", "text");
  apply({{.containsText = "text", .project = "p"}});
  store_->applyAutomationRules(store_->shots());
  store_->settings().projects.set({});
  QSignalSpy status(store_.get(), &Store::statusChanged);
  store_->applyAutomationRules(store_->shots());
  EXPECT_THAT(projects(), ElementsAre("p"));
  EXPECT_EQ(status.count(), 0);
}

TEST_F(RulesTest, AProjectIsPutBackEachTimeItIsTakenOff) {
  add("a.png", "text");
  apply({{.containsText = "text", .project = "p"}});
  for (int time = 0; time < 3; ++time) {
    store_->settings().projects.set({});
    store_->applyAutomationRules(store_->shots());
    EXPECT_THAT(projects(), ElementsAre("p")) << time;
  }
}

TEST_F(RulesTest, AProjectWhoseTagIsThereAlreadyIsPutBackToo) {
  add("a.png", "text");
  store_->database().setTags(shotNamed(*store_, "a.png")->id, {"project:p"});
  store_->reload();
  apply({{.containsText = "text", .project = "p"}});
  store_->settings().projects.set({});
  store_->applyAutomationRules(store_->shots());
  EXPECT_THAT(projects(), ElementsAre("p"));
}

TEST_F(RulesTest, AListenerThatReloadsWhenAProjectIsNewDisturbsNothing) {
  for (const auto* name : {"a.png", "b.png", "c.png"}) add(name, "text");
  const auto other = home_.open(ProcessRole::tool);
  QObject::connect(&store_->settings(), &Settings::changed, store_.get(), [&](const QString& key) {
    if (key != store_->settings().projects.key()) return;
    for (const auto& shot : other->shots()) other->database().setNote(shot->id, "written meanwhile");
    store_->reload();
  });
  apply({{.containsText = "text", .tag = "t", .project = "p"}});
  for (const auto* name : {"a.png", "b.png", "c.png"}) {
    EXPECT_THAT(tagsOf(name), ElementsAre("t", "project:p"));
    EXPECT_EQ(shotNamed(*store_, name)->note, "written meanwhile");
  }
}

TEST_F(RulesTest, TagsThatAnotherProcessGaveAreKept) {
  add("a.png", "text");
  const auto other = home_.open(ProcessRole::tool);
  other->addTag("theirs", other->shots());
  apply({{.containsText = "text", .tag = "t"}});
  EXPECT_THAT(tagsOf("a.png"), ElementsAre("theirs", "t"));
}

TEST_F(RulesTest, AnotherShotThatGotTheIdMeanwhileIsLeftAlone) {
  add("a.png", "text");
  const auto id = shotNamed(*store_, "a.png")->id;
  const auto other = home_.open(ProcessRole::tool);
  other->database().remove(id, Database::IgnorePath::No);
  home_.now += Seconds{1};
  other->importFiles({home_.addFile(home_.path("other.png"))});
  ASSERT_EQ(shotNamed(*other, "other.png")->id, id);
  apply({{.containsText = "text", .tag = "t", .favorite = true}});
  EXPECT_THAT(tagsOf("other.png"), IsEmpty());
  EXPECT_FALSE(shotNamed(*store_, "other.png")->favorite);
}

TEST_F(RulesTest, WithoutRulesNoFormerShotIsKept) {
  add("a.png", "text");
  apply({{.containsText = "something else", .tag = "t"}});
  const std::weak_ptr former = shotNamed(*store_, "a.png");
  apply({});
  store_->database().setNote(former.lock()->id, "another value");
  store_->reload();
  EXPECT_TRUE(former.expired());
}

TEST_F(RulesTest, AShotBecomesAFavouriteOnce) {
  add("a.png", "text");
  apply({{.containsText = "text", .favorite = true}, {.containsText = "text", .favorite = true}});
  EXPECT_TRUE(shotNamed(*store_, "a.png")->favorite);
  EXPECT_EQ(store_->status(), "Applied automatic rules");
}

TEST_F(RulesTest, ARuleFilesShotsAndLeavesTheStatusToFiling) {
  add("a.png", "text");
  add("b.png", "else");
  apply({{.containsText = "text", .fileToLibrary = true}});
  EXPECT_EQ(store_->inboxCount(), 1U);
  EXPECT_FALSE(std::filesystem::exists(home_.desktop("a.png")));
  EXPECT_EQ(store_->status(), "Filed 1 shot into the library");
}

TEST_F(RulesTest, ARuleThatTagsAndFilesSaysThatRulesWereApplied) {
  add("a.png", "text");
  apply({{.containsText = "text", .tag = "t", .fileToLibrary = true}});
  ASSERT_EQ(store_->shots().size(), 1U);
  EXPECT_TRUE(store_->shots().front()->filed);
  EXPECT_THAT(store_->shots().front()->tags, ElementsAre("t"));
  EXPECT_EQ(store_->status(), "Applied automatic rules");
}

TEST_F(RulesTest, FilingAnAlreadyFiledShotDoesNothing) {
  const auto path = home_.addFile(home_.inLibrary("2026/text.png"));
  store_->importFiles({path});
  const auto before = store_->database().ownChanges();
  apply({{.containsText = "text", .fileToLibrary = true}});
  EXPECT_EQ(store_->shots().front()->path, path);
  EXPECT_EQ(store_->database().ownChanges(), before);
  EXPECT_EQ(store_->status(), "Imported 1");
}

TEST_F(RulesTest, FilingThatFailedIsTriedAgainWithTheNextPass) {
  add("a.png", "text");
  home_.folder().write("Pictures/Nimbrel", "a file where the library should be");
  apply({{.containsText = "text", .fileToLibrary = true}});
  EXPECT_EQ(store_->inboxCount(), 1U);
  std::filesystem::remove(home_.path("Pictures/Nimbrel"));
  store_->applyAutomationRules(store_->shots());
  EXPECT_EQ(store_->inboxCount(), 0U);
}

TEST_F(RulesTest, ASecondPassWritesNothingAndTellsNothing) {
  add("a.png", "text");
  apply({{.containsText = "text", .tag = "t", .project = "p", .favorite = true, .fileToLibrary = true}});
  const auto before = store_->database().ownChanges();
  QSignalSpy shots(store_.get(), &Store::shotsChanged);
  store_->applyAutomationRules(store_->shots());
  store_->applyAutomationRules(store_->shots());
  EXPECT_EQ(store_->database().ownChanges(), before);
  EXPECT_EQ(shots.count(), 0);
}

TEST_F(RulesTest, ACommaInTagOrProjectBecomesABlankAndTheTagIsAddedOnce) {
  add("a.png", "text");
  apply({{.containsText = "text", .tag = ",x,y,", .project = "p,q"}, {.containsText = "text", .tag = " , "}});
  EXPECT_THAT(tagsOf("a.png"), ElementsAre("x y", "project:p q"));
  EXPECT_THAT(projects(), ElementsAre("p q"));
  const auto before = store_->database().ownChanges();
  store_->applyAutomationRules(store_->shots());
  EXPECT_EQ(store_->database().ownChanges(), before);
}

TEST_F(RulesTest, ARuleThatIsNewLooksAtShotsThatFormerOnesHadNothingToDoFor) {
  add("a.png", "text");
  apply({{.containsText = "something else", .tag = "t"}});
  EXPECT_THAT(tagsOf("a.png"), IsEmpty());
  apply({{.containsText = "something else", .tag = "t"}, {.containsText = "text", .tag = "u"}});
  EXPECT_THAT(tagsOf("a.png"), ElementsAre("u"));
}

TEST_F(RulesTest, AShotThatChangedIsLookedAtAgain) {
  add("a.png", "text");
  apply({{.containsText = "later", .tag = "t"}});
  store_->database().setOCR(shotNamed(*store_, "a.png")->id, "read later", {});
  store_->reload();
  store_->applyAutomationRules(store_->shots());
  EXPECT_THAT(tagsOf("a.png"), ElementsAre("t"));
}

TEST_F(RulesTest, ATagThatTheUserTookAwayComesBack) {
  add("a.png", "text");
  apply({{.containsText = "text", .tag = "t"}});
  store_->database().setTags(shotNamed(*store_, "a.png")->id, {});
  store_->reload();
  store_->applyAutomationRules(store_->shots());
  EXPECT_THAT(tagsOf("a.png"), ElementsAre("t"));
}

TEST_F(RulesTest, OnlyTheShotsOfTheListAreLookedAt) {
  add("a.png", "text");
  add("b.png", "text");
  store_->settings().automationRules.set({{.id = QUuid::createUuid(), .containsText = "text", .tag = "t"}});
  store_->applyAutomationRules({shotNamed(*store_, "b.png")});
  EXPECT_THAT(tagsOf("a.png"), IsEmpty());
  EXPECT_THAT(tagsOf("b.png"), ElementsAre("t"));
}

TEST_F(RulesTest, AFavouriteThatCannotBeWrittenIsLoggedAndThePassGoesOn) {
  add("a.png", "text");
  const Testing::LogRecorder log;
  sqlite3* other = nullptr;
  ASSERT_EQ(sqlite3_open(home_.path(".local/share/Nimbrel/nimbrel.sqlite").c_str(), &other), SQLITE_OK);
  ASSERT_EQ(
      sqlite3_exec(other, "CREATE TRIGGER fault BEFORE UPDATE OF favorite ON shots BEGIN DELETE FROM missing; END",
                   nullptr, nullptr, nullptr),
      SQLITE_OK);
  // A connection notices that with the next row it reads.
  static_cast<void>(store_->database().ignoredPaths());
  apply({{.containsText = "text", .tag = "t", .project = "p", .favorite = true}});
  sqlite3_close(other);
  EXPECT_THAT(log.lines(), ::testing::Contains(
                               ::testing::AllOf(::testing::StartsWith("Nimbrel SQL error: "),
                                                ::testing::EndsWith(" — UPDATE shots SET favorite = ? WHERE id = ?"))));
  EXPECT_THAT(tagsOf("a.png"), ElementsAre("t", "project:p"));
  EXPECT_THAT(projects(), ElementsAre("p"));
}

}  // namespace
}  // namespace Nimbrel
