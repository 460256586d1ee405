#pragma once

#include <QColor>

namespace Nimbrel::Samples {

/// The colours of a window and of the controls in it.
struct Theme {
  QColor page;
  QColor side;
  QColor chrome;
  QColor line;
  QColor text;
  QColor muted;
  QColor accent;
  QColor onAccent;
  QColor selection;
  QColor field;
  QColor danger;
  QColor success;
  QColor warning;
};

[[nodiscard]] const Theme& lightTheme();
[[nodiscard]] const Theme& darkTheme();

}  // namespace Nimbrel::Samples
