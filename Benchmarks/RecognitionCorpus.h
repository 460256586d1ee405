#pragma once

#include "RecognitionPage.h"
#include "RecognitionWording.h"

#include <vector>

namespace Nimbrel::Benchmarks {

/// Draws one kind of page in the look of the canvas.
using Layout = void (*)(Canvas& canvas, Wording& wording);

struct NamedLayout {
  const char* name;
  Layout layout;
};

[[nodiscard]] std::vector<NamedLayout> documentLayouts();  ///< articles, mails, invoices, tables and the like
[[nodiscard]] std::vector<NamedLayout> windowLayouts();    ///< editors, terminals, dialogs, settings and the like

/// Pages with known text as they stand on a screen: each kind in several types, sizes, colours and densities.
[[nodiscard]] std::vector<Page> recognitionCorpus();

}  // namespace Nimbrel::Benchmarks
