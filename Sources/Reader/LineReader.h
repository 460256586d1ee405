#pragma once

#include "Reader/LineCrop.h"
#include "Reader/Words.h"

#include <memory>
#include <string>
#include <vector>

namespace Nimbrel::Reader {

/// Tesseract for single lines. Loading takes a tenth of a second; one thread at a time.
class LineReader {
 public:
  /// `languages` in Tesseract's form, "deu+eng", all with a model on this machine (Languages.h tells which).
  explicit LineReader(const std::string& languages);
  ~LineReader();

  /// False when the models could not be loaded: everything reads as empty then.
  [[nodiscard]] bool isReady() const { return engine_ != nullptr; }

  /// The words from left to right, where they stand in the crop; stains among them, with little confidence.
  [[nodiscard]] std::vector<Word> read(const Plane& grey);

 private:
  struct Engine;
  std::unique_ptr<Engine> engine_;
};

}  // namespace Nimbrel::Reader
