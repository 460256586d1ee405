#include "Linux/Tray/TrayPlaces.h"

namespace Nimbrel {

QRect placeOfPixel(QPoint pixel, const std::vector<TrayScreen>& screens) {
  if (pixel.isNull()) return {};
  for (const auto& screen : screens) {
    const auto inScreen = QPointF(pixel - screen.geometry.topLeft()) / screen.scale;
    const auto place = screen.geometry.topLeft() + inScreen.toPoint();
    if (screen.geometry.contains(place)) return {place, QSize(1, 1)};
  }
  return {};
}

}  // namespace Nimbrel
