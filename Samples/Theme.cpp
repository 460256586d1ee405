#include "Samples/Theme.h"

namespace Nimbrel::Samples {

const Theme& lightTheme() {
  static const Theme theme{.page = QColor(0xffffff),
                           .side = QColor(0xf3f4f6),
                           .chrome = QColor(0xe6e8ec),
                           .line = QColor(0xcfd3da),
                           .text = QColor(0x1d2128),
                           .muted = QColor(0x646c7a),
                           .accent = QColor(0x2f6bd8),
                           .onAccent = QColor(0xffffff),
                           .selection = QColor(0xd9e6fb),
                           .field = QColor(0xfbfcfd),
                           .danger = QColor(0xc5352b),
                           .success = QColor(0x2b8a4b),
                           .warning = QColor(0xa86a0b)};
  return theme;
}

const Theme& darkTheme() {
  static const Theme theme{.page = QColor(0x1e222a),
                           .side = QColor(0x191c23),
                           .chrome = QColor(0x2a2f39),
                           .line = QColor(0x3a414e),
                           .text = QColor(0xe3e6eb),
                           .muted = QColor(0x959eae),
                           .accent = QColor(0x5b9bf8),
                           .onAccent = QColor(0x0c1420),
                           .selection = QColor(0x2f4263),
                           .field = QColor(0x252a33),
                           .danger = QColor(0xf0776b),
                           .success = QColor(0x7cc68d),
                           .warning = QColor(0xe5b45c)};
  return theme;
}

}  // namespace Nimbrel::Samples
