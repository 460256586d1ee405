#include "Model/CaptureOptions.h"

namespace Nimbrel {

std::string_view rawValue(CaptureDestination destination) {
  return destination == CaptureDestination::library ? "Library" : "Inbox";
}

}  // namespace Nimbrel
