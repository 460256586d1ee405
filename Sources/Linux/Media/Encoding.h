#pragma once

#include "Foundation/Result.h"
#include "Linux/Media/AvHandles.h"

#include <functional>
#include <optional>

namespace Nimbrel::Media {

/// Takes a packet as an encoder made it, its times in the encoder's time base. It may take the content out of it.
using PacketSink = std::function<std::optional<Error>(AVPacket& packet)>;

/// Encodes a frame, or with null what the encoder has kept back, and hands on the packets that come of it.
[[nodiscard]] std::optional<Error> encode(AVCodecContext& codec, const AVFrame* frame, const PacketSink& sink);

}  // namespace Nimbrel::Media
