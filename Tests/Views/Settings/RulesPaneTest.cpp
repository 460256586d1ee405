#include "Views/Settings/SettingsViewFixture.h"

#include "Views/Settings/ProjectPicker.h"
#include "Views/Settings/RuleGroup.h"

#include <QApplication>
#include <QWheelEvent>

#include <algorithm>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::IsEmpty;
using ::testing::SizeIs;

AutomationRule ruleNamed(const std::string& name) { return {.id = QUuid::createUuid(), .name = name}; }

auto isNamed(const std::string& name) { return Field("name", &AutomationRule::name, name); }

class RulesPaneTest : public Testing::SettingsViewFixture {
 protected:
  [[nodiscard]] const std::vector<AutomationRule>& rules() const { return settings().automationRules(); }
  [[nodiscard]] RuleGroup& group(std::size_t index) const { return *all<RuleGroup>("rule").at(index); }
  template <class Widget>
  [[nodiscard]] static Widget& in(const RuleGroup& group, const char* name) {
    auto* found = group.findChild<Widget*>(QStringLiteral("settings.rule.") + QString::fromLatin1(name));
    if (found == nullptr) throw std::runtime_error(std::string("no widget named ") + name);
    return *found;
  }
  /// The names of the rules as they stand on the screen.
  [[nodiscard]] std::vector<std::string> fromTheTop() const {
    auto groups = all<RuleGroup>("rule");
    std::ranges::sort(groups, {}, [](const RuleGroup* shown) { return shown->y(); });
    std::vector<std::string> names;
    for (const auto* shown : groups) names.push_back(shown->rule().name);
    return names;
  }
  [[nodiscard]] static bool isOpen(const RuleGroup& group) {
    const auto* tag = group.findChild<QLineEdit*>(QStringLiteral("settings.rule.tag"));
    return tag != nullptr && tag->isVisibleTo(&group);
  }
  /// Opens it to press its button.
  static void removeBy(RuleGroup& group) {
    group.setOpen(true);
    in<QAbstractButton>(group, "remove").click();
  }
  static void write(QLineEdit& field, const char* text) {
    field.selectAll();
    QTest::keyClicks(&field, QString::fromUtf8(text));
  }
};

TEST_F(RulesPaneTest, EveryEditIsStoredAtOnce) {
  settings().projects.set({"Launch", "Station"});
  settings().automationRules.set({ruleNamed("a")});
  show();
  auto& first = group(0);
  first.setOpen(true);
  write(in<QLineEdit>(first, "name"), "Receipts");
  write(in<QLineEdit>(first, "containsText"), "invoice");
  write(in<QLineEdit>(first, "source"), "Mail");
  write(in<QLineEdit>(first, "tag"), "money");
  in<QCheckBox>(first, "favorite").click();
  in<QCheckBox>(first, "fileToLibrary").click();
  in<QCheckBox>(first, "enabled").click();
  Q_EMIT in<ProjectPicker>(first, "project").activated(2);
  const AutomationRule expected{.id = rules().front().id,
                                .name = "Receipts",
                                .containsText = "invoice",
                                .source = "Mail",
                                .tag = "money",
                                .project = "Station",
                                .favorite = true,
                                .fileToLibrary = true,
                                .enabled = false};
  EXPECT_THAT(rules(), ElementsAre(expected));
}

TEST_F(RulesPaneTest, TheCursorStaysWhereItIsWhileAFieldIsWrittenIn) {
  settings().automationRules.set({ruleNamed("ac")});
  show();
  auto& name = in<QLineEdit>(group(0), "name");
  name.setCursorPosition(1);
  QTest::keyClicks(&name, QStringLiteral("b"));
  EXPECT_EQ(rules().front().name, "abc");
  EXPECT_EQ(name.cursorPosition(), 2);
}

TEST_F(RulesPaneTest, ANewRuleIsEmptyAndOpen) {
  settings().automationRules.set({ruleNamed("a")});
  show();
  click("addRule");
  ASSERT_THAT(rules(), SizeIs(2));
  const auto& added = rules().back();
  EXPECT_EQ(added, (AutomationRule{.id = added.id, .name = "New Rule"}));
  EXPECT_FALSE(added.id.isNull());
  EXPECT_TRUE(added.enabled);
  EXPECT_TRUE(isOpen(group(1)));
  EXPECT_TRUE(Testing::waitUntil([this] { return in<QLineEdit>(group(1), "name").hasFocus(); }));
}

TEST_F(RulesPaneTest, AGroupShowsItsContentWhileItIsOpen) {
  settings().automationRules.set({ruleNamed("a")});
  show();
  auto& opener = in<SymbolButton>(group(0), "opener");
  EXPECT_FALSE(isOpen(group(0)));
  EXPECT_EQ(opener.accessibleName(), QStringLiteral("Show Rule"));
  opener.click();
  EXPECT_TRUE(isOpen(group(0)));
  EXPECT_EQ(opener.symbol(), QStringLiteral("chevron.down"));
  EXPECT_EQ(opener.accessibleName(), QStringLiteral("Hide Rule"));
  opener.click();
  EXPECT_FALSE(isOpen(group(0)));
}

TEST_F(RulesPaneTest, TabGoesThroughARuleThatWasOpenedLater) {
  settings().automationRules.set({ruleNamed("a"), ruleNamed("b")});
  show();
  group(0).setOpen(true);
  auto& name = in<QLineEdit>(group(0), "name");
  name.setFocus(Qt::TabFocusReason);
  QTest::keyClick(&name, Qt::Key_Tab);
  EXPECT_EQ(QApplication::focusWidget(), &in<QLineEdit>(group(0), "containsText"));
  auto& remove = in<QAbstractButton>(group(0), "remove");
  remove.setFocus(Qt::TabFocusReason);
  QTest::keyClick(&remove, Qt::Key_Tab);
  EXPECT_EQ(QApplication::focusWidget(), &in<SymbolButton>(group(1), "opener"));
}

TEST_F(RulesPaneTest, RulesOfTheSameNameAreToldApart) {
  settings().automationRules.set({ruleNamed("a"), ruleNamed("a")});
  const auto first = rules().front().id;
  show();
  removeBy(group(1));
  ASSERT_THAT(rules(), SizeIs(1));
  EXPECT_EQ(rules().front().id, first);
  EXPECT_EQ(group(0).rule().id, first);
}

TEST_F(RulesPaneTest, RulesThatAreNotRemovedStayAsTheyAre) {
  settings().automationRules.set({ruleNamed("a"), ruleNamed("b"), ruleNamed("c")});
  show();
  group(2).setOpen(true);
  removeBy(group(0));
  EXPECT_THAT(rules(), ElementsAre(isNamed("b"), isNamed("c")));
  EXPECT_FALSE(isOpen(group(0)));
  EXPECT_TRUE(isOpen(group(1)));
}

TEST_F(RulesPaneTest, WhatAnotherProcessMakesOfTheListAppears) {
  const auto a = ruleNamed("a");
  const auto b = ruleNamed("b");
  settings().automationRules.set({a, b});
  show();
  settings().automationRules.set({b, ruleNamed("c"), a});
  EXPECT_TRUE(Testing::waitUntil([this] { return fromTheTop() == std::vector<std::string>{"b", "c", "a"}; }));
  settings().automationRules.set({});
  EXPECT_THAT(all<RuleGroup>("rule"), IsEmpty());
}

TEST_F(RulesPaneTest, ThePickerOffersNoneAndTheProjects) {
  auto rule = ruleNamed("a");
  rule.project = "Station";
  settings().projects.set({"Launch", "Station"});
  settings().automationRules.set({rule});
  show();
  group(0).setOpen(true);
  const auto& picker = in<ProjectPicker>(group(0), "project");
  ASSERT_EQ(picker.count(), 3);
  EXPECT_EQ(picker.itemText(0), QStringLiteral("None"));
  EXPECT_EQ(picker.currentText(), QStringLiteral("Station"));
  settings().projects.set({"Station", "Zone"});
  EXPECT_EQ(picker.currentText(), QStringLiteral("Station"));
  EXPECT_EQ(picker.itemText(2), QStringLiteral("Zone"));
}

TEST_F(RulesPaneTest, AProjectThatIsGoneIsStillNamedAndKept) {
  auto rule = ruleNamed("a");
  rule.project = "Gone";
  settings().automationRules.set({rule});
  show();
  group(0).setOpen(true);
  auto& picker = in<ProjectPicker>(group(0), "project");
  EXPECT_EQ(picker.currentIndex(), -1);
  EXPECT_EQ(picker.placeholderText(), QStringLiteral("Gone"));
  in<QCheckBox>(group(0), "favorite").click();
  EXPECT_EQ(rules().front().project, "Gone");
  Q_EMIT picker.activated(0);
  EXPECT_EQ(rules().front().project, "");
  EXPECT_EQ(picker.currentIndex(), 0);
}

TEST_F(RulesPaneTest, TheWheelNeverChangesAProject) {
  settings().projects.set({"Launch"});
  settings().automationRules.set({ruleNamed("a")});
  show();
  group(0).setOpen(true);
  auto& picker = in<ProjectPicker>(group(0), "project");
  QWheelEvent turn(QPointF(5, 5), picker.mapToGlobal(QPointF(5, 5)), {}, QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                   Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(&picker, &turn);
  EXPECT_EQ(picker.currentIndex(), 0);
  EXPECT_EQ(rules().front().project, "");
}

TEST_F(RulesPaneTest, RulesAreAppliedToAllShots) {
  store_->importFiles({home_.addFile(home_.desktop("Screenshot 1.png"))});
  store_->database().setOCR(store_->shots().front()->id, "Invoice 17", {});
  store_->reload();
  show();
  EXPECT_FALSE(isEnabled("applyRules")) << "there are none";
  auto rule = ruleNamed("a");
  rule.containsText = "invoice";
  rule.tag = "money";
  settings().automationRules.set({rule});
  ASSERT_TRUE(isEnabled("applyRules"));
  click("applyRules");
  EXPECT_THAT(store_->shots().front()->tags, ElementsAre("money"));
  EXPECT_EQ(store_->status(), "Applied automatic rules");
}

TEST_F(RulesPaneTest, AGroupIsCalledAsItsRuleIs) {
  settings().automationRules.set({ruleNamed("a"), ruleNamed("b")});
  show();
  EXPECT_EQ(group(1).accessibleName(), QStringLiteral("b"));
  write(in<QLineEdit>(group(1), "name"), "Receipts");
  EXPECT_EQ(group(1).accessibleName(), QStringLiteral("Receipts"));
}

TEST_F(RulesPaneTest, ALongConditionIsNotCutByAnEdit) {
  auto rule = ruleNamed("a");
  rule.containsText = std::string(40'000, 'x');
  settings().automationRules.set({rule});
  show();
  group(0).setOpen(true);
  auto& text = in<QLineEdit>(group(0), "containsText");
  text.setCursorPosition(0);
  QTest::keyClicks(&text, QStringLiteral("y"));
  EXPECT_EQ(rules().front().containsText, "y" + rule.containsText);
}

}  // namespace
}  // namespace Nimbrel
