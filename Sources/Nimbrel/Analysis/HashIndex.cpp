#include "Analysis/HashIndex.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdlib>
#include <numeric>

namespace Nimbrel {

namespace {

constexpr int hashBits = 64;
constexpr int fewestPieces = 4;           // pieces of 16 bits: a table of 65,536 values each
constexpr int widestTolerance = 15;       // pieces of 8 bits; beyond it the pieces no longer tell hashes apart
constexpr std::size_t fewestHashes = 64;  // below, comparing all is faster than building tables

/// So many pieces that tolerance divided by their number is below two.
int pieceCount(int tolerance) { return std::max(fewestPieces, tolerance / 2 + 1); }

/// The bits of a hash, the most evenly set first.
std::array<int, hashBits> bitsByEvenness(std::span<const std::uint64_t> hashes) {
  std::array<long long, hashBits> imbalance{};
  for (int bit = 0; bit < hashBits; ++bit) {
    const auto set = std::ranges::count_if(hashes, [bit](std::uint64_t hash) { return (hash >> bit & 1) != 0; });
    imbalance.at(static_cast<std::size_t>(bit)) = std::llabs(2LL * set - static_cast<long long>(hashes.size()));
  }
  std::array<int, hashBits> bits{};
  std::iota(bits.begin(), bits.end(), 0);
  std::ranges::stable_sort(bits, {}, [&](int bit) { return imbalance.at(static_cast<std::size_t>(bit)); });
  return bits;
}

}  // namespace

std::uint32_t HashIndex::Piece::valueOf(std::uint64_t hash) const {
  std::uint32_t value = 0;
  for (const int bit : bits) value = value << 1 | static_cast<std::uint32_t>(hash >> bit & 1);
  return value;
}

HashIndex::HashIndex(std::span<const std::uint64_t> hashes, int tolerance)
    : hashes_(hashes), tolerance_(tolerance), taken_(hashes.size(), 0) {
  if (tolerance >= 0 && tolerance <= widestTolerance && hashes.size() >= fewestHashes) {
    makePieces(pieceCount(tolerance));
  }
}

void HashIndex::makePieces(int count) {
  pieces_.resize(static_cast<std::size_t>(count));
  std::size_t next = 0;
  for (const int bit : bitsByEvenness(hashes_)) pieces_[next++ % pieces_.size()].bits.push_back(bit);
  for (auto& piece : pieces_) fill(piece, hashes_);
}

/// A counting sort of the positions by the value of the piece.
void HashIndex::fill(Piece& piece, std::span<const std::uint64_t> hashes) {
  std::vector<std::uint32_t> values(hashes.size());
  std::ranges::transform(hashes, values.begin(), [&](std::uint64_t hash) { return piece.valueOf(hash); });
  piece.firstOfValue.assign((std::size_t{1} << piece.bits.size()) + 1, 0);
  for (const auto value : values) ++piece.firstOfValue[value + 1];
  std::partial_sum(piece.firstOfValue.begin(), piece.firstOfValue.end(), piece.firstOfValue.begin());
  piece.positions.resize(hashes.size());
  auto next = piece.firstOfValue;
  for (std::size_t position = 0; position < hashes.size(); ++position) {
    piece.positions[next[values[position]]++] = static_cast<std::uint32_t>(position);
  }
}

std::vector<std::size_t> HashIndex::takeNeighbours(std::size_t position) {
  if (taken_[position] != 0) return {};
  taken_[position] = 1;
  std::vector<std::size_t> found{position};
  const auto hash = hashes_[position];
  if (pieces_.empty()) {
    collectFromAll(hash, found);
    return found;
  }
  const bool oneBitApart = tolerance_ >= static_cast<int>(pieces_.size());
  for (const auto& piece : pieces_) {
    const auto value = piece.valueOf(hash);
    collectFrom(piece, value, hash, found);
    for (std::size_t bit = 0; oneBitApart && bit < piece.bits.size(); ++bit) {
      collectFrom(piece, value ^ (std::uint32_t{1} << bit), hash, found);
    }
  }
  std::ranges::sort(found);
  return found;
}

void HashIndex::collectFrom(const Piece& piece, std::uint32_t value, std::uint64_t hash,
                            std::vector<std::size_t>& found) {
  for (auto entry = piece.firstOfValue[value]; entry < piece.firstOfValue[value + 1]; ++entry) {
    const std::size_t position = piece.positions[entry];
    if (takeIfNear(position, hash)) found.push_back(position);
  }
}

void HashIndex::collectFromAll(std::uint64_t hash, std::vector<std::size_t>& found) {
  while (firstUntaken_ < hashes_.size() && taken_[firstUntaken_] != 0) ++firstUntaken_;
  for (auto position = firstUntaken_; position < hashes_.size(); ++position) {
    if (takeIfNear(position, hash)) found.push_back(position);
  }
}

bool HashIndex::takeIfNear(std::size_t position, std::uint64_t hash) {
  if (taken_[position] != 0 || std::popcount(hash ^ hashes_[position]) > tolerance_) return false;
  taken_[position] = 1;
  return true;
}

}  // namespace Nimbrel
