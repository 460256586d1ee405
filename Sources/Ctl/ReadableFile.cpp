#include "ReadableFile.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>

namespace Nimbrel::Ctl {

namespace fs = std::filesystem;

namespace {

fs::path absolutePath(const fs::path& name, std::error_code& error) {
  const auto path = fs::absolute(name, error);
  if (error || std::ranges::find(path, fs::path("..")) == path.end()) return path.lexically_normal();
  return fs::canonical(path.parent_path(), error) / path.filename();
}

}  // namespace

Result<std::string> readableFile(const std::string& name) {
  std::error_code error;
  const auto path = absolutePath(name, error);
  if (error || !fs::is_regular_file(path, error)) return Error{"cannot read " + name + ": not a file"};
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"), std::fclose);
  if (!file) return Error{"cannot read " + name + ": " + std::generic_category().message(errno)};
  return path.string();
}

Result<std::string> newFile(const std::string& name) {
  std::error_code error;
  const auto path = absolutePath(name, error);
  if (error || !fs::is_directory(path.parent_path(), error)) return Error{"cannot write " + name + ": no such folder"};
  if (fs::exists(fs::symlink_status(path, error))) return Error{"cannot write " + name + ": it is already there"};
  return path.string();
}

}  // namespace Nimbrel::Ctl
