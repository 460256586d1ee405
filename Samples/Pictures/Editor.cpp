#include "Samples/Pictures/Editor.h"

#include "Samples/Controls.h"

#include <cmath>

namespace Nimbrel::Samples {

namespace {

constexpr int codeSize = 13;
constexpr qreal lineHeight = 20;
constexpr qreal gutterWidth = 52;

void drawCaret(Canvas& canvas, const QRectF& row, int column, const Theme& theme) {
  const auto cell = canvas.width(u"0", {.size = codeSize, .face = Face::mono});
  canvas.fill({std::round(row.left() + gutterWidth + column * cell), row.top() + 2, 2, lineHeight - 4}, theme.text);
}

void drawLines(Canvas& canvas, const QRectF& page, const Editor& editor, const CodeColors& colors, const Theme& theme) {
  QRectF row(page.left(), page.top() + 6, page.width(), lineHeight);
  int index = 0;
  for (const auto line : editor.lines) {
    if (row.bottom() > page.bottom()) return;
    const bool current = index == editor.caretLine;
    if (current) canvas.fill(row, theme.side);
    const QRectF number(row.left(), row.top(), gutterWidth - 16, lineHeight);
    canvas.textIn(number, QString::number(editor.firstNumber + index),
                  {.size = codeSize, .color = current ? theme.text : theme.muted, .face = Face::mono}, Qt::AlignRight);
    codeLine(canvas, {row.left() + gutterWidth, row.top() + 15}, line, codeSize, editor.language, colors);
    if (current) drawCaret(canvas, row, editor.caretColumn, theme);
    row.translate(0, lineHeight);
    ++index;
  }
}

}  // namespace

void drawEditor(Canvas& canvas, const QRectF& page, const Editor& editor, const CodeColors& colors,
                const Theme& theme) {
  const auto place = QStringLiteral("Ln %1, Col %2    Spaces: 2    UTF-8    %3")
                         .arg(editor.firstNumber + editor.caretLine)
                         .arg(editor.caretColumn + 1)
                         .arg(editor.languageName);
  const auto body = statusBar(canvas, page, u"main   2 changed files", place, theme);
  const auto work = sidebar(canvas, body, 200, editor.files, editor.chosenFile, theme);
  const auto text = tabs(canvas, work, editor.tabTitles, 0, theme);
  drawLines(canvas, text, editor, colors, theme);
  scrollBar(canvas, {text.right() - 12, text.top(), 12, text.height()}, 0.1, 0.45, theme);
}

const CodeColors& lightCode() {
  static const CodeColors colors{.text = QColor(0x24292f),
                                 .keyword = QColor(0x8b2fa8),
                                 .string = QColor(0x1f7a3d),
                                 .comment = QColor(0x6e7681),
                                 .number = QColor(0xb4500a),
                                 .type = QColor(0x1a5fb4)};
  return colors;
}

const CodeColors& darkCode() {
  static const CodeColors colors{.text = QColor(0xdfe3ea),
                                 .keyword = QColor(0xc792ea),
                                 .string = QColor(0x9fd58a),
                                 .comment = QColor(0x8792a6),
                                 .number = QColor(0xf2a66b),
                                 .type = QColor(0x7fc1ff)};
  return colors;
}

}  // namespace Nimbrel::Samples
