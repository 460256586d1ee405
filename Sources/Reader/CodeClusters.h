#pragma once

#include <QImage>
#include <QRect>

#include <vector>

namespace Nimbrel::Reader {

/// Where a code in two dimensions may stand in a picture in shades of grey: places about as high as wide, closed off by
/// a little quiet around them, of two shades in like shares that change often along both axes. The most code-like come
/// first; text and photographs give few or none. Pure.
[[nodiscard]] std::vector<QRect> codeClusters(const QImage& grey);

}  // namespace Nimbrel::Reader
