#include "Linux/Media/InputFile.h"

#include "Linux/Media/AvError.h"
#include "Platform/FileSystem.h"

#include <utility>

namespace Nimbrel::Media {

namespace {

/// Formats that recorders write. Others are left out, since some name further files and addresses to open.
constexpr auto formats = "mov,mp4,matroska,webm,avi,mpegts,mpeg,ogg,flv,asf";

}  // namespace

Result<InputFormat> openInput(const std::string& path) {
  quietLibraries();
  // A pipe would keep us waiting for somebody to write into it.
  if (FileSystem::isOtherThanFile(path)) return Error{"It is not a file"};
  Options options;
  options.set("protocol_whitelist", "file");
  options.set("format_whitelist", formats);
  AVFormatContext* opened = nullptr;
  if (const int code = avformat_open_input(&opened, ("file:" + path).c_str(), nullptr, options.get()); code < 0) {
    return avError(code);
  }
  InputFormat format(opened);
  format->flags |= AVFMT_FLAG_DISCARD_CORRUPT;
  if (const int code = avformat_find_stream_info(format.get(), nullptr); code < 0) return avError(code);
  return format->nb_streams > 0 ? Result(std::move(format)) : avError(AVERROR_INVALIDDATA);
}

}  // namespace Nimbrel::Media
