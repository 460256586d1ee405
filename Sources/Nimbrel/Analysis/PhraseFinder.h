#pragma once

#include <array>
#include <bitset>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace Nimbrel {

/// Finds in one pass which of many phrases a text holds (Aho and Corasick, "Efficient string matching", 1975): looking
/// for each by itself would cost a hundred passes. Compares bytes. Immutable; any thread.
class PhraseFinder {
 public:
  static constexpr std::size_t mostPhrases = 192;
  /// By the number of the phrase.
  using Found = std::bitset<mostPhrases>;

  /// No phrase may be empty; those beyond the most are never found.
  explicit PhraseFinder(std::span<const std::string_view> phrases);

  [[nodiscard]] Found find(std::string_view text) const;

 private:
  // A state is the number of its first entry in `next_`, which has a row of columns for each.
  using State = std::uint32_t;
  /// Marks a state in which a phrase ends.
  static constexpr State ending = State{1} << 31;

  void assignColumns(std::span<const std::string_view> phrases);
  [[nodiscard]] std::size_t addRow();
  void addPhrase(std::string_view phrase, std::size_t number);
  void linkRows();

  std::array<std::uint8_t, 256> columnOf_{};
  std::size_t columns_ = 1;  // the first is that of all bytes that occur in no phrase
  std::vector<State> next_;
  std::vector<Found> endsAt_;  // by row
};

}  // namespace Nimbrel
