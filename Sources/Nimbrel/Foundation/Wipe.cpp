#include "Foundation/Wipe.h"

namespace Nimbrel {

void wipe(std::string& secret) {
  secret.resize(secret.capacity());
  // A compiler may leave out what is written and never read, unless it is told that somebody looks.
  volatile char* const bytes = secret.data();
  for (std::size_t i = 0; i < secret.size(); ++i) bytes[i] = '\0';
  secret.clear();
}

}  // namespace Nimbrel
