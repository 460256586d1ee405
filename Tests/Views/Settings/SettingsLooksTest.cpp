#include "Views/Settings/SettingsView.h"

#include "Views/Settings/RuleGroup.h"
#include "Views/Shared/TextStyles.h"
#include "Views/Sheets/SheetFixture.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QScrollArea>
#include <QTest>

namespace Nimbrel {
namespace {

/// The settings as they are drawn, with something in every list.
class SettingsLooks : public Testing::SheetFixture {
 protected:
  SettingsLooks() {
    auto& settings = store_->settings();
    settings.libraryRoot.set("/home/mira/Pictures/Nimbrel");
    settings.captureHotkey.set(true);
    settings.quickFindHotkey.set(true);
    settings.sources.set({"/home/mira/Pictures/Screenshots", "/home/mira/Desktop"});
    settings.projects.set({"Halden Launch", "Ground Station"});
    settings.automationRules.set({{.id = QUuid::createUuid(),
                                   .name = "Receipts to the budget",
                                   .containsText = "invoice",
                                   .tag = "invoice",
                                   .project = "Halden Launch",
                                   .fileToLibrary = true},
                                  {.id = QUuid::createUuid(), .name = "New Rule", .enabled = false}});
    view_ = new SettingsView(*store_, {}, &window_);
    view_->findChild<RuleGroup*>()->setOpen(true);
    view_->findChild<QLineEdit*>(QStringLiteral("settings.passphrase"))->setText(QStringLiteral("correct ho"));
  }
  ~SettingsLooks() override { delete view_; }

  void show() {
    view_->raiseWindow();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(view_));
    view_->setFocus();
    QCoreApplication::sendPostedEvents();
  }
  [[nodiscard]] QColor colorAt(const QWidget& widget, QPoint place) const {
    return view_->grab().toImage().pixelColor(widget.mapTo(view_, place) * view_->devicePixelRatio());
  }

  SettingsView* view_ = nullptr;
};

TEST_F(SettingsLooks, TheWindowIsDrawnInTheTokensOfTheTheme) {
  show();
  keepPictures(*view_, QStringLiteral("settings"));
  EXPECT_EQ(colorAt(*view_, {4, 60}), themeColor(Token::Window));
  const auto& scroll = *view_->findChild<QScrollArea*>();
  const auto& pane = *view_->findChild<QWidget*>(QStringLiteral("settings.library"));
  EXPECT_EQ(pane.mapTo(view_, QPoint()).x(), 20);
  EXPECT_EQ(colorAt(pane, {8, 40}), themeColor(Token::Group));
  EXPECT_EQ(scroll.viewport()->width() - (pane.x() + pane.width()), 8) << "the bar has the rest of the margin";
}

TEST_F(SettingsLooks, FieldsBeginBelowEachOther) {
  show();
  const auto begin = [this](const char* name) {
    return view_->findChild<QWidget*>(QLatin1String(name))->mapTo(view_, QPoint()).x();
  };
  for (const char* name : {"settings.rule.containsText", "settings.rule.project", "settings.passphrase"}) {
    EXPECT_EQ(begin(name), 179) << name;
  }
}

TEST_F(SettingsLooks, FromRightToLeftAndWithLargerTextAllOfItStandsInTheWindow) {
  QApplication::setLayoutDirection(Qt::RightToLeft);
  const auto former = interfaceFont();
  auto font = former;
  font.setPointSizeF(15);
  setInterfaceFont(font);
  SettingsView large(*store_, {}, &window_);
  large.findChild<RuleGroup*>()->setOpen(true);
  large.setFixedHeight(2400);
  large.raiseWindow();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&large));
  keepPictures(large, QStringLiteral("settings-large-from-right"));
  for (const auto* control : large.findChildren<QAbstractButton*>()) {
    if (!control->isVisible()) continue;
    const QRect place(control->mapTo(&large, QPoint()), control->size());
    EXPECT_TRUE(large.rect().contains(place)) << control->objectName().toStdString();
    EXPECT_GE(control->width(), control->minimumSizeHint().width()) << control->objectName().toStdString();
  }
  setInterfaceFont(former);
  QApplication::setLayoutDirection(Qt::LeftToRight);
}

TEST_F(SettingsLooks, TheWholeFormIsDrawnInTheTokensOfTheTheme) {
  view_->setFixedHeight(1600);
  show();
  keepPictures(*view_, QStringLiteral("settings-tall"));
  const auto& field = *view_->findChild<QLineEdit*>(QStringLiteral("settings.rule.tag"));
  EXPECT_EQ(colorAt(field, {4, field.height() / 2}), themeColor(Token::Base));
  const auto& toggle = *view_->findChild<QCheckBox*>(QStringLiteral("settings.captureHotkey"));
  EXPECT_EQ(colorAt(toggle, {8, toggle.height() / 2}), themeColor(Token::AccentFill));
}

}  // namespace
}  // namespace Nimbrel
