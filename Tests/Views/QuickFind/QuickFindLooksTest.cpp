// Quick find as it is seen: with results, empty, without matches, from right to left, with larger text.

#include "Views/QuickFind/QuickFindPanel.h"

#include "Support/FakeWindowActivation.h"
#include "Support/FakeWindowFocus.h"
#include "Support/FakeWindowStacking.h"
#include "Support/Waiting.h"
#include "Views/QuickFind/QuickFindDelegate.h"
#include "Views/Shared/TextStyles.h"
#include "Views/Shared/Theme.h"
#include "Views/Sheets/SheetFixture.h"

#include <QApplication>
#include <QLineEdit>
#include <QListView>
#include <QTest>

#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <string>
#include <vector>

namespace Nimbrel {
namespace {

using Testing::waitUntil;

/// One colour laid over another that is opaque.
QColor over(const QColor& upper, const QColor& lower) {
  const auto mixed = [&](int above, int below) {
    const double share = upper.alphaF();
    return static_cast<int>(std::lround(above * share + below * (1 - share)));
  };
  return {mixed(upper.red(), lower.red()), mixed(upper.green(), lower.green()), mixed(upper.blue(), lower.blue())};
}

bool isNear(const QColor& one, const QColor& other) {
  return std::abs(one.red() - other.red()) <= 2 && std::abs(one.green() - other.green()) <= 2 &&
         std::abs(one.blue() - other.blue()) <= 2;
}

class QuickFindLooks : public Testing::SheetFixture {
 protected:
  QuickFindLooks() {
    const std::vector<std::string> texts{"Halden-3 flight telemetry",
                                         "link.ts — ground-station halden",
                                         "the key of Halden is under the mat",
                                         "Morvanthile — Orbital Charts, Halden",
                                         "# launch-day halden",
                                         "Halden ground site",
                                         "Notes on Halden"};
    for (std::size_t i = 0; i < texts.size(); ++i) {
      const auto name = "shot " + std::to_string(i) + ".png";
      addFile(name, static_cast<int>(i));
      const auto sensitive = i == 2 ? std::vector<std::string>{"Password"} : std::vector<std::string>();
      add({.name = name, .daysAgo = 0.1 * static_cast<double>(i), .text = texts[i], .sensitive = sensitive});
    }
  }
  void open(const char* text) {
    panel_.open();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(panel_.window()));
    in<QLineEdit>(*panel_.window(), "quickFind.field")->setText(QString::fromUtf8(text));
    const auto sees = [this](const char* name) { return thumbs_.holds(home_.desktop(name)); };
    ASSERT_TRUE(waitUntil([&] { return *text == '\0' || (sees("shot 0.png") && sees("shot 5.png")); }));
  }
  [[nodiscard]] QImage seen() const {
    QImage image(panel_.window()->size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    panel_.window()->render(&image);
    return image;
  }
  [[nodiscard]] QListView& list() const { return *in<QListView>(*panel_.window(), "quickFind.list"); }

  Testing::FakeWindowStacking stacking_;
  Testing::FakeWindowFocus focus_;
  Testing::FakeWindowActivation activation_;
  QuickFindPanel panel_{*store_, thumbs_, previews_, {stacking_, focus_, activation_}};
};

TEST_F(QuickFindLooks, WithResults) {
  open("halden");
  ASSERT_TRUE(waitUntil([this] {
    // The pictures are there as well.
    const auto middle = seen().pixelColor(14 + 36, 50 + 31);
    return !isNear(middle, themeColor(Token::Quaternary));
  }));
  keepPictures(*panel_.window(), QStringLiteral("quick-find"));
  const auto image = seen();
  EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0) << "the corners are round";
  EXPECT_TRUE(isNear(image.pixelColor(300, 0), themeColor(Token::PopoverBorder)));
  EXPECT_TRUE(isNear(image.pixelColor(300, 5), themeColor(Token::Popover)));
  EXPECT_TRUE(isNear(image.pixelColor(300, 49), themeColor(Token::Separator)));
  const auto highlight = over(themeColor(Token::HighlightedRow), themeColor(Token::Popover));
  EXPECT_TRUE(isNear(image.pixelColor(5, 52), highlight)) << "the first row, over the whole width";
  EXPECT_TRUE(isNear(image.pixelColor(600, 108), highlight));
  EXPECT_TRUE(isNear(image.pixelColor(5, 50 + 62 + 4), themeColor(Token::Popover)));
  EXPECT_TRUE(isNear(image.pixelColor(14 + 1 + 4, 50 + 2 * 62 + 12), themeColor(Token::Quaternary))) << "a locked one";
}

TEST_F(QuickFindLooks, TheHighlightFollowsTheRoundCorners) {
  open("halden");
  for (int i = 0; i < 6; ++i) QTest::keyClick(panel_.window()->windowHandle(), Qt::Key_Down);
  const auto image = seen();
  const auto bottom = image.height() - 1;
  EXPECT_EQ(image.pixelColor(0, bottom).alpha(), 0);
  EXPECT_EQ(image.pixelColor(2, bottom - 1).alpha(), 0);
  EXPECT_TRUE(
      isNear(image.pixelColor(200, bottom - 2), over(themeColor(Token::HighlightedRow), themeColor(Token::Popover))));
}

TEST_F(QuickFindLooks, BeforeAnythingIsTyped) {
  open("");
  keepPictures(*panel_.window(), QStringLiteral("quick-find-empty"));
  EXPECT_FALSE(list().isVisible());
}

TEST_F(QuickFindLooks, WithoutABlendingDesktopItIsSquare) {
  stacking_.composited = false;
  open("halden");
  const auto image = seen();
  EXPECT_EQ(image.pixelColor(0, 0), themeColor(Token::PopoverBorder));
}

TEST_F(QuickFindLooks, FromRightToLeftEverythingIsMirrored) {
  QApplication::setLayoutDirection(Qt::RightToLeft);
  open("halden");
  keepPictures(*panel_.window(), QStringLiteral("quick-find-mirrored"));
  const auto image = seen();
  QApplication::setLayoutDirection(Qt::LeftToRight);
  const auto row = 50 + 2 * 62 + 12;
  EXPECT_TRUE(isNear(image.pixelColor(image.width() - 1 - 14 - 5, row), themeColor(Token::Quaternary)));
  EXPECT_TRUE(isNear(image.pixelColor(14 + 1 + 4, row), themeColor(Token::Popover)));
}

TEST_F(QuickFindLooks, RowsGrowWithTheText) {
  EXPECT_EQ(QuickFindDelegate::rowHeight(), 62);
  const auto font = interfaceFont();
  auto larger = font;
  larger.setPointSizeF(font.pointSizeF() * 1.5);
  setInterfaceFont(larger);
  EXPECT_EQ(QuickFindDelegate::rowHeight(), 27 + 2 + 21 + 14);
  open("halden");
  keepPictures(*panel_.window(), QStringLiteral("quick-find-large-text"));
  EXPECT_EQ(panel_.window()->size(), QSize(620, 420));
  EXPECT_EQ(list().visualRect(list().model()->index(1, 0)).height(), 27 + 2 + 21 + 14);
  setInterfaceFont(font);
}

}  // namespace
}  // namespace Nimbrel
