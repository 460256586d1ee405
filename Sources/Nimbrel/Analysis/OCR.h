#pragma once

#include "Platform/PictureReader.h"

#include <QObject>

#include <functional>
#include <string>
#include <vector>

/// The text and the codes of a picture, in the order in which a person reads them.
namespace Nimbrel::OCR {

struct Recognition {
  std::string text;               ///< the blocks' texts, one a line
  std::vector<TextBlock> blocks;  ///< in reading order
};

/// Puts blocks into reading order: those whose vertical middles lie closer than one percent of the picture's height
/// from left to right, others from the top down. The rule is not transitive; a stable merge sort applies it, so that
/// equal input gives equal output.
[[nodiscard]] Recognition arranged(std::vector<TextBlock> blocks);

/// The payloads without empty ones and repetitions, in the order of first finding.
[[nodiscard]] std::vector<std::string> distinctCodes(const std::vector<std::string>& payloads);

/// Reads text, codes or both off the picture at `path`, and calls `then` as PictureReader::read does. Nothing fails:
/// what cannot be read has no text and no codes.
void recognize(QObject* context, PictureReader& reader, const std::string& path, std::function<void(Recognition)> then);
void barcodes(QObject* context, PictureReader& reader, const std::string& path,
              std::function<void(std::vector<std::string>)> then);
void recognizeWithBarcodes(QObject* context, PictureReader& reader, const std::string& path,
                           std::function<void(Recognition, std::vector<std::string>)> then);

}  // namespace Nimbrel::OCR
