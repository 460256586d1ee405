#pragma once

#include "Platform/PictureReader.h"

#include <QImage>
#include <QRect>

#include <memory>
#include <string>
#include <vector>

namespace Nimbrel::Reader {

/// Recognises the text of screenshots: finds the lines by itself and hands them to Tesseract one by one. Loaded once
/// and kept, since loading takes a tenth of a second. One thread at a time; it uses several of its own.
class TextReader {
 public:
  /// `languages` in Tesseract's form, "deu+eng"; the models are the installed ones.
  explicit TextReader(const std::string& languages);
  ~TextReader();

  /// The text of an upright, opaque picture in RGB32, without what stands in the `blanked` boxes (in pixels): the
  /// modules of a code would read as letters.
  [[nodiscard]] std::vector<TextBlock> read(const QImage& picture, const std::vector<QRect>& blanked);

 private:
  struct Engines;
  std::unique_ptr<Engines> engines_;
};

}  // namespace Nimbrel::Reader
