#include "Analysis/PhraseFinder.h"

#include <algorithm>

namespace Nimbrel {

PhraseFinder::PhraseFinder(std::span<const std::string_view> phrases) {
  phrases = phrases.first(std::min(phrases.size(), mostPhrases));
  assignColumns(phrases);
  static_cast<void>(addRow());
  for (std::size_t number = 0; number < phrases.size(); ++number) addPhrase(phrases[number], number);
  linkRows();
}

void PhraseFinder::assignColumns(std::span<const std::string_view> phrases) {
  for (const auto phrase : phrases) {
    for (const char byte : phrase) {
      auto& column = columnOf_[static_cast<unsigned char>(byte)];
      if (column == 0) column = static_cast<std::uint8_t>(columns_++);
    }
  }
}

std::size_t PhraseFinder::addRow() {
  next_.resize(next_.size() + columns_);
  endsAt_.emplace_back();
  return endsAt_.size() - 1;
}

void PhraseFinder::addPhrase(std::string_view phrase, std::size_t number) {
  std::size_t row = 0;
  for (const char byte : phrase) {
    const auto place = row * columns_ + columnOf_[static_cast<unsigned char>(byte)];
    if (next_[place] == 0) {
      const auto added = addRow();
      next_[place] = static_cast<State>(added * columns_);
    }
    row = next_[place] / columns_;
  }
  endsAt_[row].set(number);
}

void PhraseFinder::linkRows() {
  // Breadth first: a row's fallback, the longest end of its text that begins a phrase, is nearer to the root and so
  // complete when the row is filled up from it.
  std::vector<std::size_t> fallback(endsAt_.size());
  std::vector<std::size_t> rows{0};
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const auto row = rows[i];
    endsAt_[row] |= endsAt_[fallback[row]];
    for (std::size_t column = 0; column < columns_; ++column) {
      auto& next = next_[row * columns_ + column];
      const auto otherwise = row == 0 ? State{0} : next_[fallback[row] * columns_ + column];
      if (next == 0) {
        next = otherwise;
      } else {
        fallback[next / columns_] = otherwise / columns_;
        rows.push_back(next / columns_);
      }
    }
  }
  for (auto& next : next_) {
    if (endsAt_[next / columns_].any()) next |= ending;
  }
}

PhraseFinder::Found PhraseFinder::find(std::string_view text) const {
  Found found;
  State state = 0;
  for (const char byte : text) {
    state = next_[(state & ~ending) + columnOf_[static_cast<unsigned char>(byte)]];
    if ((state & ending) != 0) found |= endsAt_[(state & ~ending) / columns_];
  }
  return found;
}

}  // namespace Nimbrel
