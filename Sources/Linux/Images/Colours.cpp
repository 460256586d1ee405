#include "Linux/Images/Colours.h"

#include "Linux/Images/QuietLibraries.h"

#include <utility>

namespace Nimbrel::Images {

QImage inSrgb(QImage image, const QColorSpace& colours) {
  const QColorSpace srgb(QColorSpace::SRgb);
  if (colours.isValid() && colours != srgb) {
    image.setColorSpace(colours);
    image.convertToColorSpace(srgb);
  }
  image.setColorSpace(QColorSpace());
  return image;
}

QImage inSrgb(QImage image, const QByteArray& iccProfile) {
  if (iccProfile.isEmpty()) return image;
  quietLibraries();
  return inSrgb(std::move(image), QColorSpace::fromIccProfile(iccProfile));
}

}  // namespace Nimbrel::Images
