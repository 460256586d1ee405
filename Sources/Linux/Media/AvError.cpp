#include "Linux/Media/AvError.h"

#include "Linux/Files/ErrorWords.h"

extern "C" {
#include <libavutil/error.h>
#include <libavutil/log.h>
}

#include <array>
#include <cerrno>

namespace Nimbrel::Media {

namespace {

/// Numbers of the system lie below this; those of the libraries are made of four letters.
constexpr int largestErrno = 4096;

}  // namespace

Error avError(int code) {
  switch (code) {
    case AVERROR_INVALIDDATA:
    case AVERROR_EOF:
    case AVERROR_PATCHWELCOME:
    case AVERROR_STREAM_NOT_FOUND:
    case AVERROR(EINVAL):
      return {"The file is damaged or no recording"};
    case AVERROR_DECODER_NOT_FOUND:
      return {"Nothing here decodes the recording"};
    default:
      break;
  }
  if (-code < largestErrno) return {wordsFor(-code)};
  std::array<char, AV_ERROR_MAX_STRING_SIZE> description{};
  av_strerror(code, description.data(), description.size());
  return {description.data()};
}

void quietLibraries() {
  [[maybe_unused]] static const bool done = [] {
    av_log_set_level(AV_LOG_QUIET);
    return true;
  }();
}

}  // namespace Nimbrel::Media
