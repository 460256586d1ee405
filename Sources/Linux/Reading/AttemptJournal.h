#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace Nimbrel {

/// Remembers on the disk which pictures were begun and not finished, so that one that ends whoever reads it, be it
/// Nimbrel as a whole, is left alone at last. A picture that was changed since is another one. Several processes may
/// use one file at the same time. A file that cannot be read is an empty one, and what cannot be written is forgotten.
class AttemptJournal {
 public:
  explicit AttemptJournal(std::string file) : file_(std::move(file)) {}

  /// How often the picture was begun and not finished.
  [[nodiscard]] int attempts(const std::string& picture) const;

  void begin(const std::string& picture);

  /// The picture was read, or is known to be none.
  void finish(const std::string& picture);

  /// The picture is to be as if it had not been begun this time.
  void takeBack(const std::string& picture);

 private:
  struct Entry {
    std::string path;
    std::int64_t size = 0;
    std::int64_t modified = 0;  ///< nanoseconds since 1970
    int attempts = 0;
  };
  using Entries = std::vector<Entry>;

  [[nodiscard]] static std::optional<Entry> entryFor(const std::string& picture);
  [[nodiscard]] static Entries::iterator find(Entries& entries, const Entry& picture);
  [[nodiscard]] Entries read() const;
  void write(const Entries& entries) const;
  /// One change, with all other processes kept out.
  void change(const std::function<void(Entries&)>& edit) const;

  std::string file_;
};

}  // namespace Nimbrel
