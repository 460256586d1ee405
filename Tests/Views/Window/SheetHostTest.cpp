#include "Views/Window/SheetHost.h"

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>

#include <memory>
#include <string>
#include <vector>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::IsNull;

/// Something that asks for a sheet.
struct Wish {
  bool isWanted = false;
  bool canBeMade = true;
  int dismissals = 0;
};

class SheetHostTest : public ::testing::Test {
 protected:
  void add(SheetHost& host, Wish& wish, const char* name) {
    host.add({.isWanted = [&wish] { return wish.isWanted; },
              .dismissed =
                  [&wish] {
                    ++wish.dismissals;
                    wish.isWanted = false;
                  },
              .make = [&wish, name, this](QWidget* window) -> QDialog* {
                parents_.push_back(window);
                if (!wish.canBeMade) return nullptr;
                auto* dialog = new QDialog(window);
                dialog->setObjectName(QString::fromUtf8(name));
                return dialog;
              }});
  }
  static void ask(SheetHost& host, Wish& wish) {
    wish.isWanted = true;
    host.look();
  }
  /// The name of the sheet that is up; empty when none is.
  [[nodiscard]] static std::string shownIn(const SheetHost& host) {
    const auto* dialog = host.shown();
    return dialog == nullptr || !dialog->isVisible() ? std::string() : dialog->objectName().toStdString();
  }
  static void deleteWhatWaits() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

  std::vector<QWidget*> parents_;  ///< what each sheet was to be a child of
  Wish first_;
  Wish second_;
};

TEST_F(SheetHostTest, OverAWindowASheetIsModalToIt) {
  QWidget window;
  window.show();
  SheetHost host(window);
  add(host, first_, "first");
  ask(host, first_);
  ASSERT_EQ(shownIn(host), "first");
  EXPECT_THAT(parents_, ElementsAre(&window));
  EXPECT_EQ(host.shown()->windowModality(), Qt::WindowModal);
}

TEST_F(SheetHostTest, WithoutAWindowASheetIsAWindowOfItsOwn) {
  SheetHost host(nullptr);
  add(host, first_, "first");
  const QSignalSpy opened(&host, &SheetHost::opened);
  ask(host, first_);
  ASSERT_EQ(shownIn(host), "first");
  EXPECT_EQ(opened.count(), 1);
  EXPECT_THAT(parents_, ElementsAre(IsNull()));
  EXPECT_TRUE(host.shown()->isWindow());
  EXPECT_FALSE(host.shown()->isModal()) << "what else the process shows can be used";
}

TEST_F(SheetHostTest, WithoutAWindowItFollowsWhatAsksForIt) {
  SheetHost host(nullptr);
  add(host, first_, "first");
  ask(host, first_);
  const QPointer<QDialog> dialog = host.shown();
  first_.isWanted = false;
  host.look();
  EXPECT_EQ(host.shown(), nullptr);
  EXPECT_EQ(first_.dismissals, 0);
  deleteWhatWaits();
  EXPECT_EQ(dialog, nullptr);
}

TEST_F(SheetHostTest, WithoutAWindowClosingItIsTold) {
  SheetHost host(nullptr);
  add(host, first_, "first");
  ask(host, first_);
  host.shown()->close();
  EXPECT_EQ(first_.dismissals, 1);
  EXPECT_EQ(host.shown(), nullptr);
  ask(host, first_);
  EXPECT_EQ(shownIn(host), "first") << "it can be asked for again";
}

TEST_F(SheetHostTest, WithoutAWindowTheNextOneWaitsToo) {
  SheetHost host(nullptr);
  add(host, first_, "first");
  add(host, second_, "second");
  ask(host, second_);
  ask(host, first_);
  EXPECT_EQ(shownIn(host), "second");
  host.shown()->reject();
  EXPECT_EQ(shownIn(host), "first");
}

TEST_F(SheetHostTest, TwoHostsShowTheirSheetsBesideEachOther) {
  SheetHost host(nullptr);
  SheetHost other(nullptr);
  add(host, first_, "first");
  add(other, second_, "second");
  ask(host, first_);
  ask(other, second_);
  EXPECT_EQ(shownIn(host), "first");
  EXPECT_EQ(shownIn(other), "second");
}

TEST_F(SheetHostTest, WithoutAWindowASheetEndsWithItsHost) {
  auto host = std::make_unique<SheetHost>(nullptr);
  add(*host, first_, "first");
  ask(*host, first_);
  const QPointer<QDialog> dialog = host->shown();
  host.reset();
  EXPECT_EQ(dialog, nullptr);
  EXPECT_EQ(first_.dismissals, 0) << "nobody has closed it";
}

TEST_F(SheetHostTest, WhatCannotBeMadeIsDismissedAndTheNextOneOpens) {
  SheetHost host(nullptr);
  add(host, first_, "first");
  add(host, second_, "second");
  first_.canBeMade = false;
  second_.isWanted = true;
  const QSignalSpy opened(&host, &SheetHost::opened);
  ask(host, first_);
  EXPECT_EQ(first_.dismissals, 1);
  EXPECT_EQ(shownIn(host), "second");
  EXPECT_EQ(opened.count(), 1);
}

TEST_F(SheetHostTest, NothingIsMadeBeforeItIsWanted) {
  SheetHost host(nullptr);
  add(host, first_, "first");
  host.look();
  EXPECT_THAT(parents_, IsEmpty());
  EXPECT_EQ(host.shown(), nullptr);
}

}  // namespace
}  // namespace Nimbrel
