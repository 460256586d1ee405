#include "Platform/MetadataStore.h"

#include <sys/types.h>
#include <sys/xattr.h>

#include <array>

namespace Nimbrel::MetadataStore {

namespace {

constexpr std::size_t longestValue = 1024;

/// The bytes of an extended attribute; absent when there is none, or one longer than anything we know of.
std::optional<std::string> attribute(const std::string& path, const char* name) {
  if (path.find('\0') != std::string::npos) return std::nullopt;
  std::array<char, longestValue> value{};
  const ssize_t length = ::getxattr(path.c_str(), name, value.data(), value.size());
  if (length < 0) return std::nullopt;
  return std::string(value.data(), static_cast<std::size_t>(length));
}

}  // namespace

std::optional<bool> isScreenCapture(const std::string& path) {
  const auto value = attribute(path, "user.kMDItemIsScreenCapture");
  if (value == "1") return true;
  if (value == "0") return false;
  return std::nullopt;
}

std::optional<std::string> screenCaptureType(const std::string& path) {
  return attribute(path, "user.kMDItemScreenCaptureType");
}

}  // namespace Nimbrel::MetadataStore
