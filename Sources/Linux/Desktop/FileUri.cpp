#include "Linux/Desktop/FileUri.h"

#include "Linux/Desktop/GLibHandles.h"

#include <string_view>

namespace Nimbrel {

std::string fileUri(const std::string& path) {
  const GLibText uri(g_filename_to_uri(path.c_str(), nullptr, nullptr));
  return uri ? std::string(uri.get()) : std::string();
}

std::string fileOfUri(const std::string& uri) {
  char* host = nullptr;
  const GLibText path(g_filename_from_uri(uri.c_str(), &host, nullptr));
  const GLibText ofHost(host);
  const bool isHere = !ofHost || std::string_view(ofHost.get()) == "localhost";
  return path && isHere ? std::string(path.get()) : std::string();
}

}  // namespace Nimbrel
