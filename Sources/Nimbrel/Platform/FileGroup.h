#pragma once

#include "Foundation/Result.h"
#include "Foundation/Timestamp.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Nimbrel {

/// A file that is being written beside its target, under a hidden name ".nimbrel-XXXXXX", and is removed with this
/// object unless a FileGroup has put it in place. One thread at a time. Errors are in words for people, and name no
/// file.
class PendingFile {
 public:
  /// Begins an empty one in the target's folder, which must be there. It has the permissions of the file that it is to
  /// replace, else those that new files have.
  [[nodiscard]] static Result<PendingFile> beside(std::string target);
  ~PendingFile();
  PendingFile(PendingFile&& other) noexcept;
  PendingFile& operator=(PendingFile&& other) noexcept;

  /// Appends; a failure is final.
  [[nodiscard]] std::optional<Error> write(std::string_view bytes);

  /// The date that the file is to bear instead of the present one. What the file system cannot keep is left out.
  void setModificationDate(Timestamp date);

  /// Bytes written.
  [[nodiscard]] std::uint64_t size() const;

 private:
  friend class FileGroup;
  struct State;
  explicit PendingFile(std::unique_ptr<State> state);

  std::unique_ptr<State> state_;
};

/// Puts new files in place so that each of them is whole at any moment, also after a crash: the old one until the new
/// one is on the disk and takes its name, then the new one. A link that stands at the target is replaced as such.
///
/// Waiting for the disk is what this costs, and the disk serves many at once sooner than one after the other: so files
/// are held back until there are 64 of them or 32 MB, then flushed together and given their names, and each folder is
/// flushed once. One thread at a time. Errors are in words for people, and name no file.
class FileGroup {
 public:
  /// Asked right before a file is given its name; it is dropped when the answer is false.
  using Condition = std::function<bool()>;

  FileGroup() = default;
  /// Drops what finish() was not called for.
  ~FileGroup() = default;
  FileGroup(const FileGroup&) = delete;
  FileGroup& operator=(const FileGroup&) = delete;

  /// Takes a file that is written to its end, and finishes the group when it is full.
  [[nodiscard]] std::optional<Error> add(PendingFile file, Condition condition = {});

  /// Puts all files in place that wait for it. On failure this goes for those that could be flushed and renamed, the
  /// others are dropped, and the first error is returned.
  [[nodiscard]] std::optional<Error> finish();

  /// How many files were put in place.
  [[nodiscard]] std::size_t placed() const { return placed_; }

 private:
  struct Member {
    PendingFile file;
    Condition condition;
  };

  std::vector<Member> members_;
  std::uint64_t bytes_ = 0;
  std::size_t placed_ = 0;
};

}  // namespace Nimbrel
