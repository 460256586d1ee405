#include "Screencapture/CaptureRequest.h"

#include <algorithm>
#include <array>

namespace Nimbrel::Screencapture {

namespace {

using Subject = CaptureRequest::Subject;
using Kind = CaptureRequest::Kind;

struct KnownList {
  std::array<std::string_view, 3> options;  ///< empty ones are none
  Subject subject;
  Kind kind;
};

constexpr std::array<KnownList, 5> knownLists{{
    {{"-i", "-s"}, Subject::selection, Kind::picture},
    {{"-i", "-w"}, Subject::window, Kind::picture},
    {{"-m"}, Subject::mainScreen, Kind::picture},
    {{"-v", "-i", "-Jvideo"}, Subject::selection, Kind::movie},
    {{"-v", "-m"}, Subject::mainScreen, Kind::movie},
}};

constexpr std::string_view usage =
    "usage: nimbrel-screencapture {-i -s | -i -w | -m | -v -i -Jvideo | -v -m} -d FILE\n"
    "  -i -s          a picture of what the user selects\n"
    "  -i -w          a picture of the window that the user chooses\n"
    "  -m             a picture of the main screen\n"
    "  -v -i -Jvideo  a movie of what the user selects\n"
    "  -v -m          a movie of the main screen";

bool isList(const KnownList& list, std::span<const std::string_view> options) {
  const auto end = std::ranges::find(list.options, std::string_view());
  return std::ranges::equal(std::ranges::subrange(list.options.begin(), end), options);
}

}  // namespace

Result<CaptureRequest> captureRequest(std::span<const std::string_view> arguments) {
  const Error misuse{std::string(usage)};
  if (arguments.size() < 3 || arguments[arguments.size() - 2] != "-d" || arguments.back().empty()) return misuse;
  const auto options = arguments.first(arguments.size() - 2);
  const auto known = std::ranges::find_if(knownLists, [&](const auto& list) { return isList(list, options); });
  if (known == knownLists.end()) return misuse;
  return CaptureRequest{known->subject, known->kind, std::string(arguments.back())};
}

}  // namespace Nimbrel::Screencapture
