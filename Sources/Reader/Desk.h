#pragma once

#include "Reader/Protocol.h"
#include "Reader/TextReader.h"

#include <QImage>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Nimbrel::Reader {

/// Where requests are answered, one after the other. What text needs is loaded when text is first asked for, and kept.
class Desk {
 public:
  /// What cannot be decoded, or not read for want of memory, reads as empty. Absent when text is wanted and no model of
  /// any language is installed or can be loaded. `whenBegun` is called once all is loaded, before the picture is looked
  /// at: from then on it is the picture's fault if this process ends.
  [[nodiscard]] std::optional<PictureReading> answer(
      const Request& request, const std::function<void()>& whenBegun = [] {});

 private:
  [[nodiscard]] bool isAble(const Request& request);
  [[nodiscard]] bool hasText(const std::vector<std::string>& languages);
  [[nodiscard]] PictureReading read(const QImage& picture, PictureReader::Wanted wanted);

  std::vector<std::string> wantedLanguages_;  ///< what text_ was loaded for
  std::unique_ptr<TextReader> text_;
};

/// The picture over white, without transparency. Null stays null.
[[nodiscard]] QImage overWhite(const QImage& picture);

}  // namespace Nimbrel::Reader
