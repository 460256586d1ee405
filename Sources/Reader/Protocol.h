#pragma once

#include "Platform/PictureReader.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What Nimbrel and its child process nimbrel-reader say to each other: one JSON object a line. The child says `ready`
/// once, then answers each request on its standard input on its standard output, in order: with `begun` before it looks
/// at the picture and a reading after that, or with the word that nothing here can read text.
namespace Nimbrel::Reader {

struct Request {
  std::string path;  ///< any bytes
  PictureReader::Wanted wanted = PictureReader::Wanted::TextAndCodes;
  std::vector<std::string> languages;  ///< of the user, the most wanted first, by the names of Tesseract's models

  bool operator==(const Request&) const = default;
};

struct Answer {
  std::optional<PictureReading> reading;  ///< absent when nothing here can read text

  bool operator==(const Answer&) const = default;
};

inline constexpr std::string_view ready = R"({"ready":true})";
inline constexpr std::string_view begun = R"({"begun":true})";

/// A line without its end.
[[nodiscard]] std::string encoded(const Request& request);
[[nodiscard]] std::string encoded(const Answer& answer);

/// Absent for a line that is none.
[[nodiscard]] std::optional<Request> decodedRequest(std::string_view line);
[[nodiscard]] std::optional<Answer> decodedAnswer(std::string_view line);

}  // namespace Nimbrel::Reader
