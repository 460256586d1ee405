#include "Views/Recording/RecordingFixture.h"

#include "Support/Waiting.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <optional>

namespace Nimbrel::Testing {

void RecordingFixture::writeRecording(double end, const std::vector<double>& clicks) const {
  auto sound = clicks.empty() ? std::nullopt : std::optional(MadeMovie::Sound{.end = end, .clicks = clicks});
  writeMovie(path_, {.times = steadyTimes(end), .end = end, .sound = std::move(sound)});
}

void RecordingFixture::writeLongRecording() const {
  const auto piece = home_.path("piece.mov");
  writeMovie(piece, {.times = steadyTimes(3), .end = 3});
  repeatMovie(piece, path_, 400);
}

void RecordingFixture::openSheet() {
  sheet_ = new RecordingToolsView(*workspace_, *exports_, path_, &window_);
  sheet_->open();
}

void RecordingFixture::openAndWait() {
  openSheet();
  ASSERT_TRUE(waitUntil([this] { return !preview()->frame().isNull(); }));
  ASSERT_TRUE(waitUntil([this] { return strip()->sound() || !strip()->words().isEmpty(); }));
}

std::string RecordingFixture::textOf(const char* name) const {
  const auto* label = in<QLabel>(*sheet_, name);
  return label->isVisible() ? label->text().toStdString() : std::string();
}

void RecordingFixture::move(TimeSlider* slider, double seconds) {
  slider->setValue(static_cast<int>(std::lround(seconds * 600)));
}

bool RecordingFixture::comesToShow(double seconds) const {
  return waitUntil([&] { return preview()->seconds() == seconds && !preview()->frame().isNull(); });
}

void RecordingFixture::exportBy(QPushButton* button) {
  button->click();
  ASSERT_TRUE(waitUntil([this] { return !isOpen(); }));
}

std::vector<std::string> RecordingFixture::madeFiles() const {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(std::filesystem::path(path_).parent_path())) {
    if (entry.path() != path_) names.push_back(entry.path().filename());
  }
  std::ranges::sort(names);
  return names;
}

}  // namespace Nimbrel::Testing
