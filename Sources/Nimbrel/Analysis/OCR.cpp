#include "Analysis/OCR.h"

#include "Foundation/Text.h"

#include <cmath>
#include <iterator>
#include <span>
#include <string_view>
#include <unordered_set>
#include <utility>

namespace Nimbrel::OCR {

namespace {

using Blocks = std::vector<TextBlock>;

/// Blocks whose middles differ by less, as a share of the picture's height, stand on one line.
constexpr double sameLine = 0.01;

bool standsBefore(const TextBlock& a, const TextBlock& b) {
  const double aMiddle = a.rect.center().y();
  const double bMiddle = b.rect.center().y();
  if (std::abs(aMiddle - bMiddle) < sameLine) return a.rect.left() < b.rect.left();
  return aMiddle < bMiddle;
}

Blocks merged(Blocks first, Blocks second) {
  Blocks blocks;
  blocks.reserve(first.size() + second.size());
  auto a = first.begin();
  auto b = second.begin();
  while (a != first.end() && b != second.end()) {
    blocks.push_back(std::move(standsBefore(*b, *a) ? *b++ : *a++));
  }
  blocks.insert(blocks.end(), std::move_iterator(a), std::move_iterator(first.end()));
  blocks.insert(blocks.end(), std::move_iterator(b), std::move_iterator(second.end()));
  return blocks;
}

/// Takes the blocks out of their places. Our own, since the sorts of the library may do anything when the order is not
/// transitive: A can stand on one line with B and B with C, while A and C stand on two.
Blocks sortedByMerging(std::span<TextBlock> blocks) {
  if (blocks.size() < 2) return {std::move_iterator(blocks.begin()), std::move_iterator(blocks.end())};
  const auto half = blocks.size() / 2;
  return merged(sortedByMerging(blocks.first(half)), sortedByMerging(blocks.subspan(half)));
}

std::string textOf(const Blocks& blocks) {
  std::vector<std::string> lines;
  lines.reserve(blocks.size());
  for (const auto& block : blocks) lines.push_back(block.text);
  return Text::joined(lines, '\n');
}

/// What turns the answer of a reader into that of a function here.
template <class T, class Convert>
PictureReader::Then answering(Then<T> then, Convert convert) {
  return [then = std::move(then), convert](std::optional<PictureReading> reading) {
    then(reading ? std::optional<T>(convert(std::move(*reading))) : std::nullopt);
  };
}

}  // namespace

Recognition arranged(std::vector<TextBlock> blocks) {
  auto sorted = sortedByMerging(blocks);
  auto text = textOf(sorted);
  return {.text = std::move(text), .blocks = std::move(sorted)};
}

std::vector<std::string> distinctCodes(const std::vector<std::string>& payloads) {
  std::vector<std::string> codes;
  std::unordered_set<std::string_view> seen;
  for (const auto& payload : payloads) {
    if (!payload.empty() && seen.insert(payload).second) codes.push_back(payload);
  }
  return codes;
}

void recognize(QObject* context, PictureReader& reader, const std::string& path, Then<Recognition> then) {
  const auto convert = [](PictureReading reading) { return arranged(std::move(reading.blocks)); };
  reader.read(context, path, PictureReader::Wanted::Text, answering(std::move(then), convert));
}

void barcodes(QObject* context, PictureReader& reader, const std::string& path, Then<std::vector<std::string>> then) {
  const auto convert = [](const PictureReading& reading) { return distinctCodes(reading.codes); };
  reader.read(context, path, PictureReader::Wanted::Codes, answering(std::move(then), convert));
}

void recognizeWithBarcodes(QObject* context, PictureReader& reader, const std::string& path,
                           Then<RecognitionWithBarcodes> then) {
  const auto convert = [](PictureReading reading) {
    return RecognitionWithBarcodes{.recognition = arranged(std::move(reading.blocks)),
                                   .barcodes = distinctCodes(reading.codes)};
  };
  reader.read(context, path, PictureReader::Wanted::TextAndCodes, answering(std::move(then), convert));
}

}  // namespace Nimbrel::OCR
