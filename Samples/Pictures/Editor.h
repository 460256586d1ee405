#pragma once

#include "Samples/Canvas.h"
#include "Samples/CodeText.h"
#include "Samples/Theme.h"

#include <span>

namespace Nimbrel::Samples {

/// A code editor: a tree of files, tabs, numbered lines with a caret, a status line.
struct Editor {
  std::span<const QStringView> files;
  int chosenFile = 0;
  std::span<const QStringView> tabTitles;
  int firstNumber = 1;
  std::span<const QStringView> lines;
  CodeLanguage language;
  QStringView languageName;
  /// The place of the caret among `lines`, both counted from 0.
  int caretLine = 0;
  int caretColumn = 0;
};

void drawEditor(Canvas& canvas, const QRectF& page, const Editor& editor, const CodeColors& colors, const Theme& theme);

[[nodiscard]] const CodeColors& lightCode();
[[nodiscard]] const CodeColors& darkCode();

}  // namespace Nimbrel::Samples
