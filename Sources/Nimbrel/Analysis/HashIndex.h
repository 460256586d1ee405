#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace Nimbrel {

/// Finds hashes within a Hamming distance without comparing all with all: multi-index hashing (Norouzi, Punjani and
/// Fleet, 2012). The bits are dealt into pieces so few that two hashes within the tolerance differ by at most one bit
/// in at least one piece; looking up a piece and its one-bit neighbours then finds all candidates. Bits are dealt
/// by how evenly they are set, so that flat pictures, which agree in most bits, do not crowd one piece. For
/// tolerances so wide that every hash is a candidate, all are compared.
///
/// Borrows the hashes, which must outlive it. One thread.
class HashIndex {
 public:
  HashIndex(std::span<const std::uint64_t> hashes, int tolerance);

  /// Removes the hash at `position` and all within the tolerance of it, and returns their positions in ascending order.
  /// Empty when the hash itself was removed before.
  [[nodiscard]] std::vector<std::size_t> takeNeighbours(std::size_t position);

 private:
  /// One piece of every hash: the positions of the hashes, ordered by the value of the piece.
  struct Piece {
    std::vector<int> bits;
    std::vector<std::uint32_t> firstOfValue;
    std::vector<std::uint32_t> positions;

    [[nodiscard]] std::uint32_t valueOf(std::uint64_t hash) const;
  };

  void makePieces(int count);
  static void fill(Piece& piece, std::span<const std::uint64_t> hashes);
  void collectFrom(const Piece& piece, std::uint32_t value, std::uint64_t hash, std::vector<std::size_t>& found);
  void collectFromAll(std::uint64_t hash, std::vector<std::size_t>& found);
  [[nodiscard]] bool takeIfNear(std::size_t position, std::uint64_t hash);

  std::span<const std::uint64_t> hashes_;
  int tolerance_;
  std::vector<char> taken_;
  std::vector<Piece> pieces_;
  std::size_t firstUntaken_ = 0;
};

}  // namespace Nimbrel
