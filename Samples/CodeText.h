#pragma once

#include "Samples/Canvas.h"

#include <span>

namespace Nimbrel::Samples {

struct CodeColors {
  QColor text;
  QColor keyword;
  QColor string;
  QColor comment;
  QColor number;
  QColor type;
};

/// What tells the parts of a line of code apart.
struct CodeLanguage {
  std::span<const QStringView> keywords;
  QStringView comment;
};

/// Sets one line of code in its colours.
void codeLine(Canvas& canvas, QPointF baseline, QStringView line, int size, const CodeLanguage& language,
              const CodeColors& colors);

}  // namespace Nimbrel::Samples
