#include "Views/Window/HeaderSubtitle.h"

#include "Foundation/Formats.h"

namespace Nimbrel {

std::string headerSubtitle(const Store& store) {
  const auto shots = store.visible();
  std::int64_t bytes = 0;
  for (const auto& shot : shots) bytes += shot->bytes;

  // "shots" even for one.
  auto text = std::to_string(shots.size()) + " shots";
  const auto add = [&text](const std::string& part) { text += " · " + part; };
  if (bytes >= 1) add(Formats::byteCount(bytes));
  if (const auto left = store.ocrRemaining(); left > 0) add("reading text… " + std::to_string(left) + " left");
  if (!store.status().empty()) add(store.status());
  return text;
}

}  // namespace Nimbrel
