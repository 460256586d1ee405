#pragma once

#include <QByteArray>
#include <QtGlobal>

#include <optional>
#include <string>

namespace Nimbrel::Testing {

/// Sets a variable of the environment, or takes it away, for as long as it lives.
class EnvironmentVariable {
 public:
  EnvironmentVariable(const char* name, const std::optional<std::string>& value) : name_(name) {
    if (qEnvironmentVariableIsSet(name)) former_ = qgetenv(name);
    set(value ? std::optional(QByteArray::fromStdString(*value)) : std::nullopt);
  }
  ~EnvironmentVariable() { set(former_); }
  EnvironmentVariable(const EnvironmentVariable&) = delete;
  EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

 private:
  void set(const std::optional<QByteArray>& value) {
    if (value) {
      qputenv(name_, *value);
    } else {
      qunsetenv(name_);
    }
  }

  const char* name_;
  std::optional<QByteArray> former_;
};

}  // namespace Nimbrel::Testing
