#include "Support/Waiting.h"
#include "Views/Shared/BusyRing.h"
#include "Views/Shared/Buttons.h"
#include "Views/Shared/Chip.h"
#include "Views/Shared/ElidedLabel.h"
#include "Views/Shared/FlowLayout.h"
#include "Views/Shared/GroupedForm.h"
#include "Views/Shared/Measures.h"
#include "Views/Shared/Painting.h"
#include "Views/Shared/SegmentedControl.h"
#include "Views/Shared/SheetDialog.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QLineEdit>
#include <QProxyStyle>
#include <QSignalSpy>
#include <QTest>

namespace Nimbrel {

namespace {

QAccessible::Role roleOf(QWidget& widget) { return QAccessible::queryAccessibleInterface(&widget)->role(); }

TEST(HairlineTest, IsAWholeNumberOfPixelsAtEveryScale) {
  EXPECT_DOUBLE_EQ(Painting::hairlineWidth(1), 1);
  EXPECT_DOUBLE_EQ(Painting::hairlineWidth(1.25) * 1.25, 1);
  EXPECT_DOUBLE_EQ(Painting::hairlineWidth(1.5) * 1.5, 2);
  EXPECT_DOUBLE_EQ(Painting::hairlineWidth(2) * 2, 2);
}

TEST(HairlineTest, FillsWholePixelsAtABrokenPlaceAndScale) {
  QImage image(20, 20, QImage::Format_ARGB32_Premultiplied);
  image.setDevicePixelRatio(1.25);
  image.fill(Qt::white);
  QPainter painter(&image);
  Painting::horizontalRule(painter, QRectF(0, 5, 16, 1), Qt::black);
  painter.end();
  int dark = 0;
  for (int y = 0; y < image.height(); ++y) {
    const auto color = image.pixelColor(8, y);
    EXPECT_TRUE(color == QColor(Qt::black) || color == QColor(Qt::white)) << y;
    dark += color == QColor(Qt::black) ? 1 : 0;
  }
  EXPECT_EQ(dark, 1);
}

TEST(NimbrelStyleTest, TheApplicationsPaletteFollowsTheTheme) {
  const auto window = [] { return QApplication::palette().color(QPalette::Window); };
  Theme::shared().setAppearance({.scheme = Appearance::Scheme::Dark, .accent = {}, .hasHighContrast = false});
  EXPECT_TRUE(Testing::waitUntil([&] { return window() == QColor(0x1F, 0x22, 0x26); }));
  Theme::shared().setAppearance({});
  EXPECT_TRUE(Testing::waitUntil([&] { return window() == QColor(0xF6, 0xF7, 0xF9); }));
}

TEST(ButtonTest, HeightsAreThoseOfThePage) {
  QPushButton button(QStringLiteral("Cancel"));
  EXPECT_EQ(button.sizeHint().height(), 28);
  setButtonSize(button, ButtonSize::Small);
  EXPECT_EQ(button.sizeHint().height(), 24);
  EXPECT_EQ(IconButton(QStringLiteral("pin"), QStringLiteral("Pin")).sizeHint().height(), 42);
  EXPECT_EQ(QLineEdit().sizeHint().height(), 28);
}

TEST(ButtonTest, ASymbolAloneHasItsTitleAsNameAndTooltip) {
  IconButton button(QStringLiteral("pin"), QStringLiteral("Pin to Screen"));
  EXPECT_EQ(button.accessibleName(), QStringLiteral("Pin to Screen"));
  EXPECT_EQ(button.toolTip(), QStringLiteral("Pin to Screen"));
  EXPECT_EQ(roleOf(button), QAccessible::PushButton);
}

class FocusRingTest : public ::testing::Test {
 protected:
  FocusRingTest() {
    auto* row = new QHBoxLayout(&window_);
    row->setContentsMargins(20, 20, 20, 20);
    for (QWidget* widget : {static_cast<QWidget*>(field_), static_cast<QWidget*>(button_)}) row->addWidget(widget);
    window_.show();
    window_.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window_));
    window_.setFocus();
  }
  /// The ring that is there to stay; null without one.
  [[nodiscard]] QWidget* ring() const {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return window_.findChild<QWidget*>(QStringLiteral("focusRing"));
  }

  QWidget window_;
  QLineEdit* field_ = new QLineEdit;
  QPushButton* button_ = new QPushButton(QStringLiteral("Save"));
};

TEST_F(FocusRingTest, ShowsAroundAButtonThatTheKeyboardReached) {
  button_->setFocus(Qt::TabFocusReason);
  ASSERT_NE(ring(), nullptr);
  EXPECT_EQ(ring()->geometry(), button_->geometry().adjusted(-4, -4, 4, 4));
  button_->clearFocus();
  EXPECT_EQ(ring(), nullptr);
}

TEST_F(FocusRingTest, IsNotDeletedUnderAWindowThatHidesItsChildren) {
  field_->setFocus(Qt::TabFocusReason);
  ASSERT_NE(ring(), nullptr);
  const QSignalSpy destroyed(ring(), &QObject::destroyed);
  window_.close();
  EXPECT_EQ(destroyed.count(), 0);
  EXPECT_EQ(ring(), nullptr);
}

TEST_F(FocusRingTest, AClickShowsNone) {
  button_->setFocus(Qt::MouseFocusReason);
  EXPECT_EQ(ring(), nullptr);
}

TEST_F(FocusRingTest, AFieldHasItsHaloHoweverItWasReached) {
  field_->setFocus(Qt::MouseFocusReason);
  ASSERT_NE(ring(), nullptr);
  EXPECT_EQ(ring()->geometry(), field_->geometry().adjusted(-2, -2, 2, 2));
}

TEST_F(FocusRingTest, GoesWithItsControl) {
  button_->setFocus(Qt::TabFocusReason);
  delete button_;
  EXPECT_EQ(ring(), nullptr);
}

TEST_F(FocusRingTest, GoesWithTheWindowThatIsClosedByKeyboard) {
  button_->setFocus(Qt::TabFocusReason);
  ASSERT_NE(ring(), nullptr);
  window_.close();
  EXPECT_EQ(ring(), nullptr);
}

TEST(SegmentedControlTest, TellsWhatTheUserChoosesAndNotWhatTheProgramDoes) {
  SegmentedControl control;
  const QSignalSpy chosen(&control, &SegmentedControl::chosenChanged);
  for (const auto& title : {QStringLiteral("Arrow"), QStringLiteral("Step"), QStringLiteral("Crop")}) {
    control.addSegment(QStringLiteral("crop"), title);
  }
  EXPECT_EQ(control.chosen(), 0);
  control.choose(2);
  control.choose(7);
  EXPECT_EQ(control.chosen(), 2);
  EXPECT_EQ(chosen.count(), 0);
  QTest::mouseClick(control.segment(1), Qt::LeftButton);
  ASSERT_EQ(chosen.count(), 1);
  EXPECT_EQ(chosen.front().front().toInt(), 1);
  EXPECT_EQ(roleOf(*control.segment(1)), QAccessible::RadioButton);
  EXPECT_EQ(control.segment(1)->accessibleName(), QStringLiteral("Step"));
}

TEST(ChipTest, AsksToBeRemoved) {
  Chip chip(QStringLiteral("reference"));
  const QSignalSpy asked(&chip, &Chip::removeRequested);
  chip.removeButton()->click();
  EXPECT_EQ(asked.count(), 1);
  EXPECT_EQ(chip.removeButton()->accessibleName(), QStringLiteral("Remove reference"));
  EXPECT_EQ(Chip(QStringLiteral("x"), Chip::Kind::Fixed).removeButton(), nullptr);
}

class FlowLayoutTest : public ::testing::Test {
 protected:
  QWidget* add(int width) {
    auto* widget = new QWidget(&window_);
    widget->setFixedSize(width, 20);
    flow_->addWidget(widget);
    return widget;
  }

  QWidget window_;
  FlowLayout* flow_ = new FlowLayout(6, &window_);
};

TEST_F(FlowLayoutTest, BeginsANewRowWhereOneIsFull) {
  const auto* first = add(40);
  const auto* second = add(50);
  const auto* third = add(10);
  EXPECT_EQ(flow_->heightForWidth(200), 20);
  EXPECT_EQ(flow_->heightForWidth(95), 46);
  flow_->setGeometry(QRect(0, 0, 95, 60));
  EXPECT_EQ(first->pos(), QPoint(0, 0));
  EXPECT_EQ(second->pos(), QPoint(0, 26));
  EXPECT_EQ(third->pos(), QPoint(56, 26));
}

TEST_F(FlowLayoutTest, BeginsAtTheRightInScriptsFromThere) {
  window_.setLayoutDirection(Qt::RightToLeft);
  const auto* first = add(40);
  flow_->setGeometry(QRect(0, 0, 100, 60));
  EXPECT_EQ(first->pos(), QPoint(60, 0));
}

TEST(ElidedLabelTest, NothingInATextSteersWhatIsAroundIt) {
  EXPECT_EQ(oneLine(QStringLiteral("a\nb\tc")), QStringLiteral("a b c"));
  EXPECT_EQ(oneLine(QStringLiteral("exe\u202Egnp.txt")), QStringLiteral("exe\uFFFDgnp.txt"));
  EXPECT_EQ(oneLine(QStringLiteral("\u2066x\u2069\u2028y")), QStringLiteral("\uFFFDx\uFFFD y"));
}

TEST(ElidedLabelTest, ShortensInItsMiddleAndTellsTheWhole) {
  ElidedLabel label(TextStyle::Body, Token::Text, Qt::ElideMiddle);
  const auto name = QStringLiteral("Screenshot <b>2026</b>-11-22 at 04.31.png");
  label.setFullText(name);
  label.show();
  label.resize(120, 20);
  EXPECT_TRUE(label.text().contains(QChar(0x2026)));
  EXPECT_TRUE(label.text().endsWith(QStringLiteral("png")));
  EXPECT_EQ(label.toolTip(), name.toHtmlEscaped());
  EXPECT_EQ(label.accessibleName(), name);
  label.resize(label.sizeHint());
  EXPECT_EQ(label.text(), name);
  EXPECT_TRUE(label.toolTip().isEmpty());
}

TEST(CountLabelTest, NothingIsShownForNone) {
  CountLabel label;
  label.setCount(284);
  EXPECT_EQ(label.text(), QStringLiteral("284"));
  label.setCount(0);
  EXPECT_TRUE(label.text().isEmpty());
}

class AnimationStyle final : public QProxyStyle {
 public:
  explicit AnimationStyle(int duration) : duration_(duration) {}
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* answer) const override {
    return hint == SH_Widget_Animation_Duration ? duration_ : QProxyStyle::styleHint(hint, option, widget, answer);
  }

 private:
  int duration_;
};

TEST(BusyRingTest, TurnsWhileItIsSeenUnlessAnimationsAreOff) {
  AnimationStyle lively(200);
  AnimationStyle still(0);
  BusyRing ring;
  ring.setStyle(&lively);
  ring.show();
  EXPECT_TRUE(ring.isTurning());
  ring.hide();
  EXPECT_FALSE(ring.isTurning());
  ring.setStyle(&still);
  ring.show();
  EXPECT_FALSE(ring.isTurning());
}

TEST(GroupedFormTest, RowsNameTheirControlsAndGrowWithTheText) {
  GroupedForm form;
  form.addSection(QStringLiteral("Library"));
  auto* toggle = form.addToggle(QStringLiteral("Automatic"), QStringLiteral("Into folders by day."));
  EXPECT_EQ(toggle->accessibleName(), QStringLiteral("Automatic"));
  EXPECT_EQ(toggle->accessibleDescription(), QStringLiteral("Into folders by day."));
  form.resize(400, form.sizeHint().height());
  form.show();
  EXPECT_GE(toggle->parentWidget()->height(), Measures::formRowHeight);
  EXPECT_GT(toggle->x(), 300);
  form.setLayoutDirection(Qt::RightToLeft);
  form.layout()->activate();
  QCoreApplication::sendPostedEvents();
  EXPECT_LT(toggle->x(), 60);
}

TEST(GroupedFormTest, TheRulesBetweenRowsTakeNoHeight) {
  GroupedForm form;
  const auto* first = form.addToggle(QStringLiteral("One"))->parentWidget();
  const auto* second = form.addToggle(QStringLiteral("Two"))->parentWidget();
  form.resize(400, form.sizeHint().height());
  form.show();
  EXPECT_EQ(second->y(), first->y() + Measures::formRowHeight);
  const auto image = form.grab().toImage();
  const auto corner = second->mapTo(&form, QPoint());
  EXPECT_EQ(image.pixelColor(corner + QPoint(200, 0)), themeColor(Token::Separator));
  EXPECT_EQ(image.pixelColor(corner + QPoint(Measures::rowPadding - 1, 0)), themeColor(Token::Group));
}

TEST(FormSectionTest, RowsComeAndGoAmongOthers) {
  FormSection section;
  auto* first = new QWidget;
  auto* middle = new QLabel(QStringLiteral("middle"));
  auto* last = new QWidget;
  section.addWidgetRow(first);
  section.addBareRow(last);
  section.show();
  section.insertWidgetRow(1, middle);
  ASSERT_TRUE(Testing::waitUntil([middle] { return middle->isVisible() && middle->parentWidget()->y() > 0; }));
  EXPECT_GT(middle->parentWidget()->y(), first->parentWidget()->y());
  EXPECT_GT(last->y(), middle->parentWidget()->y());
  const QSignalSpy gone(middle, &QObject::destroyed);
  section.removeRow(1);
  EXPECT_EQ(gone.count(), 0) << "it may be what asked for it";
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(gone.count(), 1);
  EXPECT_TRUE(Testing::waitUntil([&] { return last->y() == first->parentWidget()->geometry().bottom() + 1; }));
}

TEST(GroupedFormTest, LargerTextIsNotClipped) {
  const auto former = interfaceFont();
  auto font = former;
  font.setPointSizeF(15);
  setInterfaceFont(font);
  {
    GroupedForm form;
    auto* toggle = form.addToggle(QStringLiteral("Automatic"), QStringLiteral("Into folders by day."));
    form.resize(400, form.minimumSizeHint().height());
    form.show();
    EXPECT_GE(toggle->parentWidget()->height(), 48);
    for (const auto* label : form.findChildren<QLabel*>()) {
      EXPECT_GE(label->height(), label->fontMetrics().height()) << label->text().toStdString();
    }
  }
  EXPECT_EQ(QPushButton(QStringLiteral("Cancel")).sizeHint().height(), 42);
  setInterfaceFont(former);
}

TEST(SheetDialogTest, CancelStandsLeftOfTheDefaultButtonAndEscapeAnswersIt) {
  QWidget window;
  SheetDialog sheet(QStringLiteral("Purge Old Shots"), &window);
  auto* purge = sheet.addDefaultButton(QStringLiteral("Purge"));
  auto* cancel = sheet.addCancelButton(QStringLiteral("Cancel"));
  const QSignalSpy rejected(&sheet, &QDialog::rejected);
  const QSignalSpy purged(purge, &QPushButton::clicked);
  sheet.open();
  EXPECT_EQ(sheet.windowModality(), Qt::WindowModal);
  EXPECT_EQ(sheet.minimumSize(), sheet.maximumSize());
  EXPECT_LT(cancel->geometry().right(), purge->geometry().left());
  QTest::keyClick(&sheet, Qt::Key_Return);
  EXPECT_EQ(purged.count(), 1);
  QTest::keyClick(&sheet, Qt::Key_Escape);
  EXPECT_EQ(rejected.count(), 1);
}

}  // namespace

}  // namespace Nimbrel
