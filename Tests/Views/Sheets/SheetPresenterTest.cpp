#include "Views/Sheets/SheetPresenter.h"

#include "Views/Sheets/SheetFixture.h"

#include <QPushButton>
#include <QTest>

namespace Nimbrel {

namespace {

class SheetPresenterTest : public Testing::SheetFixture {
 protected:
  [[nodiscard]] QDialog* sheet(const char* name) const {
    for (auto* one : window_.findChildren<QDialog*>(QString::fromLatin1(name))) {
      if (one->isVisible()) return one;
    }
    return nullptr;
  }

  SheetPresenter* presenter_ = new SheetPresenter(*store_, thumbs_, previews_, window_);
};

TEST_F(SheetPresenterTest, WhatTheStoreSaysIsUpIsUp) {
  store_->setShowPurge(true);
  ASSERT_NE(sheet("purgeSheet"), nullptr);
  EXPECT_EQ(sheet("purgeSheet")->windowModality(), Qt::WindowModal);
  store_->setShowPurge(false);
  EXPECT_EQ(sheet("purgeSheet"), nullptr);
  store_->setShowCleanup(true);
  EXPECT_NE(sheet("cleanupSheet"), nullptr);
  store_->setShowCleanup(false);
  store_->setShowShrink(true);
  EXPECT_NE(sheet("shrinkSheet"), nullptr);
  store_->setShowShrink(false);
  store_->setShowDuplicates(true);
  EXPECT_NE(sheet("duplicatesSheet"), nullptr);
  store_->setShowDuplicates(false);
  EXPECT_EQ(sheet("duplicatesSheet"), nullptr);
}

TEST_F(SheetPresenterTest, ASheetThatWasClosedIsToldToTheStoreAndOpensAgain) {
  store_->setShowPurge(true);
  QTest::keyClick(sheet("purgeSheet"), Qt::Key_Escape);
  EXPECT_FALSE(store_->showPurge());
  store_->setShowPurge(true);
  EXPECT_NE(sheet("purgeSheet"), nullptr);
}

TEST_F(SheetPresenterTest, EachTimeTheSheetBeginsAnew) {
  add({.name = "a.png", .daysAgo = 40, .filed = false});
  store_->setShowCleanup(true);
  sheet("cleanupSheet")->reject();
  add({.name = "b.png", .daysAgo = 41, .filed = false});
  store_->setShowCleanup(true);
  EXPECT_EQ(footerOf(*sheet("cleanupSheet")), "2 selected");
}

}  // namespace

}  // namespace Nimbrel
