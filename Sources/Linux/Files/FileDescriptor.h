#pragma once

#include <unistd.h>

#include <utility>

namespace Nimbrel {

/// Owns an open file descriptor, or none.
class FileDescriptor {
 public:
  FileDescriptor() = default;
  explicit FileDescriptor(int number) : number_(number) {}
  ~FileDescriptor() { close(); }
  FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    if (this != &other) {
      close();
      number_ = std::exchange(other.number_, -1);
    }
    return *this;
  }

  [[nodiscard]] bool isOpen() const { return number_ >= 0; }
  /// -1 when none is open.
  [[nodiscard]] int number() const { return number_; }

  void close() {
    if (number_ >= 0) ::close(std::exchange(number_, -1));
  }

 private:
  int number_ = -1;
};

}  // namespace Nimbrel
