#include "Support/FakePictureReader.h"

#include <gtest/gtest.h>

#include <utility>

namespace Nimbrel::Testing {

void FakePictureReader::read(QObject* context, const std::string& path, Wanted wanted, Then then) {
  requests.push_back({path, wanted});
  if (!answersByItself_) {
    waiting_.push_back({context, std::move(then)});
    return;
  }
  const auto content = contents.find(path);
  std::optional<PictureReading> reading;
  if (!isMissing) reading = content == contents.end() ? PictureReading{} : content->second;
  QMetaObject::invokeMethod(
      context, [then = std::move(then), reading] { then(reading); }, Qt::QueuedConnection);
}

std::vector<std::string> FakePictureReader::paths() const {
  std::vector<std::string> paths;
  for (const auto& request : requests) paths.push_back(request.path);
  return paths;
}

void FakePictureReader::answer(std::optional<PictureReading> reading) {
  ASSERT_FALSE(waiting_.empty()) << "nothing was asked";
  const auto request = std::move(waiting_.front());
  waiting_.pop_front();
  if (request.context) request.then(std::move(reading));
}

PictureReading readingOf(const std::vector<std::string>& lines, const std::vector<std::string>& codes) {
  PictureReading reading{.blocks = {}, .codes = codes};
  for (std::size_t line = 0; line < lines.size(); ++line) {
    const double top = 0.1 + 0.05 * static_cast<double>(line);
    reading.blocks.push_back({lines[line], QRectF(0.1, top, 0.5, 0.02)});
  }
  return reading;
}

}  // namespace Nimbrel::Testing
