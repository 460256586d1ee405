#include "Platform/MetadataStore.h"

#include <sys/types.h>
#include <sys/xattr.h>

#include <array>

namespace Nimbrel::MetadataStore {

namespace {

constexpr const char* isCaptureAttribute = "user.kMDItemIsScreenCapture";
constexpr const char* captureTypeAttribute = "user.kMDItemScreenCaptureType";
constexpr std::size_t longestValue = 1024;

/// Whether the system would see the whole path.
bool canName(const std::string& path) { return path.find('\0') == std::string::npos; }

/// The bytes of an extended attribute; absent when there is none, or one longer than anything we know of.
std::optional<std::string> attribute(const std::string& path, const char* name) {
  if (!canName(path)) return std::nullopt;
  std::array<char, longestValue> value{};
  const ssize_t length = ::getxattr(path.c_str(), name, value.data(), value.size());
  if (length < 0) return std::nullopt;
  return std::string(value.data(), static_cast<std::size_t>(length));
}

bool setAttribute(const std::string& path, const char* name, std::string_view value) {
  return value.size() <= longestValue && ::setxattr(path.c_str(), name, value.data(), value.size(), 0) == 0;
}

}  // namespace

std::optional<bool> isScreenCapture(const std::string& path) {
  const auto value = attribute(path, isCaptureAttribute);
  if (value == "1") return true;
  if (value == "0") return false;
  return std::nullopt;
}

std::optional<std::string> screenCaptureType(const std::string& path) { return attribute(path, captureTypeAttribute); }

bool markScreenCapture(const std::string& path, std::string_view type) {
  return canName(path) && setAttribute(path, captureTypeAttribute, type) && setAttribute(path, isCaptureAttribute, "1");
}

bool markNoScreenCapture(const std::string& path) {
  return canName(path) && setAttribute(path, isCaptureAttribute, "0");
}

}  // namespace Nimbrel::MetadataStore
