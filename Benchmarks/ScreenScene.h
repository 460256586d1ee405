#pragma once

#include <QImage>
#include <QSize>

namespace Nimbrel::Benchmarks {

/// What a recorded screen shows over ten seconds: somebody types in an editor, a terminal scrolls, a window is dragged
/// over a wallpaper, a film plays in a corner, and the pointer wanders.
class ScreenScene {
 public:
  static constexpr QSize size{1440, 900};
  static constexpr int frameCount = 120;
  static constexpr int framesPerSecond = 12;

  ScreenScene();

  /// The screen at that frame; the same every time.
  [[nodiscard]] QImage frame(int number) const;

 private:
  QImage wallpaper_;
};

}  // namespace Nimbrel::Benchmarks
