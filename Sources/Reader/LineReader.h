#pragma once

#include "Reader/LineCrop.h"
#include "Reader/Words.h"

#include <memory>
#include <string>

namespace Nimbrel::Reader {

/// Tesseract for single lines. Loading takes a tenth of a second; one thread at a time.
class LineReader {
 public:
  /// `languages` in Tesseract's form, "deu+eng"; those without an installed model are passed over.
  explicit LineReader(const std::string& languages);
  ~LineReader();

  /// False when no model could be loaded: everything reads as empty then.
  [[nodiscard]] bool isReady() const { return engine_ != nullptr; }

  /// The words from left to right, where they stand in the crop; stains among them, with little confidence.
  [[nodiscard]] std::vector<Word> read(const Plane& grey);

 private:
  struct Engine;
  std::unique_ptr<Engine> engine_;
};

}  // namespace Nimbrel::Reader
