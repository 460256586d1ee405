#pragma once

#include "Model/Models.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

namespace Nimbrel {

/// The sort keys of the names of shots, each worked out once. Holds as much memory as the names themselves, so it is
/// kept only while the gallery is sorted by name. One thread.
class NameKeys {
 public:
  /// Works out the keys of those shots that have none, on all cores when they are many. From time to time drops the
  /// keys of shots that nobody has any more.
  void prepare(const ShotList& shots);

  /// The bytes by which a prepared shot is sorted; valid until the next call of another function.
  [[nodiscard]] std::string_view of(const ShotPtr& shot) const;

  void clear();
  [[nodiscard]] std::size_t size() const { return keys_.size(); }

 private:
  struct Key {
    /// Tells whether the address still means this shot, without keeping it.
    std::weak_ptr<const Shot> shot;
    std::string bytes;
  };
  std::unordered_map<const Shot*, Key> keys_;
  std::size_t addedSinceTidied_ = 0;
};

}  // namespace Nimbrel
