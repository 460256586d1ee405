#include "Views/Inspector/InspectorFixture.h"
#include "Views/Inspector/InspectorPicture.h"
#include "Views/Shared/Chip.h"
#include "Views/Shared/ElidedLabel.h"
#include "Views/Shared/TextStyles.h"

#include <QScrollArea>
#include <QScrollBar>

#include <filesystem>

namespace Nimbrel {
namespace {

class InspectorBadInput : public Testing::InspectorFixture {
 protected:
  void expectNoScrollingToTheSide() const { EXPECT_EQ(at<QScrollArea>("scroll").horizontalScrollBar()->maximum(), 0); }
  /// What the field shows while nobody edits it.
  [[nodiscard]] QImage pictureOf(const std::string& name) const { return at(name).grab().toImage(); }
};

TEST_F(InspectorBadInput, ANameWithLineFeedsAndMarksOfDirectionStaysAsItIsAndSteersNothing) {
  const std::string name = "a\nb\u202Egnp.exe\u2069.png";
  show(add(name));
  EXPECT_EQ(field("name").text().toStdString(), name);
  const auto shown = pictureOf("name");
  field("name").setText(oneLine(field("name").text()));
  EXPECT_EQ(pictureOf("name"), shown);
  EXPECT_TRUE(std::filesystem::exists(home_.desktop(name)));
}

TEST_F(InspectorBadInput, ANameOf255BytesNeedsNoRoomToTheSide) {
  const std::string name = std::string(251, 'w') + ".png";
  show(add(name));
  EXPECT_EQ(field("name").text().toStdString(), name);
  expectNoScrollingToTheSide();
  click("favorite");
  EXPECT_TRUE(shot(name)->favorite);
}

TEST_F(InspectorBadInput, ReturnInAnOddNameThatWasNotEditedLeavesTheFileAlone) {
  const std::string name = "a\nb\u202E.png";
  show(add(name));
  submit("name");
  EXPECT_TRUE(std::filesystem::exists(home_.desktop(name)));
}

TEST_F(InspectorBadInput, CodesAndTagsAreShownOnOneLineInWhichNothingSteers) {
  const auto id = addRead("one.png", "")->id;
  const std::string odd = "first\nsecond\u202Ethird";
  const std::string oddCode = "first\u202Ethird";
  store_->database().setCodes(id, {oddCode, std::string(5000, 'w')});
  store_->database().setTags(id, {odd, std::string(5000, 'w')});
  store_->reload();
  show(shot("one.png"));
  EXPECT_EQ(at("code.0").findChild<ElidedLabel*>()->fullText(), QStringLiteral("first\uFFFDthird"));
  EXPECT_EQ(at("tagChips").findChild<ElidedLabel*>()->fullText(), QStringLiteral("first second\uFFFDthird"));
  expectNoScrollingToTheSide();
  click("code.0.copy");
  EXPECT_EQ(pasteboard_->text, oddCode) << "as it is";
}

TEST_F(InspectorBadInput, AShotWhoseFileIsGoneKeepsItsDetailsAndHasNoPicture) {
  const auto gone = addRead("one.png", "some text");
  std::filesystem::remove(gone->path);
  show(gone);
  EXPECT_TRUE(at<InspectorPicture>("preview").image().isNull());
  EXPECT_FALSE(at("preview").grab().isNull());
  type("name", QStringLiteral("other"));
  submit("name");
  EXPECT_THAT(store_->status(), ::testing::StartsWith("Rename failed: "));
  click("copyText");
  EXPECT_EQ(pasteboard_->text, "some text");
}

TEST_F(InspectorBadInput, ANoteOfAMegabyteIsSavedWhole) {
  std::string note;
  while (note.size() < 1'000'000) note += "some words of a line\n";
  const auto id = addRead("one.png", "")->id;
  store_->database().setNote(id, note);
  store_->reload();
  show(shot("one.png"));
  QTest::keyClick(&at("note"), Qt::Key_End, Qt::ControlModifier);
  QTest::keyClicks(&at("note"), QStringLiteral("!"));
  QTest::keyClick(&at("note"), Qt::Key_Return);
  EXPECT_EQ(store_->database().shot(id)->note, note + "!");
}

/// The desktop's font at 16 points, and at half again its usual size.
class InspectorLargeText : public Testing::InspectorFixture, public ::testing::WithParamInterface<int> {
 protected:
  InspectorLargeText() {
    auto font = former_;
    font.setPointSize(GetParam());
    setInterfaceFont(font);
    view_ = std::make_unique<InspectorView>(*store_, icons_, thumbs_, previews_);
    view_->resize(300, 900);
  }
  ~InspectorLargeText() override {
    view_.reset();
    setInterfaceFont(former_);
  }

  void expectNothingClipped() const {
    for (const auto* label : view_->findChildren<QLabel*>()) {
      if (!label->isVisible()) continue;
      EXPECT_GE(label->height(), label->fontMetrics().height()) << label->text().toStdString();
      EXPECT_GE(label->height(), label->wordWrap() ? label->heightForWidth(label->width()) : 0)
          << label->text().toStdString();
    }
    for (const auto* button : view_->findChildren<QAbstractButton*>()) {
      if (!button->isVisible() || button->text().isEmpty()) continue;
      EXPECT_GE(button->width(), button->fontMetrics().horizontalAdvance(button->text()))
          << button->text().toStdString();
      EXPECT_GE(button->height(), button->fontMetrics().height()) << button->text().toStdString();
    }
    for (const auto* field : view_->findChildren<QLineEdit*>()) {
      EXPECT_GE(field->height(), field->fontMetrics().height()) << field->objectName().toStdString();
    }
  }

 private:
  QFont former_ = interfaceFont();
};

TEST_P(InspectorLargeText, ClipsNothingOfTheForm) {
  store_->settings().protectSensitive.set(false);
  const auto id = addRead("one.png", "https://example.org/\n4 November 2026", {"Email", "Phone"})->id;
  store_->database().setShownName(id, "Vault");
  store_->database().setCodes(id, {"https://example.org/"});
  store_->database().setTags(id, {"reference", "another"});
  store_->reload();
  show(shot("one.png"));
  ASSERT_TRUE(Testing::waitUntil([this] { return isShown("found.1"); }));
  type("find", QStringLiteral("e"));
  QCoreApplication::sendPostedEvents();
  expectNothingClipped();
}

TEST_P(InspectorLargeText, ClipsNothingOfTheLockedPanel) {
  show(addRead("one.png", "password", {"Password"}));
  ASSERT_TRUE(isShown("locked"));
  expectNothingClipped();
}

INSTANTIATE_TEST_SUITE_P(Points, InspectorLargeText, ::testing::Values(15, 16));

}  // namespace
}  // namespace Nimbrel
