#include "CommandTable.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>

namespace Nimbrel::Ctl {

namespace fs = std::filesystem;

namespace {

/// The absolute path by which a file is known. Links stay as they are, as a scan sees them, unless the path leads back
/// out of one.
fs::path absolutePath(const fs::path& name, std::error_code& error) {
  const auto path = fs::absolute(name, error);
  if (error || std::ranges::find(path, fs::path("..")) == path.end()) return path.lexically_normal();
  return fs::canonical(path.parent_path(), error) / path.filename();
}

/// The absolute path of a file that can be read.
Result<std::string> readableFile(const std::string& name) {
  std::error_code error;
  const auto path = absolutePath(name, error);
  if (error || !fs::is_regular_file(path, error)) return Error{"cannot read " + name + ": not a file"};
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"), std::fclose);
  if (!file) return Error{"cannot read " + name + ": " + std::generic_category().message(errno)};
  return path.string();
}

}  // namespace

Outcome runImport(const CommandLine& line, Session& session) {
  std::vector<std::string> paths;
  for (const auto& argument : line.arguments) {
    auto path = readableFile(argument);
    if (!path) return Outcome::failed(path.error().message);
    paths.push_back(std::move(path).value());
  }
  const auto store = session.store();
  if (!store) return Outcome::failed(store.error().message);
  store.value()->importFiles(paths);
  return Outcome::changed(store.value()->status());
}

Outcome runScan(const CommandLine&, Session& session) {
  const auto store = session.store();
  if (!store) return Outcome::failed(store.error().message);
  store.value()->scan();
  return Outcome::changed(store.value()->status());
}

}  // namespace Nimbrel::Ctl
