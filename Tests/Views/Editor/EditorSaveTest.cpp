#include "Editing/Flatten.h"
#include "Platform/ImageFile.h"
#include "Support/Pictures.h"
#include "Support/ProgramRun.h"
#include "Support/TemporaryFolder.h"
#include "Support/Waiting.h"
#include "Views/Editor/EditorFixture.h"

#include <QApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSemaphore>
#include <QTest>
#include <QThreadPool>

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace Nimbrel {
namespace {

using Testing::shotNamed;
using ::testing::SizeIs;
using Testing::waitUntil;
namespace fs = std::filesystem;

std::string jsonOf(const std::vector<Annotation>& items) {
  QJsonArray marks;
  for (const auto& item : items) {
    const auto kind = rawValue(item.kind);
    marks.append(QJsonObject{{QStringLiteral("kind"), QString::fromLatin1(kind.data(), static_cast<int>(kind.size()))},
                             {QStringLiteral("start"), QJsonArray{item.start.x(), item.start.y()}},
                             {QStringLiteral("end"), QJsonArray{item.end.x(), item.end.y()}},
                             {QStringLiteral("colorIndex"), item.colorIndex},
                             {QStringLiteral("number"), item.number},
                             {QStringLiteral("text"), QString::fromStdString(item.text)}});
  }
  return QJsonDocument(marks).toJson().toStdString();
}

class EditorSave : public Testing::EditorFixture {
 protected:
  [[nodiscard]] bool awaitStatus(const std::string& status) const {
    return waitUntil([&] { return store_->status() == status; });
  }
};

TEST_F(EditorSave, WritesWhatTheMarksMakeBesideTheSource) {
  openSheet();
  const auto source = Testing::contentOf(shot_->path);
  placeOneOfEach();
  push("editor.undo");
  choose("Crop");
  drag({0.05, 0.05}, {0.95, 0.95});
  const auto expected = Flatten::render(shot_->path, items());
  push("editor.save");
  EXPECT_TRUE(sheet_->isSaving());
  EXPECT_TRUE(in<QWidget>(*sheet_, "editor.busy")->isVisible());
  EXPECT_FALSE(button("editor.save")->isEnabled());
  EXPECT_TRUE(button("editor.cancel")->isEnabled());
  ASSERT_TRUE(awaitClosed());
  EXPECT_EQ(store_->status(), "Saved Shot edited.png");
  const auto copy = shotNamed(*store_, "Shot edited.png");
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(copy->path, home_.desktop("Shot edited.png"));
  EXPECT_EQ(ImageFile::picture(copy->path), expected);
  EXPECT_EQ(Testing::contentOf(shot_->path), source);
}

TEST_F(EditorSave, SavesThePixelsThatTheCommandMakesOfTheSameMarks) {
  openSheet();
  placeOneOfEach();
  const auto marks = home_.folder().write("marks.json", jsonOf(items()));
  const auto expected = home_.path("expected.png");
  const auto made =
      Testing::runProgram("nimbrelctl",
                          {QStringLiteral("flatten"), QString::fromStdString(shot_->path),
                           QString::fromStdString(expected), QStringLiteral("--marks"), QString::fromStdString(marks)},
                          home_.folder().path());
  ASSERT_EQ(made.status, 0) << made.errors;
  push("editor.save");
  ASSERT_TRUE(awaitClosed());
  EXPECT_EQ(ImageFile::picture(home_.desktop("Shot edited.png")), ImageFile::picture(expected));
}

TEST_F(EditorSave, ReturnSavesWhatHidesAsRedacted) {
  openWithText();
  push("editor.coverSecrets");
  press(Qt::Key_Return);
  ASSERT_TRUE(awaitClosed());
  EXPECT_EQ(store_->status(), "Saved Shot redacted.png");
  const auto copy = ImageFile::picture(home_.desktop("Shot redacted.png"));
  EXPECT_EQ(copy.pixel(140, 57), qRgb(0, 0, 0));
  EXPECT_EQ(copy.pixel(140, 200), ImageFile::picture(shot_->path).pixel(140, 200));
}

TEST_F(EditorSave, TellsOfACopyBeforeItIsInTheCatalogue) {
  makeShot();
  std::string written;
  std::size_t shotsThen = 0;
  const auto hear = [&](const std::string& path) {
    written = path;
    shotsThen = store_->shots().size();
  };
  EditorView sheet(*store_, {.reader = reader_, .pasteboard = *pasteboard_, .written = hear}, shot_, &window_);
  sheet.open();
  ASSERT_TRUE(waitUntil([&] { return !sheet.isLoading(); }));
  sheet.state().place(Annotation::Kind::redact, {0.2, 0.2}, {0.6, 0.6});
  in<QPushButton>(sheet, "editor.save")->click();
  ASSERT_TRUE(waitUntil([&] { return !sheet.isVisible(); }));
  EXPECT_EQ(written, home_.desktop("Shot redacted.png"));
  EXPECT_EQ(shotsThen + 1, store_->shots().size());
}

TEST_F(EditorSave, WithoutMarksReturnDoesNothing) {
  openSheet();
  press(Qt::Key_Return);
  EXPECT_FALSE(sheet_->isSaving());
  EXPECT_TRUE(sheet_->isVisible());
}

TEST_F(EditorSave, AFileThatIsGoneKeepsTheSheetOpen) {
  openSheet();
  choose("Black Bar");
  drag({0.2, 0.2}, {0.6, 0.6});
  fs::remove(shot_->path);
  push("editor.save");
  ASSERT_TRUE(awaitStatus("Could not render the edit"));
  EXPECT_TRUE(sheet_->isVisible());
  EXPECT_FALSE(sheet_->isSaving());
  EXPECT_THAT(items(), SizeIs(1));
  EXPECT_TRUE(waitUntil([this] { return !sheet_->isLoading(); }));
  EXPECT_TRUE(sheet_->canvas().hasFocus());
  EXPECT_TRUE(button("editor.save")->isEnabled()) << "the file may come back";
  Testing::writePicture(shot_->path, 400, 250, 3);
  push("editor.save");
  ASSERT_TRUE(waitUntil([this] { return !sheet_->isSaving() && !sheet_->isLoading(); }));
  push("editor.save");
  EXPECT_TRUE(awaitClosed());
  EXPECT_EQ(store_->status(), "Saved Shot redacted.png");
}

TEST_F(EditorSave, AFileThatWasRenamedMeanwhileIsSavedBesideItsNewPlace) {
  openSheet();
  choose("Black Bar");
  drag({0.2, 0.2}, {0.6, 0.6});
  store_->rename(*shot_, "Other");
  push("editor.save");
  ASSERT_TRUE(awaitClosed());
  EXPECT_EQ(store_->status(), "Saved Other redacted.png");
}

TEST_F(EditorSave, CancelGivesUpTheCopyThatIsBeingMade) {
  openSheet();
  choose("Black Bar");
  drag({0.2, 0.2}, {0.6, 0.6});
  store_->setStatus("before");
  // Nothing is rendered before it is cancelled.
  auto& threads = *QThreadPool::globalInstance();
  QSemaphore gate;
  for (int thread = 0; thread < threads.maxThreadCount(); ++thread) threads.start([&gate] { gate.acquire(); });
  push("editor.save");
  push("editor.cancel");
  gate.release(threads.maxThreadCount());
  ASSERT_TRUE(awaitClosed());
  threads.waitForDone();
  QApplication::processEvents();
  EXPECT_FALSE(fs::exists(home_.desktop("Shot redacted.png")));
  EXPECT_EQ(store_->status(), "before");
}

TEST_F(EditorSave, ACopyIsWrittenWhoeverClosesTheSheetMeanwhile) {
  openSheet();
  choose("Black Bar");
  drag({0.2, 0.2}, {0.6, 0.6});
  push("editor.save");
  sheet_->reject();
  ASSERT_TRUE(awaitClosed());
  EXPECT_TRUE(awaitStatus("Saved Shot redacted.png"));
  EXPECT_NE(shotNamed(*store_, "Shot redacted.png"), nullptr);
}

TEST_F(EditorSave, ACopyDoesNotInheritTheTextOfAFormerFileOfItsName) {
  openSheet();
  add({.name = "Shot redacted.png", .text = "what is covered now"});
  choose("Black Bar");
  drag({0.2, 0.2}, {0.6, 0.6});
  push("editor.save");
  ASSERT_TRUE(awaitClosed());
  const auto copy = shotNamed(*store_, "Shot redacted.png");
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(copy->ocr, "");
}

TEST_F(EditorSave, AFileThatWasReplacedIsShownBeforeItIsSaved) {
  openSheet();
  choose("Black Bar");
  drag({0.2, 0.2}, {0.6, 0.6});
  fs::remove(shot_->path);
  Testing::writePicture(shot_->path, 300, 300, 9);
  push("editor.save");
  ASSERT_TRUE(awaitStatus("Could not render the edit"));
  EXPECT_FALSE(fs::exists(home_.desktop("Shot redacted.png")));
  ASSERT_TRUE(waitUntil([this] { return !sheet_->isLoading(); }));
  EXPECT_EQ(sheet_->state().pixelSize(), QSizeF(300, 300));
  push("editor.save");
  ASSERT_TRUE(awaitClosed());
  EXPECT_EQ(ImageFile::picture(home_.desktop("Shot redacted.png")).size(), QSize(300, 300));
}

TEST_F(EditorSave, TheLinesOfAReplacedFileAreNotThoseOfTheFormer) {
  makeShot();
  Testing::FakePictureReader slow;
  showSheet(slow);
  ASSERT_TRUE(waitUntil([&] { return slow.waiting() == 1; }));
  choose("Black Bar");
  drag({0.2, 0.2}, {0.6, 0.6});
  fs::remove(shot_->path);
  Testing::writePicture(shot_->path, 300, 300, 9);
  push("editor.save");
  ASSERT_TRUE(awaitStatus("Could not render the edit"));
  slow.answer(Testing::readingOf({"of the former"}));
  EXPECT_TRUE(sheet_->isLoading());
  ASSERT_TRUE(waitUntil([&] { return slow.waiting() == 1; }));
  EXPECT_FALSE(button("editor.coverAllText")->isEnabled());
  slow.answer(Testing::readingOf({"of this one"}));
  EXPECT_FALSE(sheet_->isLoading());
  ASSERT_THAT(sheet_->state().blocks(), SizeIs(1));
  EXPECT_EQ(sheet_->state().blocks().front().text, "of this one");
}

TEST_F(EditorSave, AFolderThatCannotBeWrittenClosesTheSheet) {
  makeShot();
  // Open files are a folder as well, in which nobody can make another, whatever they may do elsewhere.
  const int file = ::open(shot_->path.c_str(), O_RDONLY | O_CLOEXEC);
  ASSERT_GE(file, 0);
  auto shot = *shot_;
  shot.id += 1;  // no row of the catalogue says where it is
  shot.path = "/proc/self/fd/" + std::to_string(file);
  shot_ = std::make_shared<const Shot>(std::move(shot));
  openSheet();
  choose("Black Bar");
  drag({0.2, 0.2}, {0.6, 0.6});
  push("editor.save");
  EXPECT_TRUE(awaitClosed());
  EXPECT_EQ(store_->status(), "Could not write the copy");
  ::close(file);
}

TEST_F(EditorSave, WhatHasNoFreeNameIsNotWritten) {
  openSheet();
  std::ofstream(home_.desktop("Shot redacted.png")) << "other";
  for (int number = 2; number < 1000; ++number) {
    std::ofstream(home_.desktop("Shot redacted " + std::to_string(number) + ".png")) << "other";
  }
  choose("Black Bar");
  drag({0.2, 0.2}, {0.6, 0.6});
  push("editor.save");
  ASSERT_TRUE(awaitClosed());
  EXPECT_EQ(store_->status(), "Could not write the copy");
}

TEST_F(EditorSave, CoveredPixelsAreInNoSizeOfTheCopy) {
  openWithText();
  push("editor.coverAllText");
  const auto bars = items();
  ASSERT_THAT(bars, SizeIs(3));
  press(Qt::Key_Return);
  ASSERT_TRUE(awaitClosed());
  const auto path = home_.desktop("Shot redacted.png");
  constexpr std::array sides{400, 200, 100};
  const auto images = ImageFile::thumbnails(path, sides);
  ASSERT_THAT(images, SizeIs(sides.size()));
  for (const auto& image : images) {
    for (const auto& bar : bars) {
      const auto center = bar.rect().center();
      EXPECT_EQ(
          image.pixel(static_cast<int>(center.x() * image.width()), static_cast<int>(center.y() * image.height())),
          qRgb(0, 0, 0));
    }
  }
}

}  // namespace
}  // namespace Nimbrel
