#include "App/MainProcess.h"

#include "Support/Movies.h"
#include "Support/StoreHome.h"
#include "Support/Waiting.h"
#include "Views/Editor/EditorView.h"

#include <gmock/gmock.h>

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

#include <functional>

namespace Nimbrel {
namespace {

/// A clipboard whose content is only handed over when a test says so.
class PatientPasteboard final : public Pasteboard {
 public:
  void writePicture(const QImage&) override {}
  void writeText(std::string_view) override {}
  void writeFile(const std::string&) override {}
  void handOver(QObject*, std::function<void()> then) override {
    ++asked;
    then_ = std::move(then);
  }
  void finish() { then_(); }

  int asked = 0;

 private:
  std::function<void()> then_;
};

class MainProcessTest : public ::testing::Test {
 protected:
  MainProcessTest() {
    auto pasteboard = std::make_unique<PatientPasteboard>();
    pasteboard_ = pasteboard.get();
    Services services;
    services.pasteboard = std::move(pasteboard);
    const WindowServices windowServices(services);
    store_ = home_.open(ProcessRole::tool, std::move(services));
    process_ = std::make_unique<MainProcess>(*store_, windowServices);
    process_->raise();
  }

  [[nodiscard]] ContentView& window() { return process_->window(); }
  /// Runs the event loop until something ends it, and tells whether that came by itself.
  static bool ends(const std::function<void()>& first) {
    QTimer::singleShot(0, first);
    return QApplication::exec() == 0;
  }

  Testing::StoreHome home_;
  PatientPasteboard* pasteboard_ = nullptr;
  std::unique_ptr<Store> store_;
  std::unique_ptr<MainProcess> process_;
};

TEST_F(MainProcessTest, ShowsTheWindow) {
  EXPECT_TRUE(window().isVisible());
  EXPECT_EQ(window().windowTitle(), QStringLiteral("Nimbrel"));
}

TEST_F(MainProcessTest, ClosingTheWindowQuitsOnceNothingCopiedIsLost) {
  window().close();
  EXPECT_EQ(pasteboard_->asked, 1);
  EXPECT_FALSE(window().isVisible());
  EXPECT_TRUE(ends([this] { pasteboard_->finish(); }));
}

TEST_F(MainProcessTest, WhoStartsItAgainSeesTheWindow) {
  window().showMinimized();
  process_->answer({});
  EXPECT_TRUE(window().isVisible());
  EXPECT_FALSE(window().isMinimized());
}

TEST_F(MainProcessTest, FilesThatAreOpenedWithItEnterTheCatalogue) {
  process_->answer({.kind = StartRequest::Kind::Open, .files = {home_.addFile(home_.path("a.png"))}});
  EXPECT_EQ(Testing::namesOf(store_->shots()), std::vector<std::string>{"a.png"});
}

TEST_F(MainProcessTest, AnActionOfTheLauncherIsDoneInPlaceOfShowingTheWindow) {
  std::string token;
  process_->actions().add("find", [&](const std::string& given) { token = given; });
  window().hide();
  process_->answer({.kind = StartRequest::Kind::Action, .action = "find", .activationToken = "token"});
  EXPECT_EQ(token, "token");
  EXPECT_FALSE(window().isVisible());
  process_->answer({.kind = StartRequest::Kind::Action, .action = "explode"});
  EXPECT_TRUE(window().isVisible());
}

TEST_F(MainProcessTest, ItsEndIsToldWhenItBegins) {
  int begun = 0;
  QObject::connect(process_.get(), &MainProcess::quitBegun, process_.get(), [&] { ++begun; });
  window().close();
  EXPECT_EQ(begun, 1);
  EXPECT_EQ(pasteboard_->asked, 1) << "and it is not over yet";
}

TEST_F(MainProcessTest, OpensTheEditorForTheShotThatIsAskedFor) {
  const auto path = home_.addFile(home_.desktop("Shot.png"));
  store_->importFiles({path});
  store_->requestEdit(Testing::shotNamed(*store_, "Shot.png"));
  const auto* editor = window().findChild<EditorView*>();
  ASSERT_NE(editor, nullptr);
  EXPECT_TRUE(editor->isVisible());
}

TEST_F(MainProcessTest, AFreshScreenshotBringsUpTheShelfUntilTheWindowIsClosed) {
  store_->importFiles({home_.addFile(home_.desktop("Shot.png"))});
  const auto shot = Testing::shotNamed(*store_, "Shot.png");
  Q_EMIT store_->freshShotArrived(shot);
  EXPECT_TRUE(process_->shelf().isVisible());
  window().close();
  EXPECT_FALSE(process_->shelf().isVisible());
  Q_EMIT store_->freshShotArrived(shot);
  EXPECT_FALSE(process_->shelf().isVisible()) << "what quits shows nothing any more";
}

TEST_F(MainProcessTest, EditOnTheShelfOpensTheEditorInTheWindow) {
  store_->settings().protectSensitive.set(false);
  store_->importFiles({home_.addFile(home_.desktop("Shot.png"))});
  Q_EMIT store_->freshShotArrived(Testing::shotNamed(*store_, "Shot.png"));
  process_->shelf().window()->findChild<QPushButton*>(QStringLiteral("shelf.edit"))->click();
  EXPECT_FALSE(process_->shelf().isVisible());
  const auto* editor = window().findChild<EditorView*>();
  ASSERT_NE(editor, nullptr);
  EXPECT_TRUE(editor->isVisible());
}

TEST_F(MainProcessTest, TheMenuShowsAndHidesQuickFind) {
  auto* command = window().findChild<QAction*>(QStringLiteral("menu.quickFind"));
  ASSERT_TRUE(command->isEnabled());
  command->trigger();
  EXPECT_TRUE(process_->quickFind().isVisible());
  command->trigger();
  EXPECT_FALSE(process_->quickFind().isVisible());
}

TEST_F(MainProcessTest, QuickFindStaysAwayAfterACapture) {
  Q_EMIT store_->quickFindRequested();
  ASSERT_TRUE(process_->quickFind().isVisible());
  Q_EMIT store_->hidingRequested();
  EXPECT_FALSE(process_->quickFind().isVisible());
  Q_EMIT store_->unhidingRequested();
  EXPECT_FALSE(process_->quickFind().isVisible());
  EXPECT_TRUE(window().isVisible());
}

TEST_F(MainProcessTest, WhatQuitsHasNoQuickFind) {
  Q_EMIT store_->quickFindRequested();
  window().close();
  EXPECT_FALSE(process_->quickFind().isVisible());
  Q_EMIT store_->quickFindRequested();
  EXPECT_FALSE(process_->quickFind().isVisible());
}

TEST_F(MainProcessTest, QuittingAsksOnce) {
  window().findChild<QAction*>(QStringLiteral("menu.quit"))->trigger();
  EXPECT_FALSE(window().isVisible());
  process_->quit();
  EXPECT_EQ(pasteboard_->asked, 1);
  Q_EMIT store_->windowRequested();
  EXPECT_FALSE(window().isVisible()) << "what quits does not come back";
}

TEST_F(MainProcessTest, AnUnconfiguredBuildSaysThatNoUpdatesAreSetUp) {
  window().findChild<QAction*>(QStringLiteral("menu.checkForUpdates"))->trigger();
  EXPECT_EQ(store_->status(), "No updates are set up for this build");
}

TEST_F(MainProcessTest, SettingsHaveOneWindowAndBeginAnewWhenItWasClosed) {
  const auto windows = [this] { return window().findChildren<SettingsView*>(); };
  auto* command = window().findChild<QAction*>(QStringLiteral("menu.settings"));
  command->trigger();
  command->trigger();
  ASSERT_EQ(windows().size(), 1);
  EXPECT_TRUE(windows().front()->isVisible());
  EXPECT_TRUE(windows().front()->isWindow());
  windows().front()->close();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  ASSERT_TRUE(windows().isEmpty());
  command->trigger();
  EXPECT_EQ(windows().size(), 1);
  process_->quit();
  EXPECT_FALSE(windows().front()->isVisible());
}

TEST_F(MainProcessTest, TheLastRecordingHasItsTools) {
  store_->setLastRecordingURL(home_.path("Recording.mov"));
  auto* command = window().findChild<QAction*>(QStringLiteral("menu.editLastRecording"));
  ASSERT_TRUE(Testing::waitUntil([command] { return command->isEnabled(); }));
  command->trigger();
  const auto* sheet = window().findChild<QDialog*>(QStringLiteral("recordingTools"));
  ASSERT_NE(sheet, nullptr);
  EXPECT_TRUE(sheet->isVisible());
  EXPECT_EQ(sheet->findChild<QLabel*>(QStringLiteral("recordingTools.fileName"))->text(),
            QStringLiteral("Recording.mov"));
  store_->setShowRecordingTools(false);
  EXPECT_FALSE(sheet->isVisible());
}

TEST_F(MainProcessTest, AnExportThatRunsIsFinishedBeforeTheProcessEnds) {
  const auto recording = home_.path("Recording.mov");
  Testing::writeMovie(recording, {.times = Testing::steadyTimes(1), .end = 1});
  store_->setLastRecordingURL(recording);
  store_->setShowRecordingTools(true);
  const auto* sheet = window().findChild<QDialog*>(QStringLiteral("recordingTools"));
  ASSERT_NE(sheet, nullptr);
  sheet->findChild<QPushButton*>(QStringLiteral("recordingTools.save"))->click();
  window().close();
  EXPECT_TRUE(ends([this] { pasteboard_->finish(); }));
  EXPECT_EQ(store_->lastRecordingURL(), home_.path("Recording.trimmed.mov"));
  EXPECT_NEAR(Testing::readMovie(home_.path("Recording.trimmed.mov")).duration, 1, 0.002);
}

TEST_F(MainProcessTest, WindowsAreOutOfAPictureThatIsTaken) {
  QDialog dialog(&window());
  dialog.open();
  Q_EMIT store_->hidingRequested();
  EXPECT_FALSE(window().isVisible());
  EXPECT_FALSE(dialog.isVisible());
  Q_EMIT store_->unhidingRequested();
  EXPECT_TRUE(window().isVisible());
  EXPECT_TRUE(dialog.isVisible());
}

TEST_F(MainProcessTest, AMinimisedWindowComesBackWhenItIsAskedFor) {
  window().showMinimized();
  Q_EMIT store_->windowRequested();
  EXPECT_FALSE(window().isMinimized());
  EXPECT_TRUE(window().isVisible());
}

VerifiedUpdate newRelease() {
  return {.offer = {.version = "9.1", .url = "https://updates.example/nimbrel_9.1.deb"},
          .download = std::make_shared<const std::string>("the new program")};
}

TEST_F(MainProcessTest, WhatIsNewIsShownAndSavedWhenTheUserWantsIt) {
  process_->offer(newRelease());
  ASSERT_NE(window().findChild<QDialog*>(QStringLiteral("updateSheet")), nullptr);
  window().findChild<QPushButton*>(QStringLiteral("update.save"))->click();
  EXPECT_TRUE(Testing::waitUntil([this] { return store_->status() == "Saved nimbrel_9.1.deb"; }));
}

TEST_F(MainProcessTest, WhatIsNewWaitsForTheSheetThatIsUp) {
  QDialog other(&window());
  other.setWindowModality(Qt::WindowModal);
  other.open();
  process_->offer(newRelease());
  EXPECT_EQ(window().findChild<QDialog*>(QStringLiteral("updateSheet")), nullptr);
}

}  // namespace
}  // namespace Nimbrel
