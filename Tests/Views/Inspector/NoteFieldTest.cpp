#include "Views/Inspector/NoteField.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>

namespace Nimbrel {
namespace {

TEST(NoteFieldTest, AMegabyteWithoutABreakIsShownAndEdited) {
  NoteField field;
  field.resize(280, field.height());
  field.show();
  const auto fewLines = field.height();
  const QString endless(1'000'000, QLatin1Char('x'));
  field.setNote(endless);
  QApplication::processEvents();
  EXPECT_GT(field.height(), fewLines);
  EXPECT_FALSE(field.grab().isNull());
  field.insertPlainText(QStringLiteral("y"));
  QApplication::processEvents();
  EXPECT_EQ(field.note(), QLatin1Char('y') + endless);
}

TEST(NoteFieldTest, AMegabyteWithoutABreakIsPasted) {
  NoteField field;
  field.resize(280, field.height());
  field.show();
  const QString endless(1'000'000, QLatin1Char('x'));
  QGuiApplication::clipboard()->setText(endless);
  field.paste();
  QApplication::processEvents();
  EXPECT_EQ(field.note(), endless);
  QGuiApplication::clipboard()->clear();
}

TEST(NoteFieldTest, WordsAreBrokenAnywhereOnlyWhileOneOfThemIsEndless) {
  NoteField field;
  field.setNote(QString(3'000, QLatin1Char('x')));
  EXPECT_EQ(field.wordWrapMode(), QTextOption::WrapAnywhere);
  field.setNote(QStringLiteral("words"));
  EXPECT_EQ(field.wordWrapMode(), QTextOption::WrapAtWordBoundaryOrAnywhere);
}

}  // namespace
}  // namespace Nimbrel
