#include "Platform/MetadataStore.h"
#include "Screencapture/TestScreen.h"
#include "Screencapture/X11Windows.h"

#include <algorithm>

namespace Nimbrel {

namespace {

using Testing::ColourWindow;

const QStringList window{QStringLiteral("-i"), QStringLiteral("-w")};
const QColor red(200, 40, 90);
const QColor blue(20, 60, 220);

class WindowsOnX11 : public Testing::ScreenTest {
 protected:
  int statusAfter(const QString& actions) {
    const auto process = startOverlay(window);
    act(actions);
    return statusOf(*process);
  }

  /// Whether the picture shows the inside of a window in its colour, all of it.
  [[nodiscard]] bool showsInside(const ColourWindow& shown, const QColor& colour) const {
    const auto inside = picture().copy(shown.inside().translated(-shown.frame().topLeft()));
    QImage expected(inside.size(), inside.format());
    expected.fill(colour);
    return inside == expected;
  }
};

TEST_F(WindowsOnX11, IsTakenWithItsFrame) {
  const ColourWindow shown(display(), QRect(300, 200, 320, 180), red);
  ASSERT_GT(shown.frame().height(), 190) << "it has a title bar";
  EXPECT_EQ(statusAfter(QStringLiteral("mousemove 400 300 click 1")), 0);
  EXPECT_EQ(picture().size(), shown.frame().size());
  EXPECT_TRUE(showsInside(shown, red));
  EXPECT_EQ(MetadataStore::screenCaptureType(path()), "window");
}

TEST_F(WindowsOnX11, ItsTitleBarIsPartOfIt) {
  const ColourWindow shown(display(), QRect(300, 200, 320, 180), red);
  const auto place = QStringLiteral("mousemove 400 %1 key Return").arg(shown.frame().top() + 3);
  EXPECT_EQ(statusAfter(place), 0);
  EXPECT_EQ(picture().size(), shown.frame().size());
}

TEST_F(WindowsOnX11, WhatCoversItIsNotInThePicture) {
  const ColourWindow lower(display(), QRect(300, 200, 320, 180), red);
  const ColourWindow upper(display(), QRect(400, 260, 400, 300), blue);
  EXPECT_EQ(statusAfter(QStringLiteral("mousemove 320 300 click 1")), 0);
  EXPECT_EQ(picture().size(), lower.frame().size());
  EXPECT_TRUE(showsInside(lower, red));
}

TEST_F(WindowsOnX11, WhatReachesBeyondTheScreenIsInThePicture) {
  const ColourWindow shown(display(), QRect(-100, 300, 320, 180), red);
  ASSERT_LT(shown.frame().left(), 0);
  EXPECT_EQ(statusAfter(QStringLiteral("mousemove 50 400 click 1")), 0);
  EXPECT_EQ(picture().size(), shown.frame().size());
  EXPECT_TRUE(showsInside(shown, red));
}

TEST_F(WindowsOnX11, NothingButAWindowIsTaken) {
  const ColourWindow shown(display(), QRect(300, 200, 320, 180), red);
  EXPECT_EQ(statusAfter(QStringLiteral("mousemove 900 700 click 1 key Return mousemove 400 300 click 1")), 0);
  EXPECT_EQ(picture().size(), shown.frame().size());
}

TEST_F(WindowsOnX11, EscapeCancels) {
  const ColourWindow shown(display(), QRect(300, 200, 320, 180), red);
  EXPECT_EQ(statusAfter(QStringLiteral("mousemove 400 300 key Escape")), 0);
  EXPECT_TRUE(isFolderEmpty());
}

TEST_F(WindowsOnX11, TheLayoutHasFramesInTheirOrder) {
  const ColourWindow lower(display(), QRect(300, 200, 320, 180), red);
  const ColourWindow upper(display(), QRect(400, 260, 400, 300), blue);
  const auto layout = Screencapture::desktopLayout(display());
  std::vector<QRect> applications;
  for (const auto& stacked : layout.windows) {
    if (stacked.isApplication) applications.push_back(stacked.area);
  }
  EXPECT_EQ(applications, (std::vector<QRect>{lower.frame(), upper.frame()}));
  EXPECT_EQ(layout.bounds, QRect(0, 0, 1280, 800));
  EXPECT_EQ(layout.monitors.size(), 1U);
}

}  // namespace

}  // namespace Nimbrel
