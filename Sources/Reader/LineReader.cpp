#include "Reader/LineReader.h"

#include <tesseract/baseapi.h>
#include <tesseract/resultiterator.h>

#include <algorithm>
#include <cstdlib>
#include <string_view>
#include <vector>

namespace Nimbrel::Reader {

namespace {

constexpr int resolution = 300;         ///< what crops of this height correspond to; else it is guessed with a warning
constexpr float leastConfidence = 25;   ///< of a word
constexpr float leastOfOneLetter = 60;  ///< of a word of one character, which any stain may look like

struct FreeText {
  void operator()(char* text) const { delete[] text; }
};

bool isOneCharacter(std::string_view text) {
  return std::ranges::count_if(text, [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }) == 1;
}

std::vector<std::string> parts(const std::string& languages) {
  std::vector<std::string> result;
  std::size_t begin = 0;
  while (begin <= languages.size()) {
    const auto end = std::min(languages.find('+', begin), languages.size());
    if (end > begin) result.push_back(languages.substr(begin, end - begin));
    begin = end + 1;
  }
  return result;
}

}  // namespace

struct LineReader::Engine {
  tesseract::TessBaseAPI api;

  bool load(const std::string& languages) {
    if (api.Init(nullptr, languages.c_str(), tesseract::OEM_LSTM_ONLY) != 0) return false;
    const char* mode = std::getenv("PSM");
    api.SetPageSegMode(static_cast<tesseract::PageSegMode>(mode ? std::atoi(mode) : 7));
    // The crops are dark on white; a second look at the negative of each would be for nothing.
    api.SetVariable("tessedit_do_invert", "0");
    return true;
  }
};

LineReader::LineReader(const std::string& languages) : engine_(std::make_unique<Engine>()) {
  if (engine_->load(languages)) return;
  std::string installed;
  for (const auto& language : parts(languages)) {
    if (!Engine().load(language)) continue;
    installed += (installed.empty() ? "" : "+") + language;
  }
  engine_ = std::make_unique<Engine>();
  if (installed.empty() || !engine_->load(installed)) engine_ = nullptr;
}

LineReader::~LineReader() = default;

LineText LineReader::read(const LineCrop& crop) {
  if (!engine_) return {};
  auto& api = engine_->api;
  api.SetImage(crop.grey.bytes().data(), crop.grey.width(), crop.grey.height(), 1, crop.grey.width());
  api.SetSourceResolution(resolution);
  if (api.Recognize(nullptr) != 0) return {};
  const std::unique_ptr<tesseract::ResultIterator> word(api.GetIterator());
  if (!word) return {};
  LineText line;
  double sum = 0;
  int count = 0;
  do {
    const std::unique_ptr<char, FreeText> text(word->GetUTF8Text(tesseract::RIL_WORD));
    if (!text || *text == '\0') continue;
    const float confidence = word->Confidence(tesseract::RIL_WORD);
    if (confidence < (isOneCharacter(text.get()) ? leastOfOneLetter : leastConfidence)) continue;
    if (!line.text.empty()) line.text += ' ';
    line.text += text.get();
    sum += static_cast<double>(confidence);
    ++count;
  } while (word->Next(tesseract::RIL_WORD));
  line.confidence = count == 0 ? 0 : sum / count;
  return line;
}

}  // namespace Nimbrel::Reader
