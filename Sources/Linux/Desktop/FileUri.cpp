#include "Linux/Desktop/FileUri.h"

#include "Linux/Desktop/GLibHandles.h"

namespace Nimbrel {

std::string fileUri(const std::string& path) {
  const GLibText uri(g_filename_to_uri(path.c_str(), nullptr, nullptr));
  return uri ? std::string(uri.get()) : std::string();
}

}  // namespace Nimbrel
