#pragma once

#include "Platform/HttpsFetcher.h"

#include <QPointer>

#include <map>
#include <string>
#include <vector>

namespace Nimbrel::Testing {

/// Servers that answer what a test has laid out for them, and remember what was asked.
class FakeHttpsFetcher final : public HttpsFetcher {
 public:
  void fetch(const Request& request, QObject* context, Then then) override {
    asked.push_back(request.url);
    limits.push_back(request.mostBytes);
    contexts.emplace_back(context);
    if (isSilent) return;
    const auto answer = answers.find(request.url);
    auto result =
        answer != answers.end() ? Result<std::string>(answer->second) : Result<std::string>(Error{"no answer"});
    QMetaObject::invokeMethod(
        context, [then = std::move(then), result = std::move(result)] { then(result); }, Qt::QueuedConnection);
  }

  std::map<std::string, std::string> answers;
  bool isSilent = false;  ///< never answers
  std::vector<std::string> asked;
  std::vector<std::uint64_t> limits;
  std::vector<QPointer<QObject>> contexts;
};

}  // namespace Nimbrel::Testing
