#include "Analysis/Perceptual.h"

#include "Support/Pictures.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <QPainter>

#include <algorithm>
#include <bit>
#include <random>

namespace Nimbrel::Perceptual {
namespace {

using Testing::picture;
using Testing::TemporaryFolder;
using Testing::writePicture;

using Groups = std::vector<std::vector<ShotID>>;

ShotPtr shot(ShotID id, std::uint64_t hash, double date = 0) {
  Shot value;
  value.id = id;
  value.phash = static_cast<std::int64_t>(hash);
  value.date = timestamp(date);
  return std::make_shared<const Shot>(value);
}

Groups idsOf(const std::vector<ShotList>& groups) {
  Groups ids;
  for (const auto& group : groups) {
    ids.emplace_back();
    for (const auto& member : group) ids.back().push_back(member->id);
  }
  return ids;
}

/// Comparing all with all, as the grouping is defined.
Groups naiveGroups(const ShotList& shots, int tolerance) {
  std::vector<ShotList> found;
  std::vector<bool> seen(shots.size());
  for (std::size_t first = 0; first < shots.size(); ++first) {
    if (seen[first] || shots[first]->phash == 0) continue;
    ShotList group;
    for (std::size_t other = first; other < shots.size(); ++other) {
      if (seen[other] || shots[other]->phash == 0) continue;
      if (other != first && distance(shots[first]->phash, shots[other]->phash) > tolerance) continue;
      seen[other] = true;
      group.push_back(shots[other]);
    }
    if (group.size() < 2) continue;
    std::ranges::stable_sort(group, [](const auto& a, const auto& b) { return a->date > b->date; });
    found.push_back(group);
  }
  std::ranges::stable_sort(found, [](const auto& a, const auto& b) { return a.size() > b.size(); });
  return idsOf(found);
}

TEST(PerceptualHash, BitsCompareEachCellWithItsRightNeighbour) {
  // Nine columns, eight rows, one pixel a cell: only the first row falls, from its second to its third cell.
  QImage image(9, 8, QImage::Format_RGB32);
  image.fill(QColor(10, 10, 10));
  image.setPixelColor(0, 0, QColor(200, 200, 200));
  image.setPixelColor(1, 0, QColor(200, 200, 200));
  image.setPixelColor(8, 7, QColor(0, 0, 0));
  EXPECT_EQ(static_cast<std::uint64_t>(hash(image)), std::uint64_t{1} << 1 | std::uint64_t{1} << 63);
}

TEST(PerceptualHash, AFlatPictureHashesToOne) {
  for (const auto& colour : {QColor(0, 0, 0), QColor(255, 255, 255), QColor(37, 99, 201)}) {
    QImage image(57, 43, QImage::Format_RGB32);
    image.fill(colour);
    EXPECT_EQ(hash(image), 1);
  }
}

TEST(PerceptualHash, TheHashOneStandsForItself) {
  QImage image(9, 8, QImage::Format_RGB32);
  image.fill(QColor(10, 10, 10));
  image.setPixelColor(0, 0, QColor(200, 200, 200));
  EXPECT_EQ(hash(image), 1);
}

TEST(PerceptualHash, TransparentPartsCountAsWhite) {
  QImage transparent(64, 64, QImage::Format_ARGB32);
  transparent.fill(Qt::transparent);
  QImage white(64, 64, QImage::Format_RGB32);
  white.fill(Qt::white);
  for (auto* image : {&transparent, &white}) {
    QPainter painter(image);
    painter.fillRect(5, 5, 20, 30, Qt::black);
  }
  EXPECT_EQ(hash(transparent), hash(white));
}

TEST(PerceptualHash, TheAspectRatioDoesNotCount) {
  EXPECT_LE(distance(hash(picture(640, 480, 3)), hash(picture(640, 480, 3).scaled(320, 320))), 3);
}

TEST(PerceptualHash, APictureOfOnePixelHasAHash) {
  QImage image(1, 1, QImage::Format_RGB32);
  image.fill(Qt::red);
  EXPECT_EQ(hash(image), 1);
}

TEST(PerceptualHash, AFileThatCannotBeDecodedHasNone) {
  const TemporaryFolder folder;
  EXPECT_EQ(hash(folder.write("a.png", "not a picture")), 0);
  EXPECT_EQ(hash(folder.path("missing.png")), 0);
}

TEST(PerceptualHash, NearlyEqualPicturesAreNearAndOthersAreNot) {
  const TemporaryFolder folder;
  auto image = picture(1440, 900, 1);
  writePicture(image, folder.path("a.png"));
  QPainter(&image).fillRect(700, 400, 2, 18, Qt::black);
  writePicture(image, folder.path("b.png"));
  writePicture(folder.path("c.png"), 1440, 900, 2);
  const auto a = hash(folder.path("a.png"));
  EXPECT_LE(distance(a, hash(folder.path("b.png"))), 2);
  EXPECT_GT(distance(a, hash(folder.path("c.png"))), 10);
}

TEST(PerceptualGroups, MembersAreNearTheFirstAndNotInAChain) {
  // A and B differ in bits 0 to 4, B and C in 5 to 9, A and C in all ten.
  EXPECT_EQ(idsOf(groups({shot(1, 1ULL << 40), shot(2, 1ULL << 40 | 0x1F), shot(3, 1ULL << 40 | 0x3FF)}, 5)),
            (Groups{{1, 2}}));
}

TEST(PerceptualGroups, ShotsWithoutAHashBelongToNone) {
  EXPECT_EQ(idsOf(groups({shot(1, 0), shot(2, 0), shot(3, 7), shot(4, 7)}, 6)), (Groups{{3, 4}}));
}

TEST(PerceptualGroups, FlatPicturesAreEqualToEachOther) {
  EXPECT_EQ(idsOf(groups({shot(1, 1), shot(2, 1)}, 0)), (Groups{{1, 2}}));
}

TEST(PerceptualGroups, TheNewestMemberComesFirstAndEqualDatesKeepTheirOrder) {
  EXPECT_EQ(idsOf(groups({shot(1, 5, 10), shot(2, 5, 30), shot(3, 5, 10), shot(4, 5, 20)}, 0)), (Groups{{2, 4, 1, 3}}));
}

TEST(PerceptualGroups, LargerGroupsComeFirstAndTiesKeepTheOrderFound) {
  constexpr std::uint64_t a = 0xFF00;
  constexpr std::uint64_t b = 0xFF00FF0000;
  constexpr std::uint64_t c = 0xFF00FF00FF000000;
  EXPECT_EQ(idsOf(groups({shot(1, a), shot(2, b), shot(3, c), shot(4, b), shot(5, a), shot(6, c), shot(7, c)}, 2)),
            (Groups{{3, 6, 7}, {1, 5}, {2, 4}}));
}

TEST(PerceptualGroups, AgreeWithComparingAllWithAllAtEveryTolerance) {
  std::mt19937_64 random(11);
  ShotList shots;
  for (ShotID id = 1; id <= 900; ++id) {
    std::uint64_t hash = random();
    if (id % 3 != 0 && !shots.empty()) {
      hash = static_cast<std::uint64_t>(shots[random() % shots.size()]->phash);
      for (auto flips = random() % 9; flips > 0; --flips) hash ^= std::uint64_t{1} << random() % 64;
    }
    if (id % 50 == 0) hash = 1;
    shots.push_back(shot(id, hash, static_cast<double>(random() % 100)));
  }
  for (const int tolerance : {-1, 0, 1, 3, 4, 5, 6, 7, 8, 10, 15, 16, 30, 64}) {
    EXPECT_EQ(idsOf(groups(shots, tolerance)), naiveGroups(shots, tolerance)) << tolerance;
  }
}

TEST(PerceptualDistance, CountsDifferingBits) {
  EXPECT_EQ(distance(0, -1), 64);
  EXPECT_EQ(distance(5, 5), 0);
}

}  // namespace
}  // namespace Nimbrel::Perceptual
