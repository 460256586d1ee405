#pragma once

#include "Platform/Trash.h"

#include <QPointer>

#include <string>
#include <vector>

namespace Nimbrel::Testing {

/// A Trash that answers when a test says so, and remembers what it was asked. Nothing is moved until then.
class FakeTrash final : public Trash {
 public:
  void recycle(QObject* context, std::vector<std::string> paths, Then then) override;

  /// As if the files of the last request had gone to the Trash.
  void succeed();
  /// As if a file could not; those before it in the request are gone all the same.
  void failAfter(std::size_t recycled, std::string message);

  std::vector<std::vector<std::string>> asked;  ///< each request, with its paths

 private:
  void answer(std::optional<Error> failure);

  QPointer<QObject> context_;
  Then then_;
};

}  // namespace Nimbrel::Testing
