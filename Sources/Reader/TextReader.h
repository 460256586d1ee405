#pragma once

#include "Platform/PictureReader.h"

#include <QImage>
#include <QRect>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

namespace Nimbrel::Reader {

/// Recognises the text of screenshots: finds the lines by itself and hands them to Tesseract one by one. Loaded once
/// and kept, since loading takes a tenth of a second. One thread at a time; it uses two where there are two cores.
/// Tesseract's own threads are to be off (OMP_THREAD_LIMIT=1 in the environment of the process): they only cost.
class TextReader {
 public:
  /// Screenshots take a second or two. What takes longer than this, of work in each thread, is no page of text.
  static constexpr std::chrono::seconds longestReading{40};

  /// `languages` in Tesseract's form, "deu+eng", all with a model on this machine (Languages.h tells which); if they
  /// cannot be loaded, every picture is without text.
  explicit TextReader(const std::string& languages, std::chrono::seconds longest = longestReading);
  ~TextReader();

  /// False when no model could be loaded: everything reads as empty then, which says nothing about the pictures.
  [[nodiscard]] bool isReady() const;

  /// The text of an upright, opaque picture in RGB32, without what stands in the `blanked` boxes (in pixels): the
  /// modules of a code would read as letters. Blocks are in no particular order, but always the same. Of what takes
  /// longer than the reader was told, the rest is left unread.
  [[nodiscard]] std::vector<TextBlock> read(const QImage& picture, const std::vector<QRect>& blanked);

 private:
  struct Engines;
  std::chrono::seconds longest_;
  std::unique_ptr<Engines> engines_;
};

}  // namespace Nimbrel::Reader
