#pragma once

#include "Linux/Desktop/BusConnection.h"
#include "Linux/Instance/ApplicationObject.h"
#include "Platform/SingleInstance.h"

#include <optional>
#include <string>

namespace Nimbrel {

/// The place of the one process of its kind, as an owned name on the session bus. Main thread.
class BusInstance {
 public:
  BusInstance(std::string identifier, std::string catalogueFolder, SingleInstance::Handler onRequest);

  /// Absent where the bus does not decide: there is none, or the name is that of a process with another catalogue.
  [[nodiscard]] std::optional<SingleInstance::Place> claim(const StartRequest& request);

 private:
  [[nodiscard]] bool takeName();

  std::string identifier_;
  std::string catalogueFolder_;
  ApplicationObject object_;
  BusConnection bus_;  ///< closed before the object goes
};

}  // namespace Nimbrel
