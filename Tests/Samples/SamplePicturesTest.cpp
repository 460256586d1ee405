#include "Samples/SampleHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QFile>
#include <QImage>

#include <ReadBarcode.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <set>

namespace Nimbrel::Testing {

namespace {

namespace fs = std::filesystem;

QImage read(const fs::path& file) { return QImage(QFile::decodeName(file.c_str())); }

/// The mean grey of the pixels under one of nine by eight equal cells, rounded to whole levels.
int cell(const QImage& gray, int row, int column) {
  const int left = gray.width() * column / 9;
  const int right = gray.width() * (column + 1) / 9;
  const int top = gray.height() * row / 8;
  const int bottom = gray.height() * (row + 1) / 8;
  std::int64_t sum = 0;
  for (int y = top; y < bottom; ++y) {
    for (int x = left; x < right; ++x) sum += gray.constScanLine(y)[x];
  }
  const std::int64_t count = static_cast<std::int64_t>(right - left) * (bottom - top);
  return static_cast<int>((sum + count / 2) / count);
}

std::uint64_t differenceHash(const QImage& picture) {
  const auto gray = picture.convertToFormat(QImage::Format_Grayscale8);
  std::uint64_t bits = 0;
  for (int row = 0; row < 8; ++row) {
    for (int column = 0; column < 8; ++column) {
      const bool darkens = cell(gray, row, column) > cell(gray, row, column + 1);
      if (darkens) bits |= std::uint64_t{1} << (8 * row + column);
    }
  }
  return bits;
}

struct Looks {
  fs::path file;
  QSize size;
  std::uint64_t hash;
};

std::vector<Looks> looksOf(const std::vector<fs::path>& files) {
  std::vector<Looks> all;
  for (const auto& file : files) {
    const auto picture = read(file);
    EXPECT_FALSE(picture.isNull()) << file;
    all.push_back({file, picture.size(), differenceHash(picture)});
  }
  return all;
}

int distance(const Looks& one, const Looks& other) { return std::popcount(one.hash ^ other.hash); }

class SamplePictures : public ::testing::Test {
 protected:
  void SetUp() override { home_.make(); }

  SampleHome home_;
};

TEST_F(SamplePictures, AreOfBelievableSizes) {
  std::multiset<std::pair<int, int>> sizes;
  for (const auto& file : home_.pictures()) {
    const auto picture = read(file);
    ASSERT_FALSE(picture.isNull()) << file;
    sizes.insert({picture.width(), picture.height()});
  }
  EXPECT_EQ(sizes.count({2880, 1800}), 2U);
  EXPECT_GE(sizes.count({1440, 900}), 3U);
  EXPECT_GE(sizes.count({900, 600}), 3U);
  EXPECT_EQ(sizes.count({413, 287}), 1U);
}

TEST_F(SamplePictures, SayTheirDensity) {
  for (const auto& file : home_.pictures()) {
    const auto picture = read(file);
    const int pointsPerInch = picture.width() == 2880 ? 144 : 72;
    EXPECT_NEAR(picture.dotsPerMeterX() * 0.0254, pointsPerInch, 0.5) << file;
  }
}

TEST_F(SamplePictures, ShowMoreThanAPlainGround) {
  for (const auto& file : home_.pictures()) {
    const auto picture = read(file).convertToFormat(QImage::Format_RGB32);
    std::set<QRgb> colors;
    for (int y = 0; y < picture.height(); ++y) {
      for (int x = 0; x < picture.width(); ++x) colors.insert(picture.pixel(x, y));
    }
    EXPECT_GT(colors.size(), 100U) << file;
  }
}

TEST_F(SamplePictures, HoldThreeNearDuplicatesAndNoOthers) {
  const auto looks = looksOf(home_.pictures());
  std::vector<fs::path> duplicates;
  for (auto later = looks.begin(); later != looks.end(); ++later) {
    const auto earlier =
        std::find_if(looks.begin(), later, [&](const Looks& one) { return distance(one, *later) <= 5; });
    if (earlier == later) continue;
    EXPECT_EQ(earlier->size, later->size) << earlier->file << " and " << later->file;
    EXPECT_NE(read(earlier->file), read(later->file)) << earlier->file << " and " << later->file;
    duplicates.push_back(later->file);
  }
  EXPECT_EQ(duplicates.size(), 3U) << ::testing::PrintToString(duplicates);
}

TEST_F(SamplePictures, HoldOneCodeThatCanBeRead) {
  std::vector<std::string> payloads;
  for (const auto& file : home_.waiting()) {
    const auto gray = read(file).convertToFormat(QImage::Format_Grayscale8);
    const ZXing::ImageView view(gray.constBits(), gray.width(), gray.height(), ZXing::ImageFormat::Lum,
                                static_cast<int>(gray.bytesPerLine()));
    const auto code = ZXing::ReadBarcode(view, ZXing::DecodeHints().setFormats(ZXing::BarcodeFormat::QRCode));
    if (code.isValid()) payloads.push_back(code.text());
  }
  EXPECT_THAT(payloads, ::testing::ElementsAre("https://example.com/tickets/KX-20931?seat=F14"));
}

}  // namespace

}  // namespace Nimbrel::Testing
