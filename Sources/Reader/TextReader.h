#pragma once

#include "Platform/PictureReader.h"

#include <QImage>
#include <QRect>

#include <memory>
#include <string>
#include <vector>

namespace Nimbrel::Reader {

/// Recognises the text of screenshots: finds the lines by itself and hands them to Tesseract one by one. Loaded once
/// and kept, since loading takes a tenth of a second. One thread at a time; it uses two where there are two cores.
/// Tesseract's own threads are to be off (OMP_THREAD_LIMIT=1 in the environment of the process): they only cost.
class TextReader {
 public:
  /// `languages` in Tesseract's form, "deu+eng". Those without an installed model are passed over; when none is left,
  /// every picture is without text.
  explicit TextReader(const std::string& languages);
  ~TextReader();

  /// The text of an upright, opaque picture in RGB32, without what stands in the `blanked` boxes (in pixels): the
  /// modules of a code would read as letters. Blocks are in no particular order, but always the same. What takes longer
  /// than 40 seconds is read in part.
  [[nodiscard]] std::vector<TextBlock> read(const QImage& picture, const std::vector<QRect>& blanked);

 private:
  struct Engines;
  std::unique_ptr<Engines> engines_;
};

}  // namespace Nimbrel::Reader
