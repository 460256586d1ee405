#include "Foundation/FilePath.h"

#include "Foundation/Text.h"

namespace Nimbrel::FilePath {

namespace {

std::string_view trimmedAtEnd(std::string_view path) {
  while (path.size() > 1 && path.back() == '/') path.remove_suffix(1);
  return path;
}

/// Where the dot of the extension stands in a bare name, or npos.
std::size_t extensionDot(std::string_view name) {
  const auto dot = name.rfind('.');
  if (dot == std::string_view::npos || dot == 0 || dot + 1 == name.size()) return std::string_view::npos;
  return dot;
}

}  // namespace

std::string_view lastComponent(std::string_view path) {
  path = trimmedAtEnd(path);
  const auto slash = path.rfind('/');
  return slash == std::string_view::npos ? path : path.substr(slash + 1);
}

std::string_view folder(std::string_view path) {
  path = trimmedAtEnd(path);
  const auto slash = path.rfind('/');
  if (slash == std::string_view::npos) return {};
  return slash == 0 ? path.substr(0, 1) : trimmedAtEnd(path.substr(0, slash));
}

std::string_view extension(std::string_view path) {
  const auto name = lastComponent(path);
  const auto dot = extensionDot(name);
  return dot == std::string_view::npos ? std::string_view() : name.substr(dot + 1);
}

std::string_view baseName(std::string_view path) {
  const auto name = lastComponent(path);
  return name.substr(0, extensionDot(name));
}

std::string join(std::string_view folder, std::string_view name) {
  std::string path(folder);
  if (!path.empty() && path.back() != '/') path += '/';
  return path.append(name);
}

std::string numberedName(std::string_view name, int number, std::size_t longest) {
  const auto base = baseName(name);
  const auto ending = " " + std::to_string(number) + std::string(name.substr(base.size()));
  const auto room = longest > ending.size() ? longest - ending.size() : 0;
  return std::string(Text::fittingIn(room, base)) + ending;
}

std::string expandingTilde(std::string_view path, std::string_view home) {
  if (path == "~") return std::string(home);
  if (path.starts_with("~/")) return join(home, path.substr(2));
  return std::string(path);
}

std::string withoutTrailingSlashes(std::string_view path) { return std::string(trimmedAtEnd(path)); }

}  // namespace Nimbrel::FilePath
