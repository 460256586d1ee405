#pragma once

#include "Foundation/Result.h"

#include <QObject>

#include <cstdint>
#include <functional>
#include <string>
#include <utility>

namespace Nimbrel {

/// Reads from servers over HTTPS, for which nothing but the look for updates has a use. Keeps no cookies and no cache,
/// and tells the server nothing about the user. Main thread only.
class HttpsFetcher {
 public:
  virtual ~HttpsFetcher() = default;

  struct Request {
    std::string url;              ///< encoded; nothing but https is fetched
    std::uint64_t mostBytes = 0;  ///< of a longer answer nothing is kept
  };
  using Then = std::function<void(Result<std::string> answer)>;

  /// Asks the server, and calls `then` in a later turn of the event loop with the whole answer, or with what stood in
  /// its way in words for the status line. Redirections are followed as long as they stay with https. Gives up, and
  /// calls nothing, once `context` is gone. The fetcher must outlive what it fetches.
  virtual void fetch(const Request& request, QObject* context, Then then) = 0;
};

/// Where nothing can be fetched.
class NullHttpsFetcher final : public HttpsFetcher {
 public:
  void fetch(const Request&, QObject* context, Then then) override {
    const auto refuse = [then = std::move(then)] { then(Error{"no server can be reached from here"}); };
    QMetaObject::invokeMethod(context, refuse, Qt::QueuedConnection);
  }
};

}  // namespace Nimbrel
