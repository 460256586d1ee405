#include "Linux/Checkup/Findings.h"
#include "Linux/Media/PictureEncoder.h"
#include "Platform/HeicEncoder.h"

#include <QImage>

#include <limits>

namespace Nimbrel::Checkup {

namespace {

/// By encoding one, since the library has encoders that come and go with packages.
Finding heicFinding() {
  QImage picture(64, 64, QImage::Format_RGB32);
  picture.fill(Qt::white);
  const bool works = HeicEncoder::encode(picture, 0.5, std::numeric_limits<std::int64_t>::max()).has_value();
  return {"HEIC encoder", works,
          works ? "" : "install libheif1 with an encoder for HEVC, as libx265; nothing is shrunk"};
}

Finding movieFinding() {
  const auto choices = Media::encoderChoices();
  for (const auto& choice : choices) {
    if (avcodec_find_encoder_by_name(choice.name) == nullptr) continue;
    const bool isBest = &choice == &choices.front();
    const auto used = std::string(choice.name);
    return {"movie encoder", true, isBest ? used : used + "; install libavcodec with libx264 for smaller recordings"};
  }
  return {"movie encoder", false, "install libavcodec with libx264: nothing is recorded or cut"};
}

Finding soundFinding() {
  const auto* encoder = avcodec_find_encoder(AV_CODEC_ID_AAC);
  if (encoder != nullptr) return {"sound encoder", true, encoder->name};
  return {"sound encoder", false, "install libavcodec with AAC: recordings have no sound"};
}

}  // namespace

std::vector<Finding> encoderFindings() { return {heicFinding(), movieFinding(), soundFinding()}; }

}  // namespace Nimbrel::Checkup
