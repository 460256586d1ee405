#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Nimbrel::Reader {

/// One byte for each pixel, row after row without gaps.
class Plane {
 public:
  Plane() = default;
  Plane(int width, int height, std::uint8_t value = 0)
      : width_(width),
        height_(height),
        bytes_(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), value) {}

  [[nodiscard]] int width() const { return width_; }
  [[nodiscard]] int height() const { return height_; }
  [[nodiscard]] std::uint8_t* row(int y) { return bytes_.data() + offset(y); }
  [[nodiscard]] const std::uint8_t* row(int y) const { return bytes_.data() + offset(y); }
  [[nodiscard]] const std::vector<std::uint8_t>& bytes() const { return bytes_; }

 private:
  [[nodiscard]] std::size_t offset(int y) const {
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(width_);
  }

  int width_ = 0;
  int height_ = 0;
  std::vector<std::uint8_t> bytes_;
};

}  // namespace Nimbrel::Reader
