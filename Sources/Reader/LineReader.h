#pragma once

#include "Reader/LineCrop.h"

#include <memory>
#include <string>

namespace Nimbrel::Reader {

/// What was read off a line, UTF-8 without blanks at its ends; empty when it does not look like text.
struct LineText {
  std::string text;
  double confidence = 0;  ///< 0 to 100, the mean of its words
};

/// Tesseract for single lines. Loading takes a tenth of a second; one thread at a time.
class LineReader {
 public:
  /// `languages` in Tesseract's form, "deu+eng"; those without an installed model are passed over.
  explicit LineReader(const std::string& languages);
  ~LineReader();

  /// False when no model could be loaded: everything reads as empty then.
  [[nodiscard]] bool isReady() const { return engine_ != nullptr; }

  [[nodiscard]] LineText read(const LineCrop& crop);

 private:
  struct Engine;
  std::unique_ptr<Engine> engine_;
};

}  // namespace Nimbrel::Reader
