#include "Linux/Media/AvError.h"
#include "Linux/Media/AvHandles.h"
#include "Linux/Media/Encoding.h"
#include "Platform/MediaFile.h"

#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <vector>

namespace Nimbrel {
namespace {

using namespace Media;
using MediaFile::TimeRange;

constexpr int side = 64;
constexpr int picturesOfEach = 5;
constexpr AVRational framesPerSecond{25, 1};

/// A brightness and two differences of colour, and what they stand for.
struct Shade {
  std::array<std::uint8_t, 3> levels;
  AVColorSpace space;
  AVColorRange range;
};

Frame picture(const Shade& shade, std::int64_t number) {
  Frame frame(av_frame_alloc());
  frame->format = AV_PIX_FMT_YUV444P;
  frame->width = side;
  frame->height = side;
  EXPECT_GE(av_frame_get_buffer(frame.get(), 0), 0);
  for (std::size_t plane = 0; plane < 3; ++plane) {
    std::memset(frame->data[plane], shade.levels[plane], static_cast<std::size_t>(frame->linesize[plane]) * side);
  }
  frame->colorspace = shade.space;
  frame->color_range = shade.range;
  frame->pts = number;
  return frame;
}

Codec encoderFor(const Shade& shade) {
  const AVCodec* encoder = avcodec_find_encoder_by_name("libx264");
  Codec codec(avcodec_alloc_context3(encoder));
  codec->width = side;
  codec->height = side;
  codec->pix_fmt = AV_PIX_FMT_YUV444P;
  codec->time_base = av_inv_q(framesPerSecond);
  codec->framerate = framesPerSecond;
  codec->max_b_frames = 0;
  codec->colorspace = shade.space;
  codec->color_range = shade.range;
  EXPECT_GE(avcodec_open2(codec.get(), encoder, nullptr), 0);
  return codec;
}

/// Writes some pictures of each shade, one behind the other in the same track.
void writeShades(const std::string& path, const std::vector<Shade>& shades) {
  quietLibraries();
  AVFormatContext* made = nullptr;
  ASSERT_GE(avformat_alloc_output_context2(&made, nullptr, "mpegts", nullptr), 0);
  const OutputFormat output(made);
  ASSERT_GE(avio_open(&output->pb, ("file:" + path).c_str(), AVIO_FLAG_WRITE), 0);
  AVStream* track = avformat_new_stream(output.get(), nullptr);
  ASSERT_GE(avcodec_parameters_from_context(track->codecpar, encoderFor(shades.front()).get()), 0);
  ASSERT_GE(avformat_write_header(output.get(), nullptr), 0);
  const PacketSink write = [&](AVPacket& packet) -> std::optional<Error> {
    av_packet_rescale_ts(&packet, av_inv_q(framesPerSecond), track->time_base);
    EXPECT_GE(av_write_frame(output.get(), &packet), 0);
    return std::nullopt;
  };
  std::int64_t number = 0;
  for (const auto& shade : shades) {
    const auto codec = encoderFor(shade);
    for (int i = 0; i < picturesOfEach; ++i) EXPECT_FALSE(encode(*codec, picture(shade, number++).get(), write));
    EXPECT_FALSE(encode(*codec, nullptr, write));
  }
  ASSERT_GE(av_write_trailer(output.get()), 0);
}

TEST(ChangingColours, KeepTheirLooks) {
  const Testing::TemporaryFolder folder;
  const auto source = folder.path("source.ts");
  // The same red each time.
  writeShades(source, {{{63, 102, 240}, AVCOL_SPC_BT709, AVCOL_RANGE_MPEG},
                       {{82, 90, 240}, AVCOL_SPC_SMPTE170M, AVCOL_RANGE_MPEG},
                       {{74, 97, 240}, AVCOL_SPC_BT2020_NCL, AVCOL_RANGE_MPEG},
                       {{76, 85, 255}, AVCOL_SPC_SMPTE170M, AVCOL_RANGE_JPEG},
                       {{63, 102, 240}, AVCOL_SPC_BT709, AVCOL_RANGE_MPEG}});
  const auto target = folder.path("target.mov");
  const auto failure = MediaFile::exportMovie(source, std::vector<TimeRange>{{0, 1}}, target, {});
  ASSERT_FALSE(failure) << failure->message;
  const auto grabber = MediaFile::FrameGrabber::open(target);
  ASSERT_TRUE(grabber) << grabber.error().message;
  for (int i = 0; i < 5 * picturesOfEach; ++i) {
    const auto image = grabber.value()->frameAt(i / av_q2d(framesPerSecond));
    ASSERT_TRUE(image) << image.error().message;
    const auto colour = image.value().pixel(side / 2, side / 2);
    EXPECT_GE(qRed(colour), 245) << i;
    EXPECT_LE(qGreen(colour), 10) << i;
    EXPECT_LE(qBlue(colour), 10) << i;
  }
}

}  // namespace
}  // namespace Nimbrel
