#pragma once

#include <QImage>
#include <QRect>

#include <string>
#include <vector>

namespace Nimbrel::Benchmarks {

struct DrawnCode {
  std::string kind;  ///< "QR Code", "EAN-13", …
  std::string payload;
  QRect box;           ///< with the quiet zone, in pixels of the page
  std::string manner;  ///< what is special about it: "2 px", "light on dark", …
  bool isLinear = false;
};

/// A drawn screenshot and what is to be found in it.
struct CodePage {
  QImage picture;
  std::vector<DrawnCode> codes;
};

/// Documents, dark editors, shops, tickets and photographs, of scale 1 and 2, with codes of all kinds that can be drawn
/// among their text; and such without any code, the last ones of the list. The same in every run.
[[nodiscard]] std::vector<CodePage> codePages();

}  // namespace Nimbrel::Benchmarks
