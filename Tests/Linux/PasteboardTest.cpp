#include "Support/DesktopSession.h"
#include "Support/Pictures.h"
#include "Support/TellingProgram.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <QProcess>

#include <memory>

namespace Nimbrel {

namespace {

using ::testing::AnyOf;
using ::testing::Contains;
using ::testing::Each;
using ::testing::StartsWith;
using Testing::TellingProgram;
using Testing::waitUntil;

struct Clip {
  bool isThere = false;
  QByteArray bytes;
};

/// What another program gets of the clipboard.
Clip pasted(const QString& target) {
  QProcess tool;
  tool.start(QStringLiteral("xclip"), {QStringLiteral("-selection"), QStringLiteral("clipboard"),
                                       QStringLiteral("-out"), QStringLiteral("-target"), target});
  EXPECT_TRUE(waitUntil([&] { return tool.state() == QProcess::NotRunning; }));
  return {tool.exitCode() == 0, tool.readAllStandardOutput()};
}

std::string pastedText() { return pasted(QStringLiteral("UTF8_STRING")).bytes.toStdString(); }

QImage pastedPicture() { return QImage::fromData(pasted(QStringLiteral("image/png")).bytes, "PNG"); }

std::vector<std::string> offers() {
  std::vector<std::string> names;
  for (const auto& line : pasted(QStringLiteral("TARGETS")).bytes.split('\n')) {
    if (!line.isEmpty()) names.push_back(line.toStdString());
  }
  return names;
}

/// Another program that copies a text and keeps the clipboard until somebody else does.
class OtherProgram {
 public:
  explicit OtherProgram(const std::string& text) {
    process_.start(QStringLiteral("xclip"), {QStringLiteral("-quiet"), QStringLiteral("-selection"),
                                             QStringLiteral("clipboard"), QStringLiteral("-in")});
    process_.write(text.c_str());
    process_.closeWriteChannel();
    EXPECT_TRUE(waitUntil([&] { return pastedText() == text; }));
  }
  ~OtherProgram() {
    process_.kill();
    process_.waitForFinished();
  }
  OtherProgram(const OtherProgram&) = delete;
  OtherProgram& operator=(const OtherProgram&) = delete;

 private:
  QProcess process_;
};

class PasteboardTest : public ::testing::Test {
 protected:
  PasteboardTest() { Testing::writePicture(picture_, path_); }

  [[nodiscard]] std::unique_ptr<TellingProgram> copied(const QStringList& arguments) {
    auto program = std::make_unique<TellingProgram>("PasteboardProgram", arguments);
    program->expectLine("copied");
    return program;
  }
  [[nodiscard]] std::unique_ptr<TellingProgram> copiedPicture() {
    return copied({QStringLiteral("picture"), QString::fromStdString(path_)});
  }
  [[nodiscard]] std::unique_ptr<TellingProgram> copiedText(const QString& text) {
    return copied({QStringLiteral("text"), text});
  }
  [[nodiscard]] bool isOurPicture(const QImage& other) const {
    return other.convertToFormat(QImage::Format_RGB32) == picture_.convertToFormat(QImage::Format_RGB32);
  }

  Testing::DesktopSession session_;
  Testing::TemporaryFolder folder_;
  QImage picture_ = Testing::picture(64, 48);
  std::string path_ = folder_.path("picture.png");
};

TEST_F(PasteboardTest, APictureIsOfferedAsAPictureAndNothingElse) {
  const auto program = copiedPicture();
  EXPECT_TRUE(isOurPicture(pastedPicture()));
  EXPECT_THAT(offers(), Contains("image/png"));
  EXPECT_THAT(offers(), Each(AnyOf(StartsWith("image/"), "TARGETS", "MULTIPLE", "TIMESTAMP", "SAVE_TARGETS", "PIXMAP",
                                   "BITMAP", "application/x-qt-image")));
}

TEST_F(PasteboardTest, ATextIsOfferedPlainAndNothingElse) {
  const auto program = copiedText(QStringLiteral("Tea\nfor two ☕"));
  EXPECT_EQ(pastedText(), "Tea\nfor two ☕");
  EXPECT_THAT(offers(), Each(AnyOf(StartsWith("text/plain"), "UTF8_STRING", "STRING", "TEXT", "COMPOUND_TEXT",
                                   "TARGETS", "MULTIPLE", "TIMESTAMP", "SAVE_TARGETS")));
}

TEST_F(PasteboardTest, AFileIsOfferedAsFileManagersPasteIt) {
  const auto program = copied({QStringLiteral("file"), QStringLiteral("/shots/Screenshot 1.png")});
  EXPECT_EQ(pasted(QStringLiteral("text/uri-list")).bytes.trimmed().toStdString(), "file:///shots/Screenshot%201.png");
  EXPECT_EQ(pasted(QStringLiteral("x-special/gnome-copied-files")).bytes.toStdString(),
            "copy\nfile:///shots/Screenshot%201.png");
}

TEST_F(PasteboardTest, AnEmptyTextLeavesNothing) {
  const OtherProgram other("before");
  const auto program = copiedText(QString());
  EXPECT_TRUE(waitUntil([] { return !pasted(QStringLiteral("UTF8_STRING")).isThere; }));
}

TEST_F(PasteboardTest, WhoCopiedNothingEndsAtOnce) {
  const auto program = copied({QStringLiteral("watch")});
  program->endInput();
  EXPECT_TRUE(program->hasEnded());
}

TEST_F(PasteboardTest, WhoseCopyHasBeenReplacedEndsAtOnce) {
  const auto program = copiedText(QStringLiteral("ours"));
  const OtherProgram other("theirs");
  program->endInput();
  EXPECT_TRUE(program->hasEnded());
  EXPECT_EQ(pastedText(), "theirs");
}

TEST_F(PasteboardTest, WithoutAManagerTheProcessStaysUntilAnotherProgramCopies) {
  const auto program = copiedPicture();
  program->endInput();
  program->expectLine("asked");
  EXPECT_TRUE(isOurPicture(pastedPicture()));
  EXPECT_TRUE(isOurPicture(pastedPicture())) << "fetching it is not taking it";
  EXPECT_TRUE(program->isRunning());
  const OtherProgram other("theirs");
  EXPECT_TRUE(program->hasEnded());
  EXPECT_EQ(pastedText(), "theirs");
}

TEST_F(PasteboardTest, AManagerKeepsWhatWasCopiedWhenTheProcessEnds) {
  TellingProgram manager("ClipboardManagerDouble", {});
  manager.expectLine("ready");
  const auto program = copiedPicture();
  program->endInput();
  EXPECT_TRUE(program->hasEnded());
  manager.expectLine("saved");
  EXPECT_TRUE(isOurPicture(pastedPicture()));
}

TEST_F(PasteboardTest, AManagerIsGivenTextsToo) {
  TellingProgram manager("ClipboardManagerDouble", {});
  manager.expectLine("ready");
  const auto program = copiedText(QStringLiteral("ours"));
  program->endInput();
  EXPECT_TRUE(program->hasEnded());
  manager.expectLine("saved");
  EXPECT_EQ(pastedText(), "ours");
}

TEST_F(PasteboardTest, WhereTheManagerRefusesTheProcessStaysUntilAnotherProgramCopies) {
  TellingProgram manager("ClipboardManagerDouble", {QStringLiteral("refuse")});
  manager.expectLine("ready");
  const auto program = copiedText(QStringLiteral("ours"));
  program->endInput();
  manager.expectLine("refused");
  EXPECT_EQ(pastedText(), "ours");
  EXPECT_TRUE(program->isRunning());
  const OtherProgram other("theirs");
  EXPECT_TRUE(program->hasEnded());
}

}  // namespace

}  // namespace Nimbrel
