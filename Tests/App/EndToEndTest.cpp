#include "Support/CodePictures.h"
#include "Support/Pictures.h"
#include "Support/ProgramRun.h"
#include "Support/StoreHome.h"
#include "Support/Waiting.h"
#include "Views/Editor/EditorCopy.h"

#include <gmock/gmock.h>

#include <QPainter>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <fstream>
#include <vector>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using Testing::namesOf;
using ::testing::Not;
using Testing::shotNamed;
using Testing::StoreHome;
using Testing::waitUntil;
using Testing::writePicture;
namespace fs = std::filesystem;

/// A screenshot with these lines of text on it.
QImage page(const QStringList& lines) {
  QImage picture(640, 420, QImage::Format_RGB32);
  picture.fill(Qt::white);
  QPainter painter(&picture);
  painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
  QFont font(QStringLiteral("DejaVu Sans"));
  font.setPixelSize(16);
  painter.setFont(font);
  painter.setPen(Qt::black);
  for (qsizetype line = 0; line < lines.size(); ++line) {
    painter.drawText(QPointF(24, 40 + 28 * static_cast<double>(line)), lines[line]);
  }
  return picture;
}

QImage pageWithCode() {
  auto picture = page({QStringLiteral("Boarding pass to Harbour Point")});
  const auto code = Testing::codePicture(ZXing::BarcodeFormat::QRCode, "https://example.invalid/pass/1");
  QPainter(&picture).drawImage(QPoint(320, 160), code);
  return picture;
}

/// Writes the first half of a file's bytes to a temporary name, lets the worker look, and completes it.
void writeSlowly(const std::string& source, const std::string& target) {
  std::ifstream input(source, std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(input), std::istreambuf_iterator<char>()};
  const auto temporary = (fs::path(target).parent_path() / ("." + fs::path(target).filename().string())).string();
  std::ofstream output(temporary, std::ios::binary);
  output << bytes.substr(0, bytes.size() / 2) << std::flush;
  Testing::runEventLoopFor(std::chrono::milliseconds(1700));
  output << bytes.substr(bytes.size() / 2) << std::flush;
  fs::rename(temporary, target);
}

/// A worker over a watched folder, and a second process that follows the catalogue by its poll: the test.
class EndToEndTest : public ::testing::Test {
 protected:
  [[nodiscard]] bool sees(const std::string& name) {
    return waitUntil([&] {
      return std::ranges::any_of(observer_->shots(), [&](const ShotPtr& shot) {
        return shot->name == name && shot->ocrDone && shot->phash != 0;
      });
    });
  }

  StoreHome home_;
  std::unique_ptr<Store> observer_ = home_.open(ProcessRole::mainApplication);
};

TEST_F(EndToEndTest, WhatLandsInAWatchedFolderIsFoundByItsTextInAnotherProcess) {
  observer_->settings().automationRules.set({{.id = QUuid::createUuid(),
                                              .containsText = "harbour point",
                                              .tag = "travel",
                                              .project = "Trip",
                                              .favorite = true},
                                             {.id = QUuid::createUuid(), .source = "textedit", .fileToLibrary = true}});
  const auto worker = Testing::startProgram("nimbrel-menubar", {}, home_.folder().path());

  writePicture(page({QStringLiteral("Server settings"), QStringLiteral("password: correct-horse-battery")}),
               home_.desktop("Screenshot secret.png"));
  writePicture(page({QStringLiteral("TextEdit"), QStringLiteral("Untitled"), QStringLiteral("Format"),
                     QStringLiteral("Shopping list: apples and rope")}),
               home_.desktop("Screenshot list.png"));
  writePicture(pageWithCode(), home_.path("pass.png"));
  writeSlowly(home_.path("pass.png"), home_.desktop("Screenshot pass.png"));

  ASSERT_TRUE(sees("Screenshot pass.png"));
  ASSERT_TRUE(sees("Screenshot secret.png"));
  EXPECT_THAT(namesOf(observer_->matching("harbour boarding")), ElementsAre("Screenshot pass.png"));
  // The rules run when a batch is read, and file it after that.
  ASSERT_TRUE(waitUntil([&] {
    const auto found = observer_->matching("shopping rop");
    return found.size() == 1 && found.front()->filed;
  }));
  EXPECT_THAT(namesOf(observer_->matching("harbour rope")), IsEmpty());

  const auto secret = shotNamed(*observer_, "Screenshot secret.png");
  EXPECT_THAT(secret->sensitive, ElementsAre("Password"));
  EXPECT_TRUE(observer_->isProtected(*secret));

  ASSERT_TRUE(waitUntil([&] { return shotNamed(*observer_, "Screenshot pass.png")->favorite; }));
  const auto pass = shotNamed(*observer_, "Screenshot pass.png");
  EXPECT_THAT(pass->barcodes, ElementsAre("https://example.invalid/pass/1"));
  EXPECT_THAT(pass->tags, ElementsAre("travel", "project:Trip"));
  EXPECT_FALSE(pass->filed);

  const auto list = observer_->matching("shopping").front();
  EXPECT_TRUE(list->filed);
  EXPECT_TRUE(list->path.starts_with(home_.inLibrary("")));
  EXPECT_FALSE(fs::exists(home_.desktop("Screenshot list.png")));
  EXPECT_EQ(observer_->derived().contentOf(list->id).title, "TextEdit");

  worker->terminate();
  ASSERT_TRUE(worker->waitForFinished());
  EXPECT_EQ(worker->exitCode(), 0);
}

TEST_F(EndToEndTest, WhatWasCoveredIsNotReadOffTheCopy) {
  const auto worker = Testing::startProgram("nimbrel-menubar", {}, home_.folder().path());
  const auto source = home_.desktop("Screenshot secret.png");
  writePicture(page({QStringLiteral("Server settings"), QStringLiteral("password: correct-horse-battery"),
                     QStringLiteral("Kept for the harbour office")}),
               source);
  ASSERT_TRUE(sees("Screenshot secret.png"));
  EXPECT_THAT(namesOf(observer_->matching("battery")), ElementsAre("Screenshot secret.png"));

  // The second line of the page.
  Annotation bar;
  bar.start = {20 / 640.0, 50 / 420.0};
  bar.end = {400 / 640.0, 76 / 420.0};
  const std::vector bars{bar};
  const std::atomic<bool> isGivenUp = false;
  const auto saved = EditorCopy::save(source, stateOfFile(source), bars, isGivenUp);
  ASSERT_EQ(saved.outcome, EditorCopy::Outcome::Written);
  observer_->importFiles({saved.path});

  ASSERT_TRUE(sees("Screenshot secret redacted.png"));
  const auto copy = shotNamed(*observer_, "Screenshot secret redacted.png");
  EXPECT_THAT(copy->ocr, HasSubstr("harbour office"));
  for (const auto* word : {"password", "correct", "horse", "battery"}) EXPECT_THAT(copy->ocr, Not(HasSubstr(word)));
  EXPECT_THAT(copy->sensitive, IsEmpty());
  EXPECT_THAT(namesOf(observer_->matching("battery")), ElementsAre("Screenshot secret.png"));

  worker->terminate();
  ASSERT_TRUE(worker->waitForFinished());
}

}  // namespace
}  // namespace Nimbrel
