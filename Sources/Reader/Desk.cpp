#include "Reader/Desk.h"

#include "Platform/ImageFile.h"
#include "Reader/CodeFinder.h"
#include "Reader/Languages.h"

#include <QPainter>

#include <exception>
#include <utility>

namespace Nimbrel::Reader {

using Wanted = PictureReader::Wanted;

std::optional<PictureReading> Desk::answer(const Request& request, const std::function<void()>& whenBegun) {
  if (!isAble(request)) return std::nullopt;
  whenBegun();
  try {
    const auto picture = overWhite(ImageFile::picture(request.path));
    return picture.isNull() ? PictureReading() : read(picture, request.wanted);
  } catch (const std::exception&) {
    return PictureReading();
  }
}

bool Desk::isAble(const Request& request) {
  if (request.wanted == Wanted::Codes) return true;
  try {
    return hasText(request.languages);
  } catch (const std::exception&) {
    return false;
  }
}

bool Desk::hasText(const std::vector<std::string>& languages) {
  if (text_ && languages == wantedLanguages_) return true;
  text_ = nullptr;
  const auto installed = installedLanguages(languages);
  if (installed.empty()) return false;
  auto text = std::make_unique<TextReader>(installed);
  // There is a model but it does not load: it is being replaced, or was cut short.
  if (!text->isReady()) return false;
  text_ = std::move(text);
  wantedLanguages_ = languages;
  return true;
}

PictureReading Desk::read(const QImage& picture, Wanted wanted) {
  PictureReading reading;
  // For text alone as well: the modules of a code would be read as letters.
  std::vector<QRect> boxes;
  for (auto& code : findCodes(picture)) {
    boxes.push_back(code.box);
    if (wanted != Wanted::Text) reading.codes.push_back(std::move(code.payload));
  }
  if (wanted != Wanted::Codes) reading.blocks = text_->read(picture, boxes);
  return reading;
}

QImage overWhite(const QImage& picture) {
  if (!picture.hasAlphaChannel()) return picture.convertToFormat(QImage::Format_RGB32);
  QImage page(picture.size(), QImage::Format_RGB32);
  if (page.isNull()) return {};
  page.fill(Qt::white);
  QPainter(&page).drawImage(0, 0, picture);
  return page;
}

}  // namespace Nimbrel::Reader
