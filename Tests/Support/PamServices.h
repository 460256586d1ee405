#pragma once

#include "Support/TemporaryFolder.h"

#include <QLockFile>
#include <QProcessEnvironment>

#include <string>

namespace Nimbrel::Testing {

/// Services of PAM with a password of a test's own, for the child processes that get its environment. The password of
/// the user who runs the tests is "secret" there. One at a time on the machine, so no test makes two: processes that
/// start with the wrapper of PAM at the same moment take each other's folder away and end.
class PamServices {
 public:
  PamServices();

  void setPassword(const std::string& password) const;
  /// The lines of a service; MATRIX stands for the module that knows the password, CHATTY for one
  /// that only shows messages.
  void setModules(const std::string& lines) const;

  /// That of this process, with the services.
  [[nodiscard]] QProcessEnvironment environment() const { return in(QProcessEnvironment::systemEnvironment()); }
  [[nodiscard]] QProcessEnvironment in(QProcessEnvironment environment) const;

 private:
  QLockFile turn_;
  TemporaryFolder folder_;
};

}  // namespace Nimbrel::Testing
