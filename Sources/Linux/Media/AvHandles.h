#pragma once

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libswresample/swresample.h>
#include <libswscale/swscale.h>
}

#include <memory>

/// Owners of what FFmpeg's libraries hand out.
namespace Nimbrel::Media {

/// Frees by a function that takes the address of the pointer, as most of the libraries' do.
template <auto release>
struct Releasing {
  template <class Handle>
  void operator()(Handle* handle) const {
    release(&handle);
  }
};

/// Frees by a function that takes the pointer.
template <auto release>
struct Freeing {
  template <class Handle>
  void operator()(Handle* handle) const {
    release(handle);
  }
};

/// A file that is written through avio_open(), which is closed with it.
struct ClosingOutput {
  void operator()(AVFormatContext* context) const {
    avio_closep(&context->pb);
    avformat_free_context(context);
  }
};

using InputFormat = std::unique_ptr<AVFormatContext, Releasing<avformat_close_input>>;
using OutputFormat = std::unique_ptr<AVFormatContext, ClosingOutput>;
using Codec = std::unique_ptr<AVCodecContext, Releasing<avcodec_free_context>>;
using Frame = std::unique_ptr<AVFrame, Releasing<av_frame_free>>;
using Packet = std::unique_ptr<AVPacket, Releasing<av_packet_free>>;
using Scaler = std::unique_ptr<SwsContext, Freeing<sws_freeContext>>;
using Resampler = std::unique_ptr<SwrContext, Releasing<swr_free>>;

/// Options for a call; what it takes out of them is gone afterwards.
class Options {
 public:
  Options() = default;
  ~Options() { av_dict_free(&entries_); }
  Options(const Options&) = delete;
  Options& operator=(const Options&) = delete;

  void set(const char* key, const char* value) { av_dict_set(&entries_, key, value, 0); }
  [[nodiscard]] AVDictionary** get() { return &entries_; }

 private:
  AVDictionary* entries_ = nullptr;
};

}  // namespace Nimbrel::Media
