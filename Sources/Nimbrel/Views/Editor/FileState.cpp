#include "Views/Editor/FileState.h"

#include "Platform/FileSystem.h"

namespace Nimbrel {

FileState FileState::of(const std::string& path) {
  return {.modified = FileSystem::modificationDate(path), .bytes = FileSystem::size(path)};
}

}  // namespace Nimbrel
