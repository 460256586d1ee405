#pragma once

#include "Foundation/Result.h"
#include "Foundation/Timestamp.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace Nimbrel {

/// Reads a file from its beginning to its end. One thread at a time. Errors are in words for people, and name no file.
class FileReader {
 public:
  /// Opens a file, links followed. Folders, devices and the like are an error, and never waited for.
  [[nodiscard]] static Result<FileReader> open(const std::string& path);
  ~FileReader();
  FileReader(FileReader&& other) noexcept;
  FileReader& operator=(FileReader&& other) noexcept;

  /// As of opening: the size in bytes, and when the content was last changed.
  [[nodiscard]] std::uint64_t size() const;
  [[nodiscard]] Timestamp modified() const;
  /// Whether one of the two is no longer so, or can no longer be told.
  [[nodiscard]] bool hasChanged() const;

  /// Reads on until the room is full or the file has ended; returns how many bytes came.
  [[nodiscard]] Result<std::size_t> read(std::span<char> room);

 private:
  struct State;
  explicit FileReader(std::unique_ptr<State> state);

  std::unique_ptr<State> state_;
};

}  // namespace Nimbrel
