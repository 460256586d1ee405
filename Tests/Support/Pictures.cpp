#include "Support/Pictures.h"

#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QPainter>
#include <QtEndian>

#include <algorithm>
#include <filesystem>
#include <random>

namespace Nimbrel::Testing {

QImage picture(int width, int height, int seed) {
  QImage image(width, height, QImage::Format_RGB32);
  QPainter painter(&image);
  QLinearGradient gradient(0, 0, width, height);
  gradient.setColorAt(0, QColor::fromHsv((seed * 47) % 360, 90, 240));
  gradient.setColorAt(1, QColor::fromHsv((seed * 83 + 120) % 360, 160, 120));
  painter.fillRect(image.rect(), gradient);
  std::mt19937 random(static_cast<unsigned>(seed) + 1);
  for (int bar = 0; bar < 12; ++bar) {
    const int x = static_cast<int>(random() % static_cast<unsigned>(width));
    const int y = static_cast<int>(random() % static_cast<unsigned>(height));
    painter.fillRect(x, y, width / 3 + 1, height / 12 + 1, QColor::fromRgb(static_cast<QRgb>(random())));
  }
  return image;
}

QImage grainyPicture(int width, int height, int seed) {
  auto image = picture(width, height, seed);
  std::mt19937 random(static_cast<unsigned>(seed) + 1);
  const auto grain = [&](int value) { return std::clamp(value + static_cast<int>(random() % 9U) - 4, 0, 255); };
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const auto colour = image.pixel(x, y);
      const int red = grain(qRed(colour));
      const int green = grain(qGreen(colour));
      image.setPixel(x, y, qRgb(red, green, grain(qBlue(colour))));
    }
  }
  return image;
}

void writePicture(const QImage& image, const std::string& path) {
  std::filesystem::create_directories(std::filesystem::path(path).parent_path());
  EXPECT_TRUE(image.save(QFile::decodeName(path.c_str()))) << path;
}

void writePicture(const std::string& path, int width, int height, int seed) {
  writePicture(picture(width, height, seed), path);
}

std::vector<std::string> chunksOfPng(const std::string& path) {
  constexpr std::size_t signatureSize = 8;
  constexpr std::size_t frameSize = 12;  // length, name and checksum
  const auto bytes = contentOf(path);
  EXPECT_TRUE(bytes.starts_with("\x89PNG\r\n\x1A\n")) << path;
  std::vector<std::string> names;
  for (std::size_t at = signatureSize; at + frameSize <= bytes.size();) {
    const auto name = bytes.substr(at + 4, 4);
    if (names.empty() || names.back() != name) names.push_back(name);
    at += frameSize + qFromBigEndian<quint32>(bytes.data() + at);
  }
  return names;
}

}  // namespace Nimbrel::Testing
