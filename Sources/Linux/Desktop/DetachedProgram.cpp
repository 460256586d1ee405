#include "Linux/Desktop/DetachedProgram.h"

#include "Foundation/Log.h"
#include "Linux/Desktop/GLibHandles.h"

namespace Nimbrel {

bool startDetached(const std::string& program, std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), program);
  std::vector<char*> words;
  words.reserve(arguments.size() + 1);
  for (auto& argument : arguments) words.push_back(argument.data());
  words.push_back(nullptr);
  GError* raised = nullptr;
  if (g_spawn_async(nullptr, words.data(), nullptr, G_SPAWN_SEARCH_PATH, nullptr, nullptr, nullptr, &raised) != FALSE) {
    return true;
  }
  const GLibError error(raised);
  Log::write("Cannot start " + program + ": " + (error ? error->message : "no reason given"));
  return false;
}

}  // namespace Nimbrel
