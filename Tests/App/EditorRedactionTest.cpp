// A secret is covered in the editor of the whole application, and then looked for in all that is made of the copy, by
// the recogniser and the loader of pictures that users have.

#include "App/ApplicationFixture.h"

#include "Linux/Reading/ReaderProcess.h"
#include "Platform/ImageFile.h"
#include "Support/FakeOwnerAuthentication.h"
#include "Support/Pictures.h"
#include "Support/ProgramRun.h"
#include "Support/Waiting.h"
#include "Views/Editor/EditorView.h"
#include "Views/Gallery/ThumbLoader.h"

#include <gmock/gmock.h>

#include <QPainter>

#include <atomic>
#include <filesystem>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using Testing::namesOf;
using ::testing::Not;
using Testing::waitUntil;
namespace fs = std::filesystem;

constexpr auto sourceName = "Screenshot 1.png";
constexpr auto copyName = "Screenshot 1 redacted.png";

QImage pageWith(const QString& password) {
  QImage picture(640, 420, QImage::Format_RGB32);
  picture.fill(Qt::white);
  QPainter painter(&picture);
  QFont font(QStringLiteral("DejaVu Sans"));
  font.setPixelSize(16);
  painter.setFont(font);
  painter.drawText(QPointF(24, 40), QStringLiteral("Server settings"));
  painter.drawText(QPointF(24, 80), QStringLiteral("password: ") + password);
  painter.drawText(QPointF(24, 120), QStringLiteral("Kept for the harbour office"));
  return picture;
}

class EditorRedaction : public Testing::ApplicationFixture {
 protected:
  EditorRedaction() {
    auto owner = std::make_unique<Testing::FakeOwnerAuthentication>();
    owner_ = owner.get();
    services_.ownerAuthentication = std::move(owner);
    services_.pictureReader = makeReaderProcess(
        {.program = Testing::programPath("nimbrel-reader").toStdString(), .journal = home_.path("journal.json")});
    Testing::writePicture(pageWith(QStringLiteral("correct-horse-battery")), home_.desktop(sourceName));
    openWindow();
    store().importFiles({home_.desktop(sourceName)});
  }

  [[nodiscard]] bool isRead(const std::string& name) const {
    return waitUntil([&] {
      return std::ranges::any_of(store().shots(),
                                 [&](const ShotPtr& shot) { return shot->name == name && shot->ocrDone; });
    });
  }

  /// Opens the editor for the source, covers its secrets and saves; the bars.
  std::vector<Annotation> coverSecrets() {
    store().requestEdit(shot(sourceName));
    owner_->decide(true);
    auto& editor = part<EditorView>("editorSheet");
    EXPECT_TRUE(waitUntil([&] { return !editor.isLoading(); }));
    clickPart("editor.coverSecrets");
    auto bars = editor.state().items();
    clickPart("editor.save");
    EXPECT_TRUE(waitUntil([this] { return !isShown(QStringLiteral("editorSheet")); }));
    EXPECT_EQ(store().status(), std::string("Saved ") + copyName);
    return bars;
  }

  /// The same bars over a page that says something else under them.
  [[nodiscard]] std::string copyOfOtherPage(const std::vector<Annotation>& bars) const {
    const auto page = home_.path("other.png");
    Testing::writePicture(pageWith(QStringLiteral("else")), page);
    const std::atomic<bool> isGivenUp = false;
    const auto saved = EditorCopy::save(page, stateOfFile(page), bars, isGivenUp);
    EXPECT_EQ(saved.outcome, EditorCopy::Outcome::Written);
    return saved.path;
  }

  Testing::FakeOwnerAuthentication* owner_ = nullptr;
};

TEST_F(EditorRedaction, CoveredWordsAreNotReadOffTheCopy) {
  ASSERT_TRUE(isRead(sourceName));
  ASSERT_THAT(shot(sourceName)->ocr, HasSubstr("correct-horse-battery"));
  ASSERT_TRUE(store().isProtected(*shot(sourceName)));
  EXPECT_THAT(coverSecrets(), ::testing::SizeIs(1));
  ASSERT_TRUE(isRead(copyName));
  const auto copy = shot(copyName);
  EXPECT_THAT(copy->ocr, HasSubstr("Server settings"));
  EXPECT_THAT(copy->ocr, HasSubstr("harbour office"));
  for (const auto* word : {"password", "correct", "horse", "battery"}) EXPECT_THAT(copy->ocr, Not(HasSubstr(word)));
  EXPECT_THAT(copy->sensitive, IsEmpty());
  EXPECT_FALSE(store().isProtected(*copy));
  EXPECT_THAT(namesOf(store().matching("battery")), ElementsAre(sourceName));
}

TEST_F(EditorRedaction, CoveredPixelsAreInNothingThatIsMadeOfTheCopy) {
  ASSERT_TRUE(isRead(sourceName));
  const auto bars = coverSecrets();
  const auto copy = home_.desktop(copyName);
  const auto other = copyOfOtherPage(bars);
  // What the file, its thumbnail and its preview are does not depend on what was covered.
  EXPECT_EQ(Testing::contentOf(copy), Testing::contentOf(other));
  EXPECT_NE(ImageFile::picture(home_.desktop(sourceName)), ImageFile::picture(home_.path("other.png")));
  ThumbCache thumbs;
  GalleryPreviewCache previews;
  ThumbLoader loader(thumbs, previews);
  loader.showThumbs({{.path = copy}, {.path = other}});
  loader.showPreviews({{.path = copy}, {.path = other}});
  ASSERT_TRUE(waitUntil(
      [&] { return thumbs.holds(copy) && thumbs.holds(other) && previews.holds(copy) && previews.holds(other); }));
  EXPECT_EQ(thumbs.image(copy), thumbs.image(other));
  EXPECT_EQ(previews.image(copy), previews.image(other));
  const auto bar = bars.front().rect().center();
  const auto preview = previews.image(copy);
  EXPECT_EQ(preview.pixel(static_cast<int>(bar.x() * preview.width()), static_cast<int>(bar.y() * preview.height())),
            qRgb(0, 0, 0));
}

TEST_F(EditorRedaction, NothingElseIsLeftBesideTheSource) {
  ASSERT_TRUE(isRead(sourceName));
  const auto before = Testing::contentOf(home_.desktop(sourceName));
  coverSecrets();
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(home_.desktop(""))) names.push_back(entry.path().filename());
  EXPECT_THAT(names, ::testing::UnorderedElementsAre(sourceName, copyName));
  EXPECT_EQ(Testing::contentOf(home_.desktop(sourceName)), before);
}

}  // namespace
}  // namespace Nimbrel
