#include "Platform/ImageFile.h"
#include "Support/Pictures.h"
#include "Views/Editor/EditorFixture.h"
#include "Views/Shared/TextStyles.h"

#include <QAccessible>
#include <QApplication>
#include <QPainter>

namespace Nimbrel {
namespace {

/// A letter on a window, with room for marks.
QImage letter() {
  QImage picture(1424, 900, QImage::Format_RGB32);
  picture.fill(Qt::white);
  QPainter painter(&picture);
  painter.fillRect(0, 0, 1424, 72, QColor(0xF0F1F3));
  painter.fillRect(0, 72, 484, 114, QColor(0xE6EDFB));
  QFont font;
  font.setPixelSize(28);
  painter.setFont(font);
  painter.drawText(146, 46, QStringLiteral("Inbox — 4 unread"));
  painter.drawText(26, 130, QStringLiteral("Weather window"));
  painter.drawText(530, 150, QStringLiteral("Weather window confirmed for Thursday"));
  painter.drawText(530, 364, QStringLiteral("Upper winds stay below 22 m/s from 08:10 to 09:40"));
  painter.drawText(530, 408, QStringLiteral("keep the Halden slot and move the press call"));
  painter.drawText(530, 480, QStringLiteral("Please reply before noon if your desk sees a problem."));
  return picture;
}

class EditorLooks : public Testing::EditorFixture {
 protected:
  EditorLooks() {
    makeShot();
    Testing::writePicture(letter(), shot_->path);
    setBlocks({{.text = "Inbox — 4 unread", .rect = {0.1, 0.02, 0.16, 0.04}},
               {.text = "Weather window", .rect = {0.02, 0.11, 0.15, 0.04}},
               {.text = "Weather window confirmed for Thursday", .rect = {0.37, 0.135, 0.37, 0.04}},
               {.text = "Upper winds stay below 22 m/s from 08:10 to 09:40", .rect = {0.37, 0.37, 0.49, 0.04}},
               {.text = "keep the Halden slot and move the press call", .rect = {0.37, 0.42, 0.42, 0.04}},
               {.text = "Please reply before noon", .rect = {0.37, 0.5, 0.5, 0.04}}});
  }
};

TEST_F(EditorLooks, WithMarksOfEveryKind) {
  openSheet();
  choose("Black Bar");
  drag({0.01, 0.23}, {0.33, 0.32});
  choose("Blur");
  drag({0.1, 0.02}, {0.27, 0.06});
  choose("Box");
  drag({0.36, 0.365}, {0.98, 0.475});
  in<QAbstractButton>(*sheet_, "editor.ink.Yellow")->click();
  choose("Highlight");
  drag({0.69, 0.37}, {0.86, 0.42});
  in<QAbstractButton>(*sheet_, "editor.ink.Blue")->click();
  choose("Step");
  click({0.347, 0.15});
  click({0.36, 0.365});
  in<QAbstractButton>(*sheet_, "editor.ink.Red")->click();
  choose("Arrow");
  drag({0.85, 0.7}, {0.78, 0.5});
  choose("Label");
  in<QLineEdit>(*sheet_, "editor.labelText")->setText(QStringLiteral("New time"));
  click({0.8, 0.72});
  EXPECT_EQ(textOf("editor.counter"), "8 marks");
  keepPictures(*sheet_, QStringLiteral("editor"));
}

TEST_F(EditorLooks, WithTheLinesOfTheText) {
  openSheet();
  drag({0.354, 0.356}, {0.972, 0.48});
  EXPECT_FALSE(textOf("editor.note").empty());
  moveTo(QEvent::MouseButtonPress, {0.354, 0.356});
  moveTo(QEvent::MouseMove, {0.972, 0.48});
  keepPictures(*sheet_, QStringLiteral("editor-text"));
}

TEST_F(EditorLooks, WithACropThatIsDrawn) {
  openSheet();
  choose("Crop");
  drag({0.3, 0.1}, {0.9, 0.6});
  keepPictures(*sheet_, QStringLiteral("editor-crop"));
  EXPECT_EQ(textOf("editor.counter"), "1 mark");
}

TEST_F(EditorLooks, TheRowOfToolsHasItsWidth) {
  openSheet();
  EXPECT_EQ(in<QWidget>(*sheet_, "editor.tools")->width(), 390);
  for (const auto* tool : {"editor.tool.Black Bar", "editor.tool.Highlight", "editor.tool.Text"}) {
    const auto* segment = in<QWidget>(*sheet_, tool);
    EXPECT_GE(segment->width(), segment->minimumSizeHint().width()) << tool;
  }
}

TEST_F(EditorLooks, LargeTextIsNotCutOff) {
  const auto font = interfaceFont();
  auto large = font;
  large.setPointSizeF(15);
  setInterfaceFont(large);
  QApplication::setFont(large);
  openSheet();
  choose("Label");
  for (const auto* name : {"editor.coverSecrets", "editor.coverAllText", "editor.undo", "editor.clear", "editor.cancel",
                           "editor.save", "editor.tools", "editor.labelText", "editor.ink.Black"}) {
    const auto* widget = in<QWidget>(*sheet_, name);
    EXPECT_GE(widget->width(), widget->minimumSizeHint().width()) << name;
    const QRect place(widget->mapTo(sheet_.data(), QPoint()), widget->size());
    EXPECT_TRUE(sheet_->rect().contains(place)) << name;
  }
  keepPictures(*sheet_, QStringLiteral("editor-large-text"));
  setInterfaceFont(font);
  QApplication::setFont(font);
}

TEST_F(EditorLooks, EveryControlSaysWhatItIs) {
  openSheet();
  for (const auto* name :
       {"editor.tool.Text", "editor.tool.Crop", "editor.ink.Red", "editor.save", "editor.labelText", "editor.canvas"}) {
    auto* widget = in<QWidget>(*sheet_, name);
    auto* accessible = QAccessible::queryAccessibleInterface(widget);
    ASSERT_NE(accessible, nullptr);
    EXPECT_FALSE(accessible->text(QAccessible::Name).isEmpty()) << name;
  }
  EXPECT_EQ(QAccessible::queryAccessibleInterface(in<QWidget>(*sheet_, "editor.ink.Red"))->role(),
            QAccessible::RadioButton);
}

}  // namespace
}  // namespace Nimbrel
