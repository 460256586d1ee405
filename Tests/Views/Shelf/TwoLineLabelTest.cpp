#include "Views/Shelf/TwoLineLabel.h"

#include "Views/Shared/TextStyles.h"

#include <gtest/gtest.h>

#include <QImage>

#include <algorithm>

namespace Nimbrel {
namespace {

constexpr int narrow = 160;

/// Whether anything is painted on that line, from the top.
bool isPainted(TwoLineLabel& label, int line) {
  QImage image(label.size(), QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  label.render(&image, {}, {}, QWidget::DrawChildren);
  const auto height = lineHeight(TextStyle::Body);
  for (int y = line * height; y < std::min((line + 1) * height, image.height()); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (image.pixelColor(x, y).alpha() > 0) return true;
    }
  }
  return false;
}

TEST(TwoLineLabel, AShortNameTakesOneLine) {
  TwoLineLabel label;
  label.setFullText(QStringLiteral("a.png"));
  EXPECT_EQ(label.heightForWidth(narrow), lineHeight(TextStyle::Body));
  label.resize(narrow, TwoLineLabel::mostHeight());
  EXPECT_TRUE(isPainted(label, 0));
  EXPECT_FALSE(isPainted(label, 1));
}

TEST(TwoLineLabel, ALongNameTakesTwoLinesAndNoMore) {
  TwoLineLabel label;
  for (const auto& name : {QStringLiteral("Screenshot 2026-11-12 at 14.32.08.png"),
                           QString(300, QLatin1Char('x')) + QStringLiteral(".png")}) {
    label.setFullText(name);
    EXPECT_EQ(label.heightForWidth(narrow), TwoLineLabel::mostHeight()) << name.toStdString();
    label.resize(narrow, 3 * lineHeight(TextStyle::Body));
    EXPECT_TRUE(isPainted(label, 1));
    EXPECT_FALSE(isPainted(label, 2));
  }
}

TEST(TwoLineLabel, ScreenReadersAndTheTipHaveTheWholeName) {
  TwoLineLabel label;
  label.setFullText(QStringLiteral("a <b> & c.png"));
  EXPECT_EQ(label.accessibleName(), QStringLiteral("a <b> & c.png"));
  EXPECT_EQ(label.toolTip(), QStringLiteral("a &lt;b&gt; &amp; c.png"));
}

TEST(TwoLineLabel, AnEmptyNameIsOneLine) {
  TwoLineLabel label;
  EXPECT_EQ(label.heightForWidth(narrow), lineHeight(TextStyle::Body));
}

}  // namespace
}  // namespace Nimbrel
