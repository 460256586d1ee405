#pragma once

#include "Model/Models.h"

#include <QImage>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

/// The looks of a picture in 64 bits: a difference hash (dHash). Bit 8 r + x, from the least significant, tells whether
/// the grey cell in row r and column x is brighter than its right neighbour, in a picture reduced to 9 by 8 cells over
/// white. Near-identical screenshots differ in a few bits. Pure functions, any thread.
namespace Nimbrel::Perceptual {

/// The sizes, for ImageFile::thumbnails, from the last of which hashes are made: the small picture comes out of the one
/// that the gallery shows, so that one decode serves both and the hash does not depend on which was wanted.
inline constexpr std::array hashThumbnailSizes{640, 64};

/// The hash of a file; 0 when it cannot be read, and never 0 otherwise.
[[nodiscard]] std::int64_t hash(const std::string& path);

/// The hash of a thumbnail; 0 for a null picture, and never 0 otherwise (a flat picture hashes to 1).
[[nodiscard]] std::int64_t hash(const QImage& thumbnail);

/// The number of bits in which two hashes differ.
[[nodiscard]] int distance(std::int64_t a, std::int64_t b);

/// In so many bits screenshots may differ that look the same to a person.
inline constexpr int nearDuplicateTolerance = 6;

/// Groups of two and more shots whose hashes lie within `tolerance` bits of the group's first shot, in the order given;
/// shots without a hash belong to none. Within a group the newest comes first, larger groups come before smaller ones,
/// and what is equal keeps its order.
[[nodiscard]] std::vector<ShotList> groups(const ShotList& shots, int tolerance);

}  // namespace Nimbrel::Perceptual
