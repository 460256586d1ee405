#include "RecognitionCorpus.h"

#include <array>

namespace Nimbrel::Benchmarks {

namespace {

const std::array<const char*, 7> families{"DejaVu Sans", "Liberation Sans", "Open Sans",       "Roboto",
                                          "Cantarell",   "DejaVu Serif",    "Liberation Serif"};
const std::array<const char*, 3> fixedFamilies{"DejaVu Sans Mono", "Hack", "Liberation Mono"};
constexpr std::array sizes{13, 11, 14, 12, 16, 11, 15};
constexpr int looksOfEach = 3;
constexpr QSize pageSize(900, 640);

/// The n-th look: the lists have no common divisor, so that everything meets everything.
Look lookAt(unsigned n) {
  return {.family = QString::fromLatin1(families[n % families.size()]),
          .fixedFamily = QString::fromLatin1(fixedFamilies[n % fixedFamilies.size()]),
          .pixels = sizes[(n / 2) % sizes.size()],
          .scale = n % 5 == 3 ? 2.0 : 1.0,
          .dark = n % 4 == 1 || n % 4 == 2,
          .subpixels = n % 9 == 4,
          .seed = n};
}

}  // namespace

std::vector<Page> recognitionCorpus() {
  auto layouts = documentLayouts();
  for (const auto& layout : windowLayouts()) layouts.push_back(layout);
  std::vector<Page> pages;
  unsigned n = 0;
  for (const auto& [name, layout] : layouts) {
    for (int i = 0; i < looksOfEach; ++i, ++n) {
      const auto look = lookAt(n);
      Canvas canvas(pageSize, look);
      Wording wording(n + 1);
      layout(canvas, wording);
      pages.push_back(canvas.finished(QStringLiteral("%1-%2-%3px%4%5%6")
                                          .arg(QString::fromLatin1(name))
                                          .arg(i + 1)
                                          .arg(look.pixels)
                                          .arg(look.dark ? QStringLiteral("-dark") : QString())
                                          .arg(look.scale > 1 ? QStringLiteral("-2x") : QString())
                                          .arg(look.subpixels ? QStringLiteral("-lcd") : QString())));
    }
  }
  return pages;
}

}  // namespace Nimbrel::Benchmarks
