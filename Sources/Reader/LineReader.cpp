#include "Reader/LineReader.h"

#include <tesseract/baseapi.h>
#include <tesseract/resultiterator.h>

namespace Nimbrel::Reader {

namespace {

constexpr int resolution = 300;  ///< what crops of this height correspond to; else it is guessed with a warning

struct FreeText {
  void operator()(char* text) const { delete[] text; }
};

}  // namespace

struct LineReader::Engine {
  tesseract::TessBaseAPI api;

  bool load(const std::string& languages) {
    if (api.Init(nullptr, languages.c_str(), tesseract::OEM_LSTM_ONLY) != 0) return false;
    api.SetPageSegMode(tesseract::PSM_SINGLE_LINE);
    // The crops are dark on white; a second look at the negative of each would be for nothing.
    api.SetVariable("tessedit_do_invert", "0");
    return true;
  }
};

LineReader::LineReader(const std::string& languages) : engine_(std::make_unique<Engine>()) {
  if (!engine_->load(languages)) engine_ = nullptr;
}

LineReader::~LineReader() = default;

std::vector<Word> LineReader::read(const Plane& grey) {
  if (!engine_) return {};
  auto& api = engine_->api;
  api.SetImage(grey.bytes().data(), grey.width(), grey.height(), 1, grey.width());
  api.SetSourceResolution(resolution);
  if (api.Recognize(nullptr) != 0) return {};
  const std::unique_ptr<tesseract::ResultIterator> found(api.GetIterator());
  if (!found) return {};
  std::vector<Word> words;
  do {
    const std::unique_ptr<char, FreeText> text(found->GetUTF8Text(tesseract::RIL_WORD));
    if (!text || *text == '\0') continue;
    const float confidence = found->Confidence(tesseract::RIL_WORD);
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    found->BoundingBox(tesseract::RIL_WORD, &left, &top, &right, &bottom);
    words.push_back({text.get(), static_cast<double>(left), static_cast<double>(right), confidence});
  } while (found->Next(tesseract::RIL_WORD));
  return words;
}

}  // namespace Nimbrel::Reader
