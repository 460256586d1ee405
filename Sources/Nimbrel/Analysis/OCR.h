#pragma once

#include "Platform/PictureReader.h"

#include <QObject>

#include <functional>
#include <optional>
#include <string>
#include <vector>

/// The text and the codes of a picture, in the order in which a person reads them.
namespace Nimbrel::OCR {

struct Recognition {
  std::string text;               ///< the blocks' texts, one a line
  std::vector<TextBlock> blocks;  ///< in reading order

  bool operator==(const Recognition&) const = default;
};

struct RecognitionWithBarcodes {
  Recognition recognition;
  std::vector<std::string> barcodes;
};

/// Puts blocks into reading order: those whose vertical middles lie closer than one percent of the picture's height
/// from left to right, others from the top down. The rule is not transitive; a stable merge sort applies it, so that
/// equal input gives equal output.
[[nodiscard]] Recognition arranged(std::vector<TextBlock> blocks);

/// The payloads without empty ones and repetitions, in the order of first finding.
[[nodiscard]] std::vector<std::string> distinctCodes(const std::vector<std::string>& payloads);

/// Hears what was recognised; as with PictureReader::Then, nothing when the picture could not be looked at now.
template <class T>
using Then = std::function<void(std::optional<T>)>;

/// Reads text, codes or both off the picture at `path`, and calls `then` as PictureReader::read does. Nothing fails:
/// what cannot be read has no text and no codes.
void recognize(QObject* context, PictureReader& reader, const std::string& path, Then<Recognition> then);
void barcodes(QObject* context, PictureReader& reader, const std::string& path, Then<std::vector<std::string>> then);
/// Both from one look at the picture.
void recognizeWithBarcodes(QObject* context, PictureReader& reader, const std::string& path,
                           Then<RecognitionWithBarcodes> then);

}  // namespace Nimbrel::OCR
